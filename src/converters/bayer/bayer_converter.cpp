#include "converters/bayer/bayer_converter.h"

#include "convert/conversion_context.h"
#include "convert/line_converter.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

// Cell codes name the 2 x 2 samples that begin at a position: 0 G R / B G, 1 G B / R G, 2 R G / G B, 3 B G / G R.
// The code of the layout holds at even lines and columns. Going down a line exchanges codes by 3 (G R / B G becomes
// B G / G R), going right by 2 (G R / B G becomes R G / G B).
constexpr std::uint32_t kNextLine = 3;
constexpr std::uint32_t kNextColumn = 2;

std::uint32_t LayoutCell(std::uint32_t flags) {
  if ((flags & ConversionFlags::kBayerBG) != 0) return 3;
  if ((flags & ConversionFlags::kBayerRG) != 0) return 2;
  if ((flags & ConversionFlags::kBayerGB) != 0) return 1;
  return 0;
}

std::uint32_t CellAt(const ConversionContext& context, std::size_t column) {
  const std::uint32_t line = context.currentLine % 2 != 0 ? kNextLine : 0;
  return LayoutCell(context.flags) ^ line ^ (column % 2 != 0 ? kNextColumn : 0);
}

// The destination lines of a step.
struct StepTargets {
  StepTargets(const ConversionContext& context, void* destination)
      : lines{TargetAt(destination, context),
              TargetAt(static_cast<std::uint8_t*>(destination) + context.destinationStride, context)},
        count(context.stepLines) {}

  TargetLine lines[2];
  std::size_t count;
};

}  // namespace

BayerConverter::BayerConverter(const BayerSource& source, const Writer& writer, const PixelTypeID& from,
                               const PixelTypeID& to, unsigned long shift)
    : PixelConverter(from, to, source.sampleBytes, writer.pixelBytes, 1, 1),
      mSource(source),
      mWriter(writer),
      mSampleShift(static_cast<std::uint32_t>(shift) & 31U) {}

unsigned long BayerConverter::GetLinesPerStep() const { return 2; }

Result BayerConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  const ContextScope context;
  return (context->flags & ConversionFlags::kBilinear) == 0 ? DemosaicBlock(source, destination, pixelCount)
                                                            : DemosaicBilinear(source, destination, pixelCount);
}

Result BayerConverter::ConvertLastLine(const void* source, void* destination, unsigned long pixelCount) const {
  const ContextScope context;
  if (context->sourceHeight < 2 || context->currentLine == 0) return Result::NOT_IMPLEMENTED;
  // The cells begin in the line above. Both lines that they make are equal, and only one exists.
  --context->currentLine;
  context->stepLines = 1;
  const Result result =
      DemosaicBlock(static_cast<const std::uint8_t*>(source) - context->sourceLineSize, destination, pixelCount);
  context->stepLines = 2;
  ++context->currentLine;
  return result;
}

Result BayerConverter::DemosaicBlock(const void* source, void* destination, unsigned long pixelCount) const {
  const ContextScope context;
  const std::size_t pixels = static_cast<std::uint32_t>(pixelCount);
  if (pixels < 2) return Result::OK;
  const StepTargets targets(*context, destination);
  ConvertStrips({mSource.block.Active(), 2, false, context->filter, mWriter}, CellsAt(*context, source, 0),
                pixels - pixels % 2, targets.lines, targets.count, 0);
  if (pixels % 2 != 0) ConvertCell(*context, source, pixels - 2, targets.lines, targets.count, pixels - 1);
  return Result::OK;
}

Result BayerConverter::DemosaicBilinear(const void* source, void* destination, unsigned long pixelCount) const {
  const ContextScope context;
  const std::uint32_t line = context->currentLine;
  if (line == 0 || line == context->sourceHeight - 2 || line == context->sourceHeight - 1) {
    return DemosaicBlock(source, destination, pixelCount);
  }
  const std::size_t pixels = static_cast<std::uint32_t>(pixelCount);
  if (pixels < 2) return Result::OK;

  const StepTargets targets(*context, destination);
  ConvertCell(*context, source, 0, targets.lines, targets.count, 0);

  const StripSteps steps{mSource.bilinear.Active(), 1, false, context->filter, mWriter};
  const std::size_t interior = (pixels - 2) / 2 * 2;
  const std::size_t stride = context->sourceLineSize;
  const auto* own = static_cast<const std::uint8_t*>(source);
  std::uint32_t cell = CellAt(*context, 1);
  for (std::size_t k = 0; k < targets.count; ++k, own += stride, cell ^= kNextLine) {
    ConvertStrips(steps, {{own - stride, own, own + stride}, mSampleShift, cell}, interior, &targets.lines[k], 1, 1);
  }

  for (std::size_t x = interior + 1; x < pixels; ++x) {
    ConvertCell(*context, source, x - 1, targets.lines, targets.count, x);
  }
  return Result::OK;
}

SourceLines BayerConverter::CellsAt(const ConversionContext& context, const void* source, std::size_t column) const {
  const auto* const line = static_cast<const std::uint8_t*>(source) + column * mSource.sampleBytes;
  return {{line, line + context.sourceLineSize, nullptr}, mSampleShift, CellAt(context, column)};
}

// Stores the colour of the cell at a column as pixel `first` of each target.
void BayerConverter::ConvertCell(const ConversionContext& context, const void* source, std::size_t column,
                                 const TargetLine* targets, std::size_t targetCount, std::size_t first) const {
  ConvertPartOfGroup({mSource.block.Definition(), 2, false, context.filter, mWriter}, CellsAt(context, source, column),
                     2, 1, targets, targetCount, first);
}

}  // namespace LmImagingLib
