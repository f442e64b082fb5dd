#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "LmImagingLib/Development.h"
#include "frame_samples.h"

namespace LmPage {

/// A raw frame in a file.
struct RawFrame {
  FileBytes bytes;       ///< from the beginning of the frame on
  Reading reading;       ///< its flags have no method
  std::size_t lineSize;  ///< in bytes, 0 for lines without padding
};

/// A picture for a canvas: bytes red, green, blue and 255 of each pixel.
struct Picture {
  std::size_t width = 0, height = 0;
  std::vector<std::uint8_t> pixels;
};

/// The significant bits of a sample of a registered type.
unsigned DepthOf(LmImagingLib::PixelTypeID type);

/// Develops a frame; gray frames with the same black level, exposure and tone. The method is that of the settings.
/// @throws std::runtime_error with the library's message if the frame does not fit its bytes
Picture DevelopPicture(const RawFrame& frame, const LmImagingLib::DevelopmentSettings& settings);

/// The gains that make the surroundings of a pixel gray; the whole frame for a radius of 0.
/// @param radius  in pixels
/// @throws std::runtime_error if it is too dark, overexposed or gray in any case
LmImagingLib::RGBValues BalanceAt(const RawFrame& frame, const LmImagingLib::RGBValues& black, std::size_t x,
                                  std::size_t y, std::size_t radius);

}  // namespace LmPage
