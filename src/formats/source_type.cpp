#include "formats/source_type.h"

#include <cstring>

namespace LmImagingLib {

std::uint32_t DenseLineBytes(const Format& format, std::uint32_t pixels) {
  if (format.groups == WholeGroups::kExact) return static_cast<std::uint32_t>(LineBytesOf(format, pixels));
  return HalfBytesOfPixel(format) * pixels / 2;
}

std::uint64_t LineBytesOf(const Format& format, std::uint64_t pixels) {
  const std::uint64_t groupBytes = format.groupBits / 8;
  if (format.groups == WholeGroups::kExact) {
    // No multiple of the pixels: the last ones may take a part of a byte each.
    const std::uint64_t rest = pixels % format.groupPixels * format.groupBits;
    const std::uint64_t bitsOfByte = std::uint64_t{8} * format.groupPixels;
    return pixels / format.groupPixels * groupBytes + (rest + bitsOfByte - 1) / bitsOfByte;
  }
  const std::uint64_t bytes = (pixels * groupBytes + format.groupPixels - 1) / format.groupPixels;
  // U Y0 Y1 V Y2 Y3: the second pixel of four needs the V after it.
  return format.groups == WholeGroups::kYuv411 && pixels % 4 == 2 ? bytes + 1 : bytes;
}

void CopyLastGroup(const Format& format, std::uint32_t pixels, const std::uint8_t* last, std::size_t bytes,
                   std::uint8_t (&group)[kMostGroupBytes]) {
  const std::size_t together = format.Is(kTopFirst) ? pixels : bytes;
  std::memcpy(group, last, together);
  if (together < bytes) std::memcpy(group + format.groupPixels, last + together, bytes - together);
}

}  // namespace LmImagingLib
