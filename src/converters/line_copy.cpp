#include "converters/line_copy.h"

#include <cstring>

#include "walk/lines.h"

namespace LmImagingLib {

namespace {

constexpr std::uint32_t kPixelBytes = 2;

}  // namespace

LineCopy::LineCopy(const PixelTypeID& from, const PixelTypeID& to)
    : LibraryConverter(from, to, kPixelBytes, kPixelBytes, 1, {}) {}

void LineCopy::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  const std::size_t bytes = std::size_t{frame.pixels} * kPixelBytes;
  if (bytes == 0) return;
  ForEachLine(frame, first, end, 1,
              [bytes](const FrameLine& line) { std::memmove(line.destination, line.source, bytes); });
}

ConversionExtent LineCopy::ExtentOf(const Frame& frame, std::uint32_t lines) const {
  return ExtentOfLines(frame, lines, std::size_t{frame.pixels} * kPixelBytes);
}

}  // namespace LmImagingLib
