#include "converters/demosaicer.h"

#include "converters/steps_after_demosaicing.h"
#include "walk/lines.h"

namespace LmImagingLib {

MosaicShortcuts::MosaicShortcuts(const Writer& writer) {
  // Luma has no order.
  const Writer* const other = IsLuma(writer) ? &writer : writer.swapped;
  const auto find = [](const char* name, const Writer* to) {
    return name == nullptr || to == nullptr ? nullptr : FindShortcut(name, *to);
  };
  for (std::size_t k = 0; k < kDemosaicMethods; ++k) {
    own[k] = find(kMethods[k].name, &writer);
    swapped[k] = find(kMethods[k].name, other);
    ownOfWords[k] = find(kMethods[k].ofWords, &writer);
    swappedOfWords[k] = find(kMethods[k].ofWords, other);
  }
}

/// A pair of lines, or a single one that is made of the cells that begin in the line above it.
template <class Sample>
struct Demosaicer<Sample>::Pair {
  Site SiteOf(std::size_t column) const { return column % 2 != 0 ? RightOf(site) : site; }

  Site site;                    ///< of the cells' first line at column 0
  const std::uint8_t* rows[4];  ///< the one above, those of the cells, and the one below
  TargetLine lines[2];
  std::size_t count;
};

template <class Sample>
Demosaicer<Sample>::Demosaicer(const MosaicSource& source, const Writer& writer, const MosaicShortcuts& shortcuts,
                               const Frame& frame, std::uint32_t first, std::uint32_t end)
    : mWriter(writer),
      mFrame(frame),
      mShortcuts(shortcuts),
      mMethod(MethodOf(frame.flags)),
      mFirst(first),
      mEnd(end),
      mPixels(frame.pixels),
      mLayoutSite(LayoutSite(frame.flags)),
      mRows(source.type, frame, source.width, 2 * kMethods[mMethod].reach + 2, RowsRead(frame, first, end),
            RowLookupOf(frame, source.type.depth,
                        sizeof(Sample) == 1 ? 8 : DepthOfRows(frame, source.type.depth, writer)),
            kMethods[mMethod].kernelOfWords.Definition() != nullptr),
      mSteps(StepsAfterDemosaicing<Sample>(frame, source.type.depth, writer)),
      mTarget(TargetAt(nullptr, frame, FitAfterDemosaicing<Sample>(frame, source.type.depth, writer), writer)),
      mShift(mRows.IsSource() ? source.type.ShiftOf<Sample>() : 0),
      mMask(sizeof(Sample) == 1 ? 0xFF : (1U << DepthOfRows(frame, source.type.depth, writer)) - 1) {
  mSteps.decode = KernelOf(mMethod).Active();
}

template <class Sample>
void Demosaicer<Sample>::Convert() {
  std::uint32_t line = mFirst;
  if (kMethods[mMethod].kind == DemosaicMethod::Kind::kHalfSize) return ConvertCells();
  for (; line < mEnd && mEnd - line >= 2; line += 2) {
    if (mMethod == kBlock || IsBorder(mFrame, line)) {
      ConvertBlocks(PairAt(line, 2, false));
    } else {
      ConvertBilinear(PairAt(line, 2, true));
    }
  }
  if (line < mEnd && line != 0 && mFrame.sourceHeight >= 2) ConvertBlocks(PairAt(line, 1, false));
}

// Lines of half the size.
template <class Sample>
void Demosaicer<Sample>::ConvertCells() {
  SourceLines cells{{}, mShift, mLayoutSite, FetchAheadOfPairs(), mMask};
  TargetLine target = mTarget;
  const Twins<DirectKernel>* const shortcut = ShortcutFor(mMethod, target, mLayoutSite);
  DirectKernel* const convert = shortcut != nullptr ? shortcut->Active() : nullptr;
  const std::size_t rowBytes = 2 * mPixels * mRows.SampleBytes(), targetBytes = mPixels * mWriter.pixelBytes;
  for (std::uint32_t line = mFirst; line < mEnd; ++line) {
    const std::uint8_t* const top = mRows.Row(2 * line);
    const std::uint8_t* const bottom = mRows.Row(2 * line + 1);
    cells.line[0] = top, cells.line[1] = bottom;
    target.line = DestinationLineAt(mFrame, line);
    // Of lines that are stored over their own rows, a whole strip is decoded first.
    const bool apart = target.line >= bottom + rowBytes || target.line + targetBytes <= top;
    if (convert != nullptr && apart) {
      ConvertDirectly(convert, 1, mWriter, cells, mPixels, &target, 0);
    } else {
      ConvertStrips(mSteps, cells, mPixels, &target, 1, 0);
    }
  }
}

/// @param count  2, or 1 for a last line
template <class Sample>
typename Demosaicer<Sample>::Pair Demosaicer<Sample>::PairAt(std::uint32_t line, std::uint32_t count,
                                                             bool withNeighbours) {
  const std::uint32_t top = count == 1 ? line - 1 : line;
  // Filling the pair with zeros first takes as long as a block of pixels, and copies of structures that were made just
  // now wait for their members to be stored.
  Pair pair;
  pair.site = Below(mLayoutSite, top);
  pair.lines[0] = pair.lines[1] = mTarget;
  pair.lines[0].line = DestinationLineAt(mFrame, line);
  pair.lines[1].line = pair.lines[0].line + mFrame.destinationLine;
  pair.count = count;
  if (withNeighbours) pair.rows[0] = mRows.Row(top - 1);
  pair.rows[1] = mRows.Row(top);
  pair.rows[2] = mRows.Row(top + 1);
  if (withNeighbours) pair.rows[3] = mRows.Row(top + 2);
  return pair;
}

template <class Sample>
void Demosaicer<Sample>::ConvertBlocks(const Pair& pair) {
  const std::size_t whole = mPixels - mPixels % 2;
  if (const Twins<DirectKernel>* const convert = ShortcutFor(kBlock, pair, pair.site); convert != nullptr) {
    ConvertDirectly(convert->Active(), 2, mWriter, CellsAt(pair, 0), whole, pair.lines, 0);
  } else {
    StripSteps<Sample> steps = mSteps;
    steps.decode = KernelOf(kBlock).Active();
    steps.groupPixels = 2;
    ConvertStrips(steps, CellsAt(pair, 0), whole, pair.lines, pair.count, 0);
  }
  // The last column of an odd line repeats the colour of the cell that ends with it.
  if (mPixels % 2 != 0) StoreCell(pair, mPixels - 2, mPixels - 1);
}

// The outer columns are those of the cells that the line begins and ends with: one on the right of an even line, two of
// an odd one.
template <class Sample>
void Demosaicer<Sample>::ConvertBilinear(const Pair& pair) {
  const auto& rows = pair.rows;
  const Site site = pair.SiteOf(1);
  const std::size_t interior = (mPixels - 2) / 2 * 2;
  const Twins<DirectKernel>* const convert = ShortcutFor(mMethod, pair, site);
  if (convert == nullptr) {
    StoreCell(pair, 0, 0);
    for (std::size_t k = 0; k < 2; ++k) {
      const SourceLines lines{{rows[k], rows[k + 1], rows[k + 2]}, 0, Below(site, k), 0, mMask};
      ConvertStrips(mSteps, lines, interior, &pair.lines[k], 1, 1);
    }
    if (mPixels % 2 != 0) StoreCell(pair, mPixels - 3, mPixels - 2);
    StoreCell(pair, mPixels - 2, mPixels - 1);
    return;
  }
  // A cell makes two pixels, of which the interior covers one. The definition is the fastest for a cell.
  DirectKernel* const convertCell = ShortcutFor(kBlock, pair, site)->Definition();
  const auto convertCellAt = [&](std::size_t column) { convertCell(CellsAt(pair, column), 0, 2, pair.lines, column); };
  convertCellAt(mPixels - 2);
  if (mPixels % 2 != 0) convertCellAt(mPixels - 3);
  convertCellAt(0);
  const SourceLines lines{{rows[0], rows[1], rows[2], rows[3]}, 0, site, FetchAheadOfPairs(), mMask};
  ConvertDirectly(convert->Active(), 1, mWriter, lines, interior, pair.lines, 1);
}

// Stores the colour of a cell as one pixel of each line, by the definition, which is the fastest for one.
template <class Sample>
void Demosaicer<Sample>::StoreCell(const Pair& pair, std::size_t column, std::size_t at) {
  Sample pixels[3][2];
  KernelOf(kBlock).Definition()(CellsAt(pair, column), 0, 2, {pixels[0], pixels[1], pixels[2]});
  for (std::size_t k = 0; k < pair.count; ++k) {
    StorePixels<Sample>({pixels[0], pixels[1], pixels[2]}, mSteps, 1, pair.lines[k], at, KernelChoice::kDefinition);
  }
}

// Rows in the source have to be fetched; the next pair is two lines below.
template <class Sample>
std::uint32_t Demosaicer<Sample>::FetchAheadOfPairs() const {
  return mRows.FetchAhead() != 0 ? static_cast<std::uint32_t>(2 * mFrame.sourceLine) : 0;
}

template <class Sample>
SourceLines Demosaicer<Sample>::CellsAt(const Pair& pair, std::size_t column) const {
  const std::size_t offset = column * mRows.SampleBytes();
  return {{pair.rows[1] + offset, pair.rows[2] + offset}, mShift, pair.SiteOf(column), mRows.FetchAhead(), mMask};
}

template <class Sample>
const Twins<DecodeKernel<Sample>>& Demosaicer<Sample>::KernelOf(std::size_t method) const {
  if constexpr (sizeof(Sample) == 1) {
    if (mRows.SampleBytes() == 2) return kMethods[method].kernelOfWords;
  }
  return kMethods[method].kernel.template Of<Sample>();
}

// The kernel for pixels from one at `site` on, or null where strips have to be used.
template <class Sample>
const Twins<DirectKernel>* Demosaicer<Sample>::ShortcutFor(std::size_t method, const TargetLine& line,
                                                           Site site) const {
  const bool changes = mSteps.tables != nullptr || mSteps.widening != nullptr || mSteps.matrix != nullptr;
  if (changes || line.opaque) return nullptr;
  // Words of colours are only shifted up without a strip.
  if (sizeof(Sample) == 2 && line.fit.down != 0 && !IsLuma(mWriter)) return nullptr;
  // Only aligned lines can be stored past the caches. Strips align either line.
  if (line.streams && mFrame.destinationLine % kCacheLine != 0) return nullptr;
  const bool isOwn = IsInRedRow(site);
  const bool ofWords = mRows.SampleBytes() > sizeof(Sample);
  const Shortcut* const shortcut = isOwn ? (ofWords ? mShortcuts.ownOfWords : mShortcuts.own)[method]
                                         : (ofWords ? mShortcuts.swappedOfWords : mShortcuts.swapped)[method];
  if (shortcut == nullptr) return nullptr;
  const Twins<DirectKernel>& convert = sizeof(Sample) == 1 ? shortcut->convert : shortcut->convertWords;
  return convert.Definition() == nullptr ? nullptr : &convert;
}

template class Demosaicer<std::uint8_t>;
template class Demosaicer<std::uint16_t>;

}  // namespace LmImagingLib
