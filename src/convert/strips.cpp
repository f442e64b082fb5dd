#include "convert/strips.h"

#include <algorithm>
#include <cstring>

#include "convert/filter_tables.h"
#include "convert/writers/writers.h"
#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(LookupKernel, LookUp)
LM_DECLARE_KERNEL(SplitTapsKernel, SplitTaps)

namespace {

Room RoomIn(Strip& strip) { return {strip.red, strip.green, strip.blue}; }

LookupTables TablesOf(const StripSteps& steps) {
  const RGBFilterTables& tables = TablesOf(*steps.filter);
  return {tables.red8, tables.green8, tables.blue8};
}

constexpr std::size_t kCacheLine = 64;

// The pixels to convert until the target reaches a cache line: stores that cross one cost twice as much. None where no
// whole number of groups gets there.
std::size_t PixelsToCacheLine(const StripSteps& steps, const std::uint8_t* target) {
  const std::size_t missing = (kCacheLine - reinterpret_cast<std::uintptr_t>(target) % kCacheLine) % kCacheLine;
  const std::size_t bytes = steps.writer.pixelBytes;
  // 3 x 43 is 1 modulo 64, so every address is whole pixels of three bytes away from a cache line.
  const std::size_t pixels = bytes == 3 ? missing * 43 % kCacheLine : missing / bytes;
  return pixels * bytes % kCacheLine == missing && pixels % steps.groupPixels == 0 ? pixels : 0;
}

// Gives the second target the pixels that the first one has. Where they interleave, copying them is quicker than
// storing them again.
void Repeat(const Writer& writer, const Channels& channels, std::size_t count, const TargetLine* targets,
            std::size_t first) {
  if (writer.planes != 0) {
    writer.store.Active()(channels, count, targets[1], first);
  } else {
    std::memcpy(targets[1].line + first * writer.pixelBytes, targets[0].line + first * writer.pixelBytes,
                count * writer.pixelBytes);
  }
}

}  // namespace

bool StripSteps::LooksUp() const { return filter != nullptr && !TablesOf(*filter).IsIdentity8(); }

void ConvertStrips(const StripSteps& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first) {
  Strip strip;
  const bool looksUp = steps.LooksUp();
  StoreKernel* const store = steps.writer.store.Active();
  const bool intoPlanes = steps.writer.planes != 0 && targetCount == 1;
  // What needs no strip is done in one go.
  const std::size_t step = !looksUp && (steps.plain || intoPlanes) ? count : kStripPixels;
  std::size_t pixels = PixelsToCacheLine(steps, targets->line + first * steps.writer.pixelBytes);
  if (pixels == 0) pixels = step;
  for (std::size_t at = 0; at < count; at += pixels, pixels = step) {
    pixels = std::min(pixels, count - at);
    Room room = RoomIn(strip);
    if (intoPlanes) {
      std::uint8_t* const plane = targets->line + first + at;
      room = {plane, plane + targets->planeSize, plane + 2 * targets->planeSize};
    }
    Channels channels = steps.decode(in, at, pixels, room);
    if (looksUp) channels = kLookUp.Active()(TablesOf(steps), channels, pixels, room);
    store(channels, pixels, targets[0], first + at);
    if (targetCount == 2) Repeat(steps.writer, channels, pixels, targets, first + at);
  }
}

void ConvertPartOfGroup(const StripSteps& steps, const SourceLines& in, std::size_t decoded, std::size_t stored,
                        const TargetLine* targets, std::size_t targetCount, std::size_t first) {
  Strip strip;
  Channels channels = steps.decode(in, 0, decoded, RoomIn(strip));
  if (steps.LooksUp()) channels = kLookUp.Definition()(TablesOf(steps), channels, stored, RoomIn(strip));
  for (std::size_t k = 0; k < targetCount; ++k) steps.writer.store.Definition()(channels, stored, targets[k], first);
}

void ConvertTapStrips(const StripSteps& steps, const SourceLines& in, std::size_t pairs, const TargetLine& target,
                      bool leftBackwards, bool rightBackwards) {
  Strip samples;
  StoreKernel* const store = steps.writer.store.Active();
  alignas(64) std::uint8_t left[kStripPixels / 2];
  alignas(64) std::uint8_t right[kStripPixels / 2];
  for (std::size_t at = 0; at < pairs; at += kStripPixels / 2) {
    const std::size_t count = std::min(kStripPixels / 2, pairs - at);
    const Channels channels = steps.decode(in, 2 * at, 2 * count, RoomIn(samples));
    kSplitTaps.Active()(channels.red, count, leftBackwards, rightBackwards, left, right);
    const std::size_t leftAt = leftBackwards ? pairs - at - count : at;
    const std::size_t rightAt = pairs + (rightBackwards ? pairs - at - count : at);
    store({left, left, left}, count, target, leftAt);
    store({right, right, right}, count, target, rightAt);
  }
}

}  // namespace LmImagingLib
