#pragma once

#include "image.h"

namespace LmTool {

/// A PNG file of 8 or 16 bits a channel, in gray or in colour as the picture is.
Bytes EncodePng(const Picture& picture);

/// The picture in a PNG file: its samples as they are stored, palettes looked up. Transparency is left out.
/// @throws std::runtime_error that says what is wrong with the file
Picture DecodePng(const Bytes& file);

}  // namespace LmTool
