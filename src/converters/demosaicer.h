#pragma once

#include "converters/demosaic_method.h"
#include "converters/line_converter.h"
#include "walk/row_window.h"

namespace LmImagingLib {

/// The shortcuts to a writer, and to the one that exchanges red and blue, by each method; null where there is none.
struct MosaicShortcuts {
  explicit MosaicShortcuts(const Writer& writer);

  const Shortcut* own[kDemosaicMethods];
  const Shortcut* swapped[kDemosaicMethods];
  const Shortcut* ownOfWords[kDemosaicMethods];  ///< that make bytes of words
  const Shortcut* swappedOfWords[kDemosaicMethods];
};

/// The mosaic that a conversion reads.
struct MosaicSource {
  const SourceType& type;
  std::uint32_t width;  ///< samples of a row that may be read
};

/// Demosaics lines `first` to `end` of a frame with samples of bytes or of words, by a method that reads rows as they
/// are: of pairs, or of half size.
template <class Sample>
class Demosaicer {
 public:
  Demosaicer(const MosaicSource& source, const Writer& writer, const MosaicShortcuts& shortcuts, const Frame& frame,
             std::uint32_t first, std::uint32_t end);

  void Convert();

 private:
  struct Pair;

  Pair PairAt(std::uint32_t line, std::uint32_t count, bool withNeighbours);
  void ConvertCells();
  void ConvertBlocks(const Pair& pair);
  void ConvertBilinear(const Pair& pair);
  void StoreCell(const Pair& pair, std::size_t column, std::size_t at);
  const Twins<DecodeKernel<Sample>>& KernelOf(std::size_t method) const;
  std::uint32_t FetchAheadOfPairs() const;
  SourceLines CellsAt(const Pair& pair, std::size_t column) const;
  const Twins<DirectKernel>* ShortcutFor(std::size_t method, const TargetLine& line, Site site) const;
  const Twins<DirectKernel>* ShortcutFor(std::size_t method, const Pair& pair, Site site) const {
    return pair.count == 2 ? ShortcutFor(method, pair.lines[0], site) : nullptr;
  }

  const Writer& mWriter;
  const Frame& mFrame;
  const MosaicShortcuts& mShortcuts;
  const std::size_t mMethod;
  const std::uint32_t mFirst, mEnd;
  const std::size_t mPixels;
  const Site mLayoutSite;
  RowWindow<Sample> mRows;
  StripSteps<Sample> mSteps;
  const TargetLine mTarget;  // without its address
  const std::uint32_t mShift, mMask;
};

}  // namespace LmImagingLib
