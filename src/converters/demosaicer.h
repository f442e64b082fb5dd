#pragma once

#include <algorithm>

#include "converters/line_converter.h"
#include "walk/row_window.h"

namespace LmImagingLib {

/// A method of demosaicing.
struct DemosaicMethod {
  const char* name;     ///< of its kernel and its shortcuts
  unsigned long flag;   ///< that asks for it; 0 for the method without a flag
  std::uint32_t reach;  ///< lines above and below a pair that it reads
  SampleTwins<DecodeKernel> kernel;
};

/// The number of methods.
inline constexpr std::size_t kDemosaicMethods = 2;

/// The number of the method that the flags of a conversion ask for, and its lines above and below a pair.
std::size_t MethodOf(std::uint32_t flags);
std::uint32_t ReachOf(std::size_t method);

/// The row after the last one that a conversion of lines `first` to `end` reads.
std::uint32_t RowsRead(const Frame& frame, std::uint32_t first, std::uint32_t end);

/// The shortcuts to a writer, and to the one that exchanges red and blue, by each method; null where there is none.
struct MosaicShortcuts {
  explicit MosaicShortcuts(const Writer& writer);

  const Shortcut* own[kDemosaicMethods];
  const Shortcut* swapped[kDemosaicMethods];
};

/// The mosaic that a conversion reads.
struct MosaicSource {
  const SourceType& type;
  std::uint32_t width;  ///< samples of a row that may be read
};

/// Demosaics lines `first` to `end` of a frame with samples of bytes or of words.
template <class Sample>
class Demosaicer {
 public:
  Demosaicer(const MosaicSource& source, const Writer& writer, const MosaicShortcuts& shortcuts, const Frame& frame,
             std::uint32_t first, std::uint32_t end);

  void Convert();

 private:
  struct Pair;

  Pair PairAt(std::uint32_t line, std::uint32_t count, bool withNeighbours);
  void ConvertBlocks(const Pair& pair);
  void ConvertBilinear(const Pair& pair);
  void StoreCell(const Pair& pair, std::size_t column, std::size_t at);
  SourceLines CellsAt(const Pair& pair, std::size_t column, std::uint32_t cells = 3) const;
  const Shortcut* ShortcutFor(std::size_t method, const Pair& pair, std::uint32_t cell) const;

  const Writer& mWriter;
  const Frame& mFrame;
  const MosaicShortcuts& mShortcuts;
  const std::size_t mMethod;
  const std::uint32_t mFirst, mEnd;
  const std::size_t mPixels;
  const std::uint32_t mLayoutCell;
  RowWindow<Sample> mRows;
  StripSteps<Sample> mSteps;
  Fit mFit;
  std::uint32_t mMask;
};

}  // namespace LmImagingLib
