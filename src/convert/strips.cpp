#include "convert/strips.h"

#include <algorithm>

#include "convert/filter_tables.h"
#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(LookupKernel, LookUp)
LM_DECLARE_KERNEL(SplitTapsKernel, SplitTaps)

namespace {

Channels Decode(const StripSteps& steps, const SourceLines& in, std::size_t first, std::size_t count, Strip& strip) {
  const Channels channels = steps.decode(in, first, count, strip);
  if (steps.filter == nullptr) return channels;
  const RGBFilterTables& tables = TablesOf(*steps.filter);
  if (tables.IsIdentity8()) return channels;
  return kLookUp.Active()({tables.red8, tables.green8, tables.blue8}, channels, count, strip);
}

}  // namespace

void ConvertStrips(const StripSteps& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first) {
  Strip strip;
  for (std::size_t at = 0; at < count; at += kStripPixels) {
    const std::size_t pixels = std::min(kStripPixels, count - at);
    const Channels channels = Decode(steps, in, at, pixels, strip);
    for (std::size_t k = 0; k < targetCount; ++k) steps.store(channels, pixels, targets[k], first + at);
  }
}

void ConvertPartOfGroup(const StripSteps& steps, const SourceLines& in, std::size_t decoded, std::size_t stored,
                        const TargetLine* targets, std::size_t targetCount, std::size_t first) {
  Strip strip;
  const Channels channels = Decode(steps, in, 0, decoded, strip);
  for (std::size_t k = 0; k < targetCount; ++k) steps.store(channels, stored, targets[k], first);
}

void ConvertTapStrips(const StripSteps& steps, const SourceLines& in, std::size_t pairs, const TargetLine& target,
                      bool leftBackwards, bool rightBackwards) {
  Strip samples;
  alignas(64) std::uint8_t left[kStripPixels / 2];
  alignas(64) std::uint8_t right[kStripPixels / 2];
  for (std::size_t at = 0; at < pairs; at += kStripPixels / 2) {
    const std::size_t count = std::min(kStripPixels / 2, pairs - at);
    const Channels channels = Decode(steps, in, 2 * at, 2 * count, samples);
    kSplitTaps.Active()(channels.red, count, leftBackwards, rightBackwards, left, right);
    const std::size_t leftAt = leftBackwards ? pairs - at - count : at;
    const std::size_t rightAt = pairs + (rightBackwards ? pairs - at - count : at);
    steps.store({left, left, left}, count, target, leftAt);
    steps.store({right, right, right}, count, target, rightAt);
  }
}

}  // namespace LmImagingLib
