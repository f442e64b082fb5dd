#pragma once

#include "image.h"

namespace LmTool {

/// A binary PGM file. The picture is gray.
Bytes EncodePgm(const Picture& picture);

/// A binary PPM file. Gray pictures have three equal channels.
Bytes EncodePpm(const Picture& picture);

/// The picture in a binary PGM or PPM file. Samples whose greatest value is 511, 1023 and so on are shifted up to 16
/// bits, others are scaled to the bits that hold them.
/// @throws std::runtime_error that says what is wrong with the file
Picture DecodePnm(const Bytes& file);

}  // namespace LmTool
