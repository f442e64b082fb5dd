#pragma once

#include "image.h"

namespace LmTool {

/// A Windows bitmap file of 24 bits a pixel.
///
/// Rows go bottom up and are padded to a multiple of 4 bytes, which every reader takes at every width; the library's
/// `BMPSaver` leaves the padding to its caller and cannot report a failed write.
Bytes EncodeBmp(const Picture& picture);

/// The picture in a Windows bitmap file of 24 or 32 bits a pixel, bottom up or top down.
/// @throws std::runtime_error that says what the file lacks
Picture DecodeBmp(const Bytes& file);

}  // namespace LmTool
