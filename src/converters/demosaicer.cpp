#include "converters/demosaicer.h"

#include <iterator>

#include "walk/lines.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(DecodeKernel, BayerBlock)
LM_DECLARE_WIDE_KERNEL(DecodeKernel, BayerBilinear)

namespace {

// A method earlier in the table wins over a later one.
constexpr DemosaicMethod kMethods[] = {{"BayerBilinear", ConversionFlags::kBilinear, 1, kBayerBilinear},
                                       {"BayerBlock", 0, 0, kBayerBlock}};
static_assert(std::size(kMethods) == kDemosaicMethods);
constexpr std::size_t kBlock = kDemosaicMethods - 1;

// The bits of a cell code that shortcuts are given: codes 1 and 3 are 0 and 2 with red and blue exchanged, and so is a
// writer's pixel.
constexpr std::uint32_t kShortcutCells = 2;

// The code of the cell at even lines and columns.
std::uint32_t LayoutCell(std::uint32_t flags) {
  if ((flags & ConversionFlags::kBayerBG) != 0) return 3;
  if ((flags & ConversionFlags::kBayerRG) != 0) return 2;
  if ((flags & ConversionFlags::kBayerGB) != 0) return 1;
  return 0;
}

}  // namespace

std::size_t MethodOf(std::uint32_t flags) {
  const auto* const found =
      std::find_if(std::begin(kMethods), std::end(kMethods),
                   [flags](const DemosaicMethod& method) { return method.flag == 0 || (flags & method.flag) != 0; });
  return static_cast<std::size_t>(found - kMethods);
}

std::uint32_t ReachOf(std::size_t method) { return kMethods[method].reach; }

MosaicShortcuts::MosaicShortcuts(const Writer& writer) {
  for (std::size_t k = 0; k < kDemosaicMethods; ++k) {
    own[k] = FindShortcut(kMethods[k].name, writer);
    swapped[k] = writer.swapped == nullptr ? nullptr : FindShortcut(kMethods[k].name, *writer.swapped);
  }
}

/// The destination lines of a pair.
template <class Sample>
struct Demosaicer<Sample>::Targets {
  TargetLine lines[2];
  std::size_t count;
};

template <class Sample>
Demosaicer<Sample>::Demosaicer(const SourceType& source, const Writer& writer, const MosaicShortcuts& shortcuts,
                               const Frame& frame, std::uint32_t width)
    : mWriter(writer),
      mFrame(frame),
      mShortcuts(shortcuts),
      mMethod(MethodOf(frame.flags)),
      mPixels(frame.pixels),
      mLayoutCell(LayoutCell(frame.flags)),
      mRows(source, frame, width, 2 * ReachOf(mMethod) + 2),
      mSteps{kMethods[mMethod].kernel.template Of<Sample>().Active(), 1, false, nullptr, writer},
      mMask(source.MaskOf<Sample>()) {
  const bool inFull = writer.depth > 8 && (frame.flags & ConversionFlags::kFullDepth) != 0;
  mFit = FitOf(sizeof(Sample) == 1 ? 8 : source.depth, writer, inFull);
  if (sizeof(Sample) == 1 && inFull) {
    mSteps.widening = LookupOf<std::uint16_t>(frame, 8, writer);
  } else {
    mSteps.tables = LookupOf<Sample>(frame, source.depth, writer);
  }
}

template <class Sample>
void Demosaicer<Sample>::ConvertPair(std::uint32_t line, std::uint32_t count) {
  std::uint8_t* const destination = DestinationLineAt(mFrame, line);
  const Targets targets{
      {TargetAt(destination, mFrame, mFit), TargetAt(destination + mFrame.destinationLine, mFrame, mFit)}, count};
  // A single line is made of the cells that begin in the line above it.
  const std::uint32_t top = count == 1 ? line - 1 : line;
  const bool isBorder = line == 0 || line == mFrame.sourceHeight - 2 || line == mFrame.sourceHeight - 1;
  if (mMethod == kBlock || isBorder || count == 1) {
    ConvertBlocks(top, targets);
  } else {
    ConvertBilinear(line, targets);
  }
}

template <class Sample>
void Demosaicer<Sample>::ConvertBlocks(std::uint32_t top, const Targets& targets) {
  const std::size_t whole = mPixels - mPixels % 2;
  if (const Shortcut* const shortcut = ShortcutFor(kBlock, targets, CellCode(top, 0)); shortcut != nullptr) {
    ConvertDirectly(shortcut->convert.Active(), 2, mWriter, CellsAt(top, 0, kShortcutCells), whole, targets.lines, 0);
  } else {
    StripSteps<Sample> steps = mSteps;
    steps.decode = kMethods[kBlock].kernel.Of<Sample>().Active();
    steps.groupPixels = 2;
    ConvertStrips(steps, CellsAt(top, 0), whole, targets.lines, targets.count, 0);
  }
  // The last column of an odd line repeats the colour of the cell that ends with it.
  if (mPixels % 2 != 0) StoreCell(top, mPixels - 2, mPixels - 1, targets);
}

// The outer columns are those of the cells that the line begins and ends with: one on the right of an even line, two of
// an odd one.
template <class Sample>
void Demosaicer<Sample>::ConvertBilinear(std::uint32_t line, const Targets& targets) {
  const std::uint8_t* const rows[4] = {mRows.Row(line - 1), mRows.Row(line), mRows.Row(line + 1), mRows.Row(line + 2)};
  const std::uint32_t cell = CellCode(line, 1);
  const Shortcut* const shortcut = ShortcutFor(mMethod, targets, cell);
  if (shortcut == nullptr) {
    StoreCell(line, 0, 0, targets);
    ConvertInterior(cell, rows, targets);
    if (mPixels % 2 != 0) StoreCell(line, mPixels - 3, mPixels - 2, targets);
    StoreCell(line, mPixels - 2, mPixels - 1, targets);
    return;
  }
  // A cell makes two pixels, of which the interior covers one.
  const Shortcut& cells = *ShortcutFor(kBlock, targets, cell);
  ConvertCellDirectly(cells, line, mPixels - 2, targets);
  if (mPixels % 2 != 0) ConvertCellDirectly(cells, line, mPixels - 3, targets);
  ConvertCellDirectly(cells, line, 0, targets);
  // Rows in the source have to be fetched; the next pair is two lines below.
  const std::uint32_t ahead =
      mRows.IsSource() && mFrame.fetchAhead != 0 ? static_cast<std::uint32_t>(2 * mFrame.sourceLine) : 0;
  ConvertDirectly(shortcut->convert.Active(), 1, mWriter,
                  {{rows[0], rows[1], rows[2], rows[3]}, 0, cell & kShortcutCells, ahead, mMask}, (mPixels - 2) / 2 * 2,
                  targets.lines, 1);
}

template <class Sample>
void Demosaicer<Sample>::ConvertInterior(std::uint32_t cell, const std::uint8_t* const (&rows)[4],
                                         const Targets& targets) {
  for (std::size_t k = 0; k < targets.count; ++k) {
    const SourceLines lines{{rows[k], rows[k + 1], rows[k + 2]}, 0, k == 0 ? cell : cell ^ kCellBelow, 0, mMask};
    ConvertStrips(mSteps, lines, (mPixels - 2) / 2 * 2, &targets.lines[k], 1, 1);
  }
}

// Stores the colour of a cell as one pixel of each line, by the definition, which is the fastest for one.
template <class Sample>
void Demosaicer<Sample>::StoreCell(std::uint32_t line, std::size_t column, std::size_t at, const Targets& targets) {
  Sample pixels[3][2];
  kMethods[kBlock].kernel.Of<Sample>().Definition()(CellsAt(line, column), 0, 2, {pixels[0], pixels[1], pixels[2]});
  for (std::size_t k = 0; k < targets.count; ++k) {
    if (mSteps.widening != nullptr) {
      const std::uint16_t words[3] = {pixels[0][0], pixels[1][0], pixels[2][0]};
      mWriter.store.words.Definition()({&words[0], &words[1], &words[2]}, mSteps.widening, 1, targets.lines[k], at);
    } else {
      mWriter.store.Of<Sample>().Definition()({pixels[0], pixels[1], pixels[2]}, mSteps.tables, 1, targets.lines[k],
                                              at);
    }
  }
}

template <class Sample>
void Demosaicer<Sample>::ConvertCellDirectly(const Shortcut& shortcut, std::uint32_t line, std::size_t column,
                                             const Targets& targets) {
  shortcut.convert.Definition()(CellsAt(line, column, kShortcutCells), 0, 2, targets.lines, column);
}

template <class Sample>
SourceLines Demosaicer<Sample>::CellsAt(std::uint32_t line, std::size_t column, std::uint32_t cells) {
  const std::size_t offset = column * sizeof(Sample);
  return {{mRows.Row(line) + offset, mRows.Row(line + 1) + offset},
          0,
          CellCode(line, column) & cells,
          mRows.IsSource() ? mFrame.fetchAhead : 0,
          mMask};
}

template <class Sample>
std::uint32_t Demosaicer<Sample>::CellCode(std::uint32_t line, std::size_t column) const {
  return mLayoutCell ^ (line % 2 != 0 ? kCellBelow : 0) ^ (column % 2 != 0 ? kCellToTheRight : 0);
}

// The shortcut for pixels from one of cell code `cell` on, or null where strips have to be used.
template <class Sample>
const Shortcut* Demosaicer<Sample>::ShortcutFor(std::size_t method, const Targets& targets, std::uint32_t cell) const {
  if (sizeof(Sample) != 1 || mSteps.tables != nullptr || targets.count != 2) return nullptr;
  // Only aligned lines can be stored past the caches. Strips align either line.
  if (targets.lines[0].streams && mFrame.destinationLine % kCacheLine != 0) return nullptr;
  return (cell & ~kShortcutCells) == 0 ? mShortcuts.own[method] : mShortcuts.swapped[method];
}

template class Demosaicer<std::uint8_t>;
template class Demosaicer<std::uint16_t>;

}  // namespace LmImagingLib
