#include "converters/demosaic_method.h"

#include <algorithm>
#include <iterator>

#include "LmImagingLib/PixelConverter.h"
#include "filter/development_tables.h"
#include "filter/filter_tables.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(DecodeKernel, BayerHalf)
LM_DECLARE_WIDE_KERNEL(DecodeKernel, BayerBlock)
LM_DECLARE_WIDE_KERNEL(DecodeKernel, BayerBilinear)
LM_DECLARE_KERNEL(DecodeKernel<std::uint8_t>, BayerHalfOfWords)
LM_DECLARE_KERNEL(DecodeKernel<std::uint8_t>, BayerBlockOfWords)

using Kind = DemosaicMethod::Kind;

// A method earlier in the table wins over a later one.
const DemosaicMethod kMethods[kDemosaicMethods] = {
    {"BayerHalf", "BayerHalfOfWords", ConversionFlags::kHalfSize, Kind::kHalfSize, 0, kBayerHalf, kBayerHalfOfWords},
    {"BayerBilinear", nullptr, ConversionFlags::kBilinear, Kind::kPairs, 1, kBayerBilinear, {}},
    {"BayerAdaptive", nullptr, ConversionFlags::kAdaptive, Kind::kAdaptive, 8, {}, {}},
    {"BayerGradientCorrected", nullptr, ConversionFlags::kGradientCorrected, Kind::kGradientCorrected, 2, {}, {}},
    {"BayerBlock", "BayerBlockOfWords", 0, Kind::kPairs, 0, kBayerBlock, kBayerBlockOfWords}};

std::size_t MethodOf(std::uint32_t flags) {
  const auto* const found =
      std::find_if(std::begin(kMethods), std::end(kMethods),
                   [flags](const DemosaicMethod& method) { return method.flag == 0 || (flags & method.flag) != 0; });
  return static_cast<std::size_t>(found - kMethods);
}

bool IsBorder(const Frame& frame, std::uint32_t line) {
  return line == 0 || line == frame.sourceHeight - 2 || line == frame.sourceHeight - 1;
}

std::uint32_t RowsRead(const Frame& frame, std::uint32_t first, std::uint32_t end) {
  const DemosaicMethod& method = DemosaicMethodOf(frame.flags);
  if (method.kind == DemosaicMethod::Kind::kHalfSize) return 2 * end;
  if (method.kind != DemosaicMethod::Kind::kPairs) {
    return end + std::min(method.reach, frame.sourceHeight - std::min(end, frame.sourceHeight));
  }
  const bool endsWithPair = (end - first) % 2 == 0;
  return endsWithPair && !IsBorder(frame, end - 2) ? end + method.reach : end;
}

std::uint32_t SamplesRead(const Frame& frame) { return IsHalfSize(frame.flags) ? 2 * frame.pixels : frame.pixels; }

Site LayoutSite(std::uint32_t flags) {
  if ((flags & ConversionFlags::kBayerBG) != 0) return Site::kBlue;
  if ((flags & ConversionFlags::kBayerRG) != 0) return Site::kRed;
  if ((flags & ConversionFlags::kBayerGB) != 0) return Site::kGreenInBlueRow;
  return Site::kGreenInRedRow;
}

bool FiltersFirst(const Frame& frame) {
  if (frame.development != nullptr) return true;
  return frame.filter != nullptr && (frame.flags & ConversionFlags::kFilterFirst) != 0;
}

RowLookup RowLookupOf(const Frame& frame, std::uint32_t depth, std::uint32_t resultDepth) {
  if (!FiltersFirst(frame)) return {};
  if (const DevelopSteps* const steps = frame.development; steps != nullptr) {
    return {&steps->Lookup(), LayoutSite(frame.flags), steps->DefectThreshold() != kNoDefects,
            steps->DefectThreshold()};
  }
  return {TablesOf(*frame.filter).OfMosaics(depth, resultDepth), LayoutSite(frame.flags)};
}

}  // namespace LmImagingLib
