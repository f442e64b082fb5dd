#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace LmGst {

/// The equation of brightness and differences of colour. Of 8 bits, with the light of red, green and blue from 0 to 1:
///
///     Y  = offset + range  (kr R + kg G + kb B)
///     Cb = 128    + chroma (B - (kr R + kg G + kb B)) / (2 - 2 kb)
///     Cr = 128    + chroma (R - (kr R + kg G + kb B)) / (2 - 2 kr)
///
/// ITU-R BT.601 has kr = 0.299 and kb = 0.114, BT.709 0.2126 and 0.0722. Of the limited range the offset is 16, the
/// range 219 and chroma 224; of the full one 0, 255 and 255. Results are those of the equation in whole numbers,
/// rounded to the nearest, halves up. Pixels that share Cb and Cr have those of the mean of their colours.
struct YuvCode {
  bool isBT709 = false;
  bool isFullRange = false;
};

/// A picture of three planes of bytes.
struct RgbPlanes {
  const std::uint8_t* red;
  const std::uint8_t* green;
  const std::uint8_t* blue;
  std::size_t lineSize;
};

enum class YuvLayout {
  kI420,  ///< planes Y, Cb and Cr; the latter have half the columns and lines
  kNV12,  ///< planes Y, and Cb Cr in turns
  kYUY2,  ///< one plane of Y Cb Y Cr
};

/// Where to write.
struct YuvPlanes {
  YuvLayout layout;
  std::uint8_t* plane[3];
  std::size_t lineSize[3];
};

/// Encodes a picture. Of odd widths and heights the last column and line stand for the ones that are missing.
/// @param room  memory that it uses; keep it for the next picture
void EncodeYuv(const RgbPlanes& picture, std::size_t width, std::size_t height, const YuvCode& code,
               const YuvPlanes& result, std::vector<std::uint8_t>& room);

}  // namespace LmGst
