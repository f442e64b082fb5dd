#pragma once

#include "image.h"

namespace LmTool {

/// An uncompressed baseline TIFF file of 8 or 16 bits a channel, in gray or in colour as the picture is.
Bytes EncodeTiff(const Picture& picture);

/// The first picture in a TIFF file: gray or RGB samples of 8 or 16 bits, in strips, of any compression that libtiff
/// knows. Further samples, such as transparency, are left out.
/// @throws std::runtime_error that says what is wrong with the file, or what it has that is not supported
Picture DecodeTiff(const Bytes& file);

}  // namespace LmTool
