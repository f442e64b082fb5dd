#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "formats/format.h"
#include "walk/frame.h"
#include "walk/row_window.h"

namespace LmImagingLib {

/// A method of demosaicing.
struct DemosaicMethod {
  /// How the rows around a line are read, and who makes its colours.
  enum class Kind {
    kHalfSize,  ///< a pixel of each cell
    kPairs,     ///< pairs of lines, of cells at the edges of the image
    kAdaptive,  ///< single lines from rows that the edges mirror
    kGradientCorrected,
  };

  const char* name;     ///< of its kernel and its shortcuts
  const char* ofWords;  ///< of those that make bytes of words in the source; null where there is none
  unsigned long flag;   ///< asks for it; 0 for the method without a flag
  Kind kind;
  std::uint32_t reach;               ///< lines above and below the ones to convert that it reads
  SampleTwins<DecodeKernel> kernel;  ///< null where rows are not read as they are
  Twins<DecodeKernel<std::uint8_t>> kernelOfWords;
};

/// The number of methods.
inline constexpr std::size_t kDemosaicMethods = 5;
extern const DemosaicMethod kMethods[kDemosaicMethods];
/// The one whose cells make the edges of an image, and its number.
inline constexpr std::size_t kBlock = kDemosaicMethods - 1;

/// The number of the method that the flags of a conversion ask for.
std::size_t MethodOf(std::uint32_t flags);
inline const DemosaicMethod& DemosaicMethodOf(std::uint32_t flags) { return kMethods[MethodOf(flags)]; }
inline bool IsHalfSize(std::uint32_t flags) { return DemosaicMethodOf(flags).kind == DemosaicMethod::Kind::kHalfSize; }

/// The pairs of lines at the top and at the bottom of an image are made of blocks by methods of pairs.
bool IsBorder(const Frame& frame, std::uint32_t line);

/// The row after the last one that a conversion of lines `first` to `end` reads.
std::uint32_t RowsRead(const Frame& frame, std::uint32_t first, std::uint32_t end);
/// The samples of a row that a conversion reads.
std::uint32_t SamplesRead(const Frame& frame);

/// The flags that say the layout of a mosaic.
inline constexpr unsigned long kLayoutFlags =
    ConversionFlags::kBayerGR | ConversionFlags::kBayerGB | ConversionFlags::kBayerRG | ConversionFlags::kBayerBG;

/// The site of even lines and columns.
Site LayoutSite(std::uint32_t flags);

/// Whether the samples of a conversion are looked up before they become colours, and nothing afterwards.
bool FiltersFirst(const Frame& frame);
/// The tables for such samples of `depth` bits.
RowLookup RowLookupOf(const Frame& frame, std::uint32_t depth, std::uint32_t resultDepth);

}  // namespace LmImagingLib
