#include "converters/steps_after_demosaicing.h"

#include <algorithm>

#include "converters/demosaic_method.h"
#include "filter/development_tables.h"
#include "filter/filter_tables.h"

namespace LmImagingLib {

namespace {

bool IsInFull(const Frame& frame, const Writer& writer) {
  return writer.depth > 8 && (frame.flags & ConversionFlags::kFullDepth) != 0;
}

}  // namespace

std::uint32_t DepthOfRows(const Frame& frame, std::uint32_t depth, const Writer& writer) {
  if (frame.development != nullptr) return frame.development->EntryDepth();
  if (!FiltersFirst(frame) || !TablesOf(*frame.filter).curve) return depth;
  // Samples stay as they are where the curve changes none.
  const std::uint32_t most = std::max(depth, writer.depth);
  return TablesOf(*frame.filter).Lookup(depth, most) != nullptr ? most : depth;
}

template <class Sample>
StripSteps<Sample> StepsAfterDemosaicing(const Frame& frame, std::uint32_t depth, const Writer& writer) {
  StripSteps<Sample> steps{nullptr, 1, false, nullptr, writer};
  if (frame.development != nullptr) {
    steps.matrix = frame.development->Matrix();
    steps.widening = frame.development->Widening();
  }
  if (FiltersFirst(frame)) return steps;
  if (sizeof(Sample) == 1 && IsInFull(frame, writer)) {
    steps.widening = LookupOf<std::uint16_t>(frame, 8, writer);
  } else {
    steps.tables = LookupOf<Sample>(frame, depth, writer);
  }
  return steps;
}

template <class Sample>
Fit FitAfterDemosaicing(const Frame& frame, std::uint32_t depth, const Writer& writer) {
  if (frame.development != nullptr && IsInFull(frame, writer)) return {};  // results have the writer's bits
  return FitOf(sizeof(Sample) == 1 ? 8 : DepthOfRows(frame, depth, writer), writer, IsInFull(frame, writer));
}

template StripSteps<std::uint8_t> StepsAfterDemosaicing(const Frame&, std::uint32_t, const Writer&);
template StripSteps<std::uint16_t> StepsAfterDemosaicing(const Frame&, std::uint32_t, const Writer&);
template Fit FitAfterDemosaicing<std::uint8_t>(const Frame&, std::uint32_t, const Writer&);
template Fit FitAfterDemosaicing<std::uint16_t>(const Frame&, std::uint32_t, const Writer&);

}  // namespace LmImagingLib
