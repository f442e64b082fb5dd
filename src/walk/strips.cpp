#include "walk/strips.h"

#include <algorithm>
#include <cstring>

#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(SplitTapsKernel, SplitTaps)

namespace {

Room RoomIn(Strip& strip) { return {strip.red, strip.green, strip.blue}; }

// The pixels to convert until the target reaches a cache line: stores that cross one cost twice as much. None where no
// whole number of groups gets there.
std::size_t PixelsToCacheLine(const StripSteps& steps, const std::uint8_t* target) {
  const std::size_t missing = (kCacheLine - reinterpret_cast<std::uintptr_t>(target) % kCacheLine) % kCacheLine;
  const std::size_t bytes = steps.writer.pixelBytes;
  // 3 x 43 is 1 modulo 64, so every address is whole pixels of three bytes away from a cache line. Pixels of 1, 2 and 4
  // bytes need no division either, which would take as long as a block of pixels.
  const std::size_t pixels = bytes == 3 ? missing * 43 % kCacheLine : missing >> (bytes / 2);
  const bool wholeGroups = (pixels & (steps.groupPixels - 1)) == 0;
  return wholeGroups && pixels * bytes % kCacheLine == missing ? pixels : 0;
}

// Gives the second target the pixels that the first one has. Copying them is quicker than storing them again, if they
// are in the cache.
void Repeat(const Writer& writer, std::size_t count, const TargetLine* targets, std::size_t first) {
  for (std::size_t plane = 0; plane < std::max(writer.planes, 1U); ++plane) {
    const std::size_t at = plane * targets[0].planeSize + first * writer.pixelBytes;
    std::memcpy(targets[1].line + at, targets[0].line + at, count * writer.pixelBytes);
  }
}

}  // namespace

StripWalk::StripWalk(const StripSteps& steps, const TargetLine& target, std::size_t count, std::size_t first,
                     std::size_t most)
    : mNext(PixelsToCacheLine(steps, target.line + first * steps.writer.pixelBytes)), mMost(most), mCount(count) {
  if (mNext == 0) mNext = most;
}

bool StripWalk::Next() {
  mAt += mPixels;
  mPixels = std::min(mNext, mCount - mAt);
  mNext = mMost;
  return mPixels != 0;
}

void ConvertStrips(const StripSteps& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first) {
  if (targetCount == 2 && targets[0].streams) {
    // What went past the cache cannot be repeated from there.
    ConvertStrips(steps, in, count, &targets[0], 1, first);
    ConvertStrips(steps, in, count, &targets[1], 1, first);
    return;
  }
  StoreKernel* const store = steps.writer.store.Active();
  Strip strip;
  // What needs no strip is done in one go.
  const bool whole = steps.plain || (steps.writer.planes != 0 && !targets[0].streams);
  StripWalk walk(steps, targets[0], count, first, whole ? count : kStripPixels);
  while (walk.Next()) {
    const std::size_t at = first + walk.At();
    const Room room = RoomFor(steps, targets[0], at, strip);
    const Channels channels = steps.decode(in, walk.At(), walk.Pixels(), room);
    store(channels, steps.tables, walk.Pixels(), targets[0], at);
    if (targetCount == 2) Repeat(steps.writer, walk.Pixels(), targets, at);
  }
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
    store({left, left, left}, nullptr, count, target, leftAt);
    store({right, right, right}, nullptr, count, target, rightAt);
  }
}

}  // namespace LmImagingLib
