#include "converters/bayer/bayer_converter.h"

#include <algorithm>

#include "convert/conversion_context.h"
#include "convert/line_converter.h"

namespace LmImagingLib {

using LmBaseLib::Result;

LM_DECLARE_KERNEL(DecodeKernel, BayerBilinear)
LM_DECLARE_KERNEL(DecodeKernel, Grayscale16)

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

std::uint32_t CellCode(const ConversionContext& context, std::size_t column) {
  const std::uint32_t line = context.currentLine % 2 != 0 ? kNextLine : 0;
  return LayoutCell(context.flags) ^ line ^ (column % 2 != 0 ? kNextColumn : 0);
}

// Two lines a step: what comes next lies two lines below.
std::uint32_t AheadOf(const ConversionContext& context) {
  return context.fetchAhead == 0 ? 0 : 2 * context.sourceLineSize;
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

struct Color {
  std::uint8_t red, green, blue;
};

// The colour of a cell.
Color ColorOf(const BayerSource& source, const SourceLines& cell) {
  std::uint8_t pixels[3][2];
  source.block.Definition()(cell, 0, 2, {pixels[0], pixels[1], pixels[2]});
  return {pixels[0][0], pixels[1][0], pixels[2][0]};
}

void Put(const Color& color, const Room& room, std::size_t at) {
  room.red[at] = color.red;
  room.green[at] = color.green;
  room.blue[at] = color.blue;
}

// The line above a step, its own two, and the one below.
struct Rows {
  const std::uint8_t* first;
  std::size_t stride;
};

// Rows of wide samples brought to 8 bits. Each is needed by up to three lines, and twice by either of them.
class NarrowRows {
 public:
  Rows Fill(const Rows& wide, std::size_t count, std::uint32_t shift, std::uint32_t ahead) {
    for (std::size_t k = 0; k < 4; ++k) {
      const std::uint8_t* const row = wide.first + k * wide.stride;
      kGrayscale16.Active()({{row, nullptr, nullptr}, shift, 0, ahead}, 0, count, {mRows[k], mRows[k], mRows[k]});
    }
    return {mRows[0], sizeof mRows[0]};
  }

 private:
  alignas(64) std::uint8_t mRows[4][kStripPixels + 64];  // a sample more on either side; 64 keep the rows aligned
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
  const StripSteps steps{mSource.block.Active(), 2, false, LookupOf(*context), mWriter};
  ConvertStrips(steps, CellsAt(*context, source, 0), pixels - pixels % 2, targets.lines, targets.count, 0);
  if (pixels % 2 != 0) {
    StoreKernel* const store = mWriter.store.Active();
    Strip strip;
    for (std::size_t k = 0; k < targets.count; ++k) {
      const Room room = RoomFor(steps, targets.lines[k], pixels - 1, strip);
      Put(ColorOf(mSource, CellsAt(*context, source, pixels - 2)), room, 0);
      store({room.red, room.green, room.blue}, steps.tables, 1, targets.lines[k], pixels - 1);
    }
  }
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
  const StripSteps steps{kBayerBilinear.Active(), 1, false, LookupOf(*context), mWriter};
  const std::size_t interiorEnd = (pixels - 2) / 2 * 2 + 1;
  const Color left = ColorOf(mSource, CellsAt(*context, source, 0));
  // One column of an even line, two of an odd one.
  const Color last = ColorOf(mSource, CellsAt(*context, source, pixels - 2));
  const Color right[] = {pixels % 2 == 0 ? last : ColorOf(mSource, CellsAt(*context, source, pixels - 3)), last};
  StoreKernel* const store = mWriter.store.Active();
  Strip strip;
  NarrowRows narrow;
  StripWalk walk(steps, targets.lines[0], pixels, 0, kStripPixels);
  while (walk.Next()) {
    const std::size_t stripEnd = walk.At() + walk.Pixels();
    const std::size_t begin = std::max(walk.At(), std::size_t{1});
    const std::size_t end = std::min(stripEnd, interiorEnd);
    const std::size_t count = end - std::min(begin, end);
    const std::size_t skip = begin - walk.At();
    const auto* const own = static_cast<const std::uint8_t*>(source) + (begin - 1) * mSource.sampleBytes;
    Rows rows{own - context->sourceLineSize, context->sourceLineSize};
    if (mSource.sampleBytes != 1 && count != 0) {
      rows = narrow.Fill(rows, count + 2, mSampleShift, AheadOf(*context));
    }
    const std::uint32_t ahead = mSource.sampleBytes == 1 ? AheadOf(*context) : 0;
    for (std::size_t k = 0; k < targets.count; ++k) {
      const Room room = RoomFor(steps, targets.lines[k], walk.At(), strip);
      const std::uint8_t* const above = rows.first + k * rows.stride;
      const std::uint32_t cell = CellCode(*context, begin) ^ (k == 0 ? 0 : kNextLine);
      steps.decode({{above, above + rows.stride, above + 2 * rows.stride}, 0, cell, ahead}, 0, count,
                   {room.red + skip, room.green + skip, room.blue + skip});
      if (walk.At() == 0) Put(left, room, 0);
      for (std::size_t x = std::max(interiorEnd, walk.At()); x < stripEnd; ++x) {
        Put(right[x - interiorEnd], room, x - walk.At());
      }
      store({room.red, room.green, room.blue}, steps.tables, walk.Pixels(), targets.lines[k], walk.At());
    }
  }
  return Result::OK;
}

SourceLines BayerConverter::CellsAt(const ConversionContext& context, const void* source, std::size_t column) const {
  const auto* const line = static_cast<const std::uint8_t*>(source) + column * mSource.sampleBytes;
  return {{line, line + context.sourceLineSize, nullptr}, mSampleShift, CellCode(context, column), context.fetchAhead};
}

}  // namespace LmImagingLib
