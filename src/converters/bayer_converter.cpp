#include "converters/bayer_converter.h"

#include <algorithm>
#include <iterator>

#include "converters/line_converter.h"
#include "converters/mosaic_shortcuts.h"
#include "walk/conversion_context.h"

namespace LmImagingLib {

using LmBaseLib::Result;

LM_DECLARE_KERNEL(DecodeKernel, BayerBilinear)

namespace {

// The code of the cell at even lines and columns.
std::uint32_t LayoutCell(std::uint32_t flags) {
  if ((flags & ConversionFlags::kBayerBG) != 0) return 3;
  if ((flags & ConversionFlags::kBayerRG) != 0) return 2;
  if ((flags & ConversionFlags::kBayerGB) != 0) return 1;
  return 0;
}

const MosaicShortcut* FindShortcut(const Writer& writer) {
  const auto* const found = std::find_if(std::begin(kMosaicShortcuts), std::end(kMosaicShortcuts),
                                         [&writer](const MosaicShortcut& each) { return each.writer == &writer; });
  return found == std::end(kMosaicShortcuts) ? nullptr : found;
}

struct Color {
  std::uint8_t red, green, blue;
};

}  // namespace

/// The line above a step, its own two, and the one below, in 8 bits.
struct BayerConverter::Rows {
  // From a row on, those that there are.
  SourceLines Lines(std::size_t first, std::uint32_t cell) const {
    return {{row[first], row[first + 1], row[first + 2], first == 0 ? row[3] : nullptr}, 0, cell, ahead};
  }

  const std::uint8_t* row[4];
  std::uint32_t ahead;
};

/// The source lines of a step.
class BayerConverter::Mosaic {
 public:
  Mosaic(const BayerConverter& converter, const ConversionContext& context, const void* source)
      : mSource(converter.mSource),
        mLine(static_cast<const std::uint8_t*>(source)),
        mLineSize(context.sourceLineSize),
        mShift(converter.mSampleShift),
        mCell(LayoutCell(context.flags) ^ (context.currentLine % 2 != 0 ? kCellBelow : 0)),
        mAhead(context.fetchAhead) {}

  std::uint32_t CellCode(std::size_t column) const { return column % 2 != 0 ? mCell ^ kCellToTheRight : mCell; }

  // @param cells  the bits of cell codes that the kernel takes
  SourceLines CellsAt(std::size_t column, std::uint32_t cells = 3) const {
    const std::uint8_t* const line = mLine + column * mSource.sampleBytes;
    return {{line, line + mLineSize}, mShift, CellCode(column) & cells, mAhead};
  }

  Color ColorAt(std::size_t column) const {
    std::uint8_t pixels[3][2];
    mSource.block.Definition()(CellsAt(column), 0, 2, {pixels[0], pixels[1], pixels[2]});
    return {pixels[0][0], pixels[1][0], pixels[2][0]};
  }

  // Rows of wide samples are narrowed: each is needed by up to four lines, and twice by either of them.
  Rows RowsOf(const BayerConverter& converter, ConversionContext& context, std::size_t pixels) const {
    const std::uint8_t* const row = mLine - mLineSize;
    // Two lines a step: what comes next lies two lines below.
    const std::uint32_t ahead = mAhead == 0 ? 0 : static_cast<std::uint32_t>(2 * mLineSize);
    Rows rows{{row, row + mLineSize, row + 2 * mLineSize, row + 3 * mLineSize}, ahead};
    if (mSource.sampleBytes == 1) return rows;
    // A caller that has its own frame may hand over other lines at the same address.
    if (context.frame != &converter) context.narrowRows.Forget();
    for (std::size_t k = 0; k < 4; ++k) {
      rows.row[k] = context.narrowRows.Row(rows.row[k], context.currentLine + k, pixels, mShift, ahead);
    }
    rows.ahead = 0;
    return rows;
  }

 private:
  const BayerSource& mSource;
  const std::uint8_t* mLine;
  std::size_t mLineSize;
  std::uint32_t mShift;
  std::uint32_t mCell;
  std::uint32_t mAhead;
};

/// The destination lines of a step.
struct BayerConverter::StepTargets {
  StepTargets(const ConversionContext& context, void* destination)
      : lines{TargetAt(destination, context),
              TargetAt(static_cast<std::uint8_t*>(destination) + context.destinationStride, context)},
        count(context.stepLines) {}

  /// Stores a pixel by the definition, which is the quickest for one.
  void Store(const StripSteps& steps, const Color& color, std::size_t at) const {
    for (std::size_t k = 0; k < count; ++k) {
      steps.writer.store.Definition()({&color.red, &color.green, &color.blue}, steps.tables, 1, lines[k], at);
    }
  }

  TargetLine lines[2];
  std::size_t count;
};

BayerConverter::BayerConverter(const BayerSource& source, const Writer& writer, const PixelTypeID& from,
                               const PixelTypeID& to, unsigned long shift)
    : PixelConverter(from, to, source.sampleBytes, writer.pixelBytes, 1, 1),
      mSource(source),
      mWriter(writer),
      mShortcut(FindShortcut(writer)),
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
  const Mosaic mosaic(*this, *context, source);
  const StepTargets targets(*context, destination);
  const StripSteps steps{mSource.block.Active(), 2, false, LookupOf(*context), mWriter};
  const std::size_t whole = pixels - pixels % 2;
  if (const MosaicShortcut* const shortcut = ShortcutFor(steps, targets, mosaic.CellCode(0)); shortcut != nullptr) {
    ConvertDirectly(BlockOf(*shortcut).Active(), steps, mosaic.CellsAt(0, kShortcutCells), whole, targets.lines, 0);
  } else {
    ConvertStrips(steps, mosaic.CellsAt(0), whole, targets.lines, targets.count, 0);
  }
  if (pixels % 2 != 0) targets.Store(steps, mosaic.ColorAt(pixels - 2), pixels - 1);
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

  const Mosaic mosaic(*this, *context, source);
  const StepTargets targets(*context, destination);
  const StripSteps steps{kBayerBilinear.Active(), 1, false, LookupOf(*context), mWriter};
  const std::size_t interior = (pixels - 2) / 2 * 2;
  const Rows rows = mosaic.RowsOf(*this, *context, pixels);
  // The outer columns are those of the cells that the line begins and ends with: one on the right of an even line, two
  // of an odd one.
  if (const MosaicShortcut* const shortcut = ShortcutFor(steps, targets, mosaic.CellCode(1)); shortcut != nullptr) {
    // A cell makes two pixels, of which what comes behind covers one. The definition is the quickest for a cell.
    DirectKernel* const convertCell = BlockOf(*shortcut).Definition();
    convertCell(mosaic.CellsAt(pixels - 2, kShortcutCells), 0, 2, targets.lines, pixels - 2);
    if (pixels % 2 != 0) convertCell(mosaic.CellsAt(pixels - 3, kShortcutCells), 0, 2, targets.lines, pixels - 3);
    convertCell(mosaic.CellsAt(0, kShortcutCells), 0, 2, targets.lines, 0);
    ConvertDirectly(shortcut->bilinear.Active(), steps, rows.Lines(0, mosaic.CellCode(1) & kShortcutCells), interior,
                    targets.lines, 1);
  } else {
    targets.Store(steps, mosaic.ColorAt(0), 0);
    ConvertInterior(steps, mosaic.CellCode(1), rows, targets, interior);
    if (pixels % 2 != 0) targets.Store(steps, mosaic.ColorAt(pixels - 3), pixels - 2);
    targets.Store(steps, mosaic.ColorAt(pixels - 2), pixels - 1);
  }
  return Result::OK;
}

void BayerConverter::ConvertInterior(const StripSteps& steps, std::uint32_t cell, const Rows& rows,
                                     const StepTargets& targets, std::size_t count) const {
  StoreKernel* const store = mWriter.store.Active();
  Strip strip;
  StripWalk walk(steps, targets.lines[0], count, 1, kStripPixels);
  while (walk.Next()) {
    for (std::size_t k = 0; k < targets.count; ++k) {
      const Room room = RoomFor(steps, targets.lines[k], 1 + walk.At(), strip);
      const SourceLines lines = rows.Lines(k, k == 0 ? cell : cell ^ kCellBelow);
      store(steps.decode(lines, walk.At(), walk.Pixels(), room), steps.tables, walk.Pixels(), targets.lines[k],
            1 + walk.At());
    }
  }
}

const Twins<DirectKernel>& BayerConverter::BlockOf(const MosaicShortcut& shortcut) const {
  return mSource.sampleBytes == 1 ? shortcut.block8 : shortcut.block16;
}

const MosaicShortcut* BayerConverter::ShortcutFor(const StripSteps& steps, const StepTargets& targets,
                                                  std::uint32_t cell) const {
  if (mShortcut == nullptr || steps.tables != nullptr || targets.count != 2) return nullptr;
  // Only aligned lines can be stored past the caches. Strips align either line.
  const auto stride = static_cast<std::size_t>(targets.lines[1].line - targets.lines[0].line);
  if (targets.lines[0].streams && stride % kCacheLine != 0) return nullptr;
  return (cell & ~kShortcutCells) == 0 ? mShortcut : mShortcut->swapped;
}

}  // namespace LmImagingLib
