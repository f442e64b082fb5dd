#include "converters/reorder_converter.h"

#include <cstring>

#include "simd/kernel.h"
#include "walk/conversion_context.h"

namespace LmImagingLib {

using LmBaseLib::Result;

LM_DECLARE_KERNEL(ReorderKernel, JoinQuadTaps8)
LM_DECLARE_KERNEL(ReorderKernel, JoinQuadTaps16)
LM_DECLARE_KERNEL(ReorderKernel, TakeEverySecondByte)

namespace {

constexpr unsigned long kPixelsPerStep = 4;

Result Reorder(const Twins<ReorderKernel>& kernel, const void* source, void* destination, std::uint32_t pixels) {
  kernel.Active()(static_cast<const std::uint8_t*>(source), static_cast<std::uint8_t*>(destination), pixels);
  return Result::OK;
}

}  // namespace

Dalsa4x8ToGrayscale8::Dalsa4x8ToGrayscale8(const PixelTypeID& from, const PixelTypeID& to)
    : PixelConverter(from, to, 1, 1, kPixelsPerStep, 1) {}

Result Dalsa4x8ToGrayscale8::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  return Reorder(kJoinQuadTaps8, source, destination, static_cast<std::uint32_t>(pixelCount));
}

Dalsa4x16ToGrayscale16::Dalsa4x16ToGrayscale16(const PixelTypeID& from, const PixelTypeID& to)
    : PixelConverter(from, to, 2, 2, kPixelsPerStep, 1) {}

Result Dalsa4x16ToGrayscale16::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  return Reorder(kJoinQuadTaps16, source, destination, static_cast<std::uint32_t>(pixelCount));
}

DualLinesGrayscale8ToGrayscale8::DualLinesGrayscale8ToGrayscale8(const PixelTypeID& from, const PixelTypeID& to)
    : PixelConverter(from, to, 1, 1, kPixelsPerStep, 1) {}

Result DualLinesGrayscale8ToGrayscale8::ConvertLine(const void* source, void* destination,
                                                    unsigned long pixelCount) const {
  const ContextScope context;
  const auto pixels = static_cast<std::uint32_t>(pixelCount);
  const auto* line = static_cast<const std::uint8_t*>(source);
  const bool lower = context->currentLine % 2 != 0;
  if (!lower && context->currentLine + 1 >= context->sourceHeight) {
    if (pixels != 0) std::memmove(destination, source, pixels);
    return Result::OK;
  }
  if (lower) line = line - context->sourceLineSize + 1;
  return Reorder(kTakeEverySecondByte, line, destination, pixels);
}

}  // namespace LmImagingLib
