#include "converters/reorder_converter.h"

#include <algorithm>
#include <cstring>

#include "walk/lines.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(ReorderKernel, JoinQuadTaps8)
LM_DECLARE_KERNEL(ReorderKernel, JoinQuadTaps16)
LM_DECLARE_KERNEL(ReorderKernel, TakeEverySecondByte)

namespace {

constexpr std::uint32_t kPixelsPerStep = 4;

}  // namespace

QuadTapsConverter::QuadTapsConverter(std::uint32_t sampleBytes, const PixelTypeID& from, const PixelTypeID& to)
    : LibraryConverter(from, to, sampleBytes, sampleBytes, kPixelsPerStep, {}),
      mKernel(sampleBytes == 1 ? kJoinQuadTaps8 : kJoinQuadTaps16) {}

void QuadTapsConverter::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  ReorderKernel* const reorder = mKernel.Active();
  ForEachLine(frame, first, end, 1,
              [&](const FrameLine& line) { reorder(line.source, line.destination, frame.pixels); });
}

DualLinesGrayscale8ToGrayscale8::DualLinesGrayscale8ToGrayscale8(const PixelTypeID& from, const PixelTypeID& to)
    : LibraryConverter(from, to, 1, 1, kPixelsPerStep, {nullptr, 1, false, true}) {}

void DualLinesGrayscale8ToGrayscale8::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  ReorderKernel* const takeEverySecond = kTakeEverySecondByte.Active();
  ForEachLine(frame, first, end, 1, [&](const FrameLine& line) {
    const bool isLower = line.index % 2 != 0;
    if (!isLower && line.index + 1 >= frame.sourceHeight) {
      if (frame.pixels != 0) std::memmove(line.destination, line.source, frame.pixels);
    } else {
      takeEverySecond(isLower ? line.source - frame.sourceLine + 1 : line.source, line.destination, frame.pixels);
    }
  });
}

ConversionExtent QuadTapsConverter::ExtentOf(const Frame& frame, std::uint32_t lines) const {
  return ExtentOfLines(frame, lines, (frame.pixels - frame.pixels % kPixelsPerStep) * GetSourcePixelByteSize());
}

ConversionExtent DualLinesGrayscale8ToGrayscale8::ExtentOf(const Frame& frame, std::uint32_t lines) const {
  ConversionExtent extent = ExtentOfLines(frame, lines, frame.pixels);
  // The upper line of a pair has its last sample in the bytes of both, and so has the lower one.
  const std::uint32_t paired = std::min(lines, frame.sourceHeight / 2 * 2);
  if (paired != 0 && frame.pixels != 0) {
    const std::size_t pair = (paired - 1) / 2 * 2 * frame.sourceLine;
    extent.source = std::max(lines > paired ? extent.source : 0, pair + 2 * frame.pixels - (paired % 2 != 0 ? 1 : 0));
  }
  return extent;
}

}  // namespace LmImagingLib
