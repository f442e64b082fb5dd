#include "convert/strips.h"

#include <algorithm>

#include "convert/filter_tables.h"
#include "convert/writers/writers.h"
#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(LookupKernel, LookUp)
LM_DECLARE_KERNEL(SplitTapsKernel, SplitTaps)

namespace {

Room RoomIn(Strip& strip) { return {strip.red, strip.green, strip.blue}; }

// The tables to look up, or null where that would change nothing.
const RGBFilterTables* TablesOf(const StripSteps& steps) {
  if (steps.filter == nullptr) return nullptr;
  const RGBFilterTables& tables = TablesOf(*steps.filter);
  return tables.IsIdentity8() ? nullptr : &tables;
}

Channels Decode(const StripSteps& steps, const RGBFilterTables* tables, const SourceLines& in, std::size_t first,
                std::size_t count, const Room& room) {
  const Channels channels = steps.decode(in, first, count, room);
  if (tables == nullptr) return channels;
  return kLookUp.Active()({tables->red8, tables->green8, tables->blue8}, channels, count, room);
}

}  // namespace

void ConvertStrips(const StripSteps& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first) {
  Strip strip;
  const RGBFilterTables* const tables = TablesOf(steps);
  StoreKernel* const store = steps.writer.store.Active();
  const bool intoPlanes = steps.writer.planes != 0 && targetCount == 1;
  // What needs no strip is done in one go.
  const std::size_t step = tables == nullptr && (steps.plain || intoPlanes) ? count : kStripPixels;
  for (std::size_t at = 0; at < count; at += step) {
    const std::size_t pixels = std::min(step, count - at);
    Room room = RoomIn(strip);
    if (intoPlanes) {
      std::uint8_t* const plane = targets->line + first + at;
      room = {plane, plane + targets->planeSize, plane + 2 * targets->planeSize};
    }
    const Channels channels = Decode(steps, tables, in, at, pixels, room);
    for (std::size_t k = 0; k < targetCount; ++k) store(channels, pixels, targets[k], first + at);
  }
}

void ConvertPartOfGroup(const StripSteps& steps, const SourceLines& in, std::size_t decoded, std::size_t stored,
                        const TargetLine* targets, std::size_t targetCount, std::size_t first) {
  Strip strip;
  const Channels channels = Decode(steps, TablesOf(steps), in, 0, decoded, RoomIn(strip));
  for (std::size_t k = 0; k < targetCount; ++k) steps.writer.store.Active()(channels, stored, targets[k], first);
}

void ConvertTapStrips(const StripSteps& steps, const SourceLines& in, std::size_t pairs, const TargetLine& target,
                      bool leftBackwards, bool rightBackwards) {
  Strip samples;
  StoreKernel* const store = steps.writer.store.Active();
  alignas(64) std::uint8_t left[kStripPixels / 2];
  alignas(64) std::uint8_t right[kStripPixels / 2];
  for (std::size_t at = 0; at < pairs; at += kStripPixels / 2) {
    const std::size_t count = std::min(kStripPixels / 2, pairs - at);
    const Channels channels = Decode(steps, nullptr, in, 2 * at, 2 * count, RoomIn(samples));
    kSplitTaps.Active()(channels.red, count, leftBackwards, rightBackwards, left, right);
    const std::size_t leftAt = leftBackwards ? pairs - at - count : at;
    const std::size_t rightAt = pairs + (rightBackwards ? pairs - at - count : at);
    store({left, left, left}, count, target, leftAt);
    store({right, right, right}, count, target, rightAt);
  }
}

}  // namespace LmImagingLib
