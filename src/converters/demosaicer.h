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

/// The shortcuts to a writer, and to the one that exchanges red and blue, by each method; null where there is none.
struct MosaicShortcuts {
  explicit MosaicShortcuts(const Writer& writer);

  const Shortcut* own[kDemosaicMethods];
  const Shortcut* swapped[kDemosaicMethods];
};

/// Demosaics the lines of a frame with samples of bytes or of words.
template <class Sample>
class Demosaicer {
 public:
  /// @param width  samples of a row that are read
  Demosaicer(const SourceType& source, const Writer& writer, const MosaicShortcuts& shortcuts, const Frame& frame,
             std::uint32_t width);

  /// Converts lines `line` and, if `count` is 2, the next one.
  void ConvertPair(std::uint32_t line, std::uint32_t count);

 private:
  struct Targets;

  void ConvertBlocks(std::uint32_t top, const Targets& targets);
  void ConvertBilinear(std::uint32_t line, const Targets& targets);
  void ConvertInterior(std::uint32_t cell, const std::uint8_t* const (&rows)[4], const Targets& targets);
  void StoreCell(std::uint32_t line, std::size_t column, std::size_t at, const Targets& targets);
  void ConvertCellDirectly(const Shortcut& shortcut, std::uint32_t line, std::size_t column, const Targets& targets);
  SourceLines CellsAt(std::uint32_t line, std::size_t column, std::uint32_t cells = 3);
  std::uint32_t CellCode(std::uint32_t line, std::size_t column) const;
  const Shortcut* ShortcutFor(std::size_t method, const Targets& targets, std::uint32_t cell) const;

  const Writer& mWriter;
  const Frame& mFrame;
  const MosaicShortcuts& mShortcuts;
  const std::size_t mMethod;
  const std::size_t mPixels;
  const std::uint32_t mLayoutCell;
  RowWindow<Sample> mRows;
  StripSteps<Sample> mSteps;
  Fit mFit;
  std::uint32_t mMask;
};

}  // namespace LmImagingLib
