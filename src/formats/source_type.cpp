#include "formats/source_type.h"

namespace LmImagingLib {

std::uint32_t DenseLineBytes(const Format& format, std::uint32_t pixels) {
  return static_cast<std::uint32_t>(format.groupBits / 4 / format.groupPixels * pixels) >> 1;
}

std::uint64_t LineBytesOf(const Format& format, std::uint64_t pixels) {
  const std::uint64_t groupBytes = format.groupBits / 8;
  const std::uint64_t bytes = (pixels * groupBytes + format.groupPixels - 1) / format.groupPixels;
  // U Y0 Y1 V Y2 Y3: the second pixel of four needs the V after it.
  return format.groups == WholeGroups::kYuv411 && pixels % 4 == 2 ? bytes + 1 : bytes;
}

}  // namespace LmImagingLib
