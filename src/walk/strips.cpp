#include "walk/strips.h"

#include <algorithm>
#include <cstring>

#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(OpaqueKernel, MakeOpaque)
LM_DECLARE_WIDE_KERNEL(MatrixKernel, ApplyMatrix)

namespace {

// The pixels to convert until the target reaches a cache line: stores that cross one cost twice as much. None where no
// whole number of groups gets there.
std::size_t PixelsToCacheLine(std::uint32_t groupPixels, const Writer& writer, const std::uint8_t* target) {
  const std::size_t missing = (kCacheLine - reinterpret_cast<std::uintptr_t>(target) % kCacheLine) % kCacheLine;
  const std::size_t bytes = writer.pixelBytes;
  // 3 x 43 is 1 modulo 64, so every address is whole pixels of three bytes away from a cache line; of six bytes every
  // even one. Other pixels are powers of two. A division would take as long as a block of pixels.
  const std::size_t pixels = bytes == 3   ? missing * 43 % kCacheLine
                             : bytes == 6 ? missing / 2 * 43 % kCacheLine
                             : bytes == 8 ? missing / 8
                                          : missing >> (bytes / 2);
  const bool wholeGroups = (pixels & (groupPixels - 1)) == 0;
  return wholeGroups && pixels * bytes % kCacheLine == missing ? pixels : 0;
}

template <class Kernel>
Kernel* Chosen(const Twins<Kernel>& twins, KernelChoice choice) {
  return choice == KernelChoice::kActive ? twins.Active() : twins.Definition();
}

// Whether samples may be decoded into the target itself: it has planes of them, to be written through the cache.
template <class Sample>
bool HasRoom(const Writer& writer, const TargetLine& target) {
  return writer.isPlain && writer.pixelBytes == sizeof(Sample) && !target.streams &&
         reinterpret_cast<std::uintptr_t>(target.line) % sizeof(Sample) == 0;
}

// Whether channels are used where the source has them. Bytes are handed on by their decoder. Words have to be aligned,
// and those of an image that is converted in place are copied first, as stores into one plane reach the next one.
template <class Sample>
bool HasChannels(const StripSteps<Sample>& steps, const SourceLines& in, const TargetLine& target) {
  if (sizeof(Sample) == 1 || !steps.plain) return steps.plain;
  const auto at = [&](std::size_t k) { return reinterpret_cast<std::uintptr_t>(in.line[k]); };
  const std::size_t step = target.run == nullptr ? 0 : target.run->source;
  return ((at(0) | at(1) | at(2) | step) % sizeof(Sample)) == 0 && in.line[0] != target.line;
}

template <class Sample>
Channels<Sample> ChannelsIn(const SourceLines& in, std::size_t first) {
  const auto* const red = reinterpret_cast<const Sample*>(in.line[0]) + first;
  if (in.line[1] == nullptr) return {red, red, red};
  return {red, reinterpret_cast<const Sample*>(in.line[1]) + first,
          reinterpret_cast<const Sample*>(in.line[2]) + first};
}

// Room in the target for the samples of the pixels from `first` on.
template <class Sample>
Room<Sample> RoomIn(const TargetLine& target, std::size_t first) {
  auto* const plane = reinterpret_cast<Sample*>(target.line) + first;
  const std::size_t step = target.planeSize / sizeof(Sample);
  return {plane, plane + step, plane + 2 * step, target.ahead};
}

// Decodes words where they go, shifted up.
void DecodeInto(const StripSteps<std::uint16_t>& steps, SourceLines in, std::size_t count, const TargetLine& target,
                std::size_t first) {
  in.up = target.fit.up;
  StripWalk walk(steps.groupPixels, steps.writer, target, count, first, count);
  while (walk.Next()) {
    steps.decode(in, walk.At(), walk.Pixels(), RoomIn<std::uint16_t>(target, first + walk.At()));
  }
}

// Gives the second target the pixels that the first one has. Copying them is faster than storing them again, if they
// are in the cache.
void Repeat(const Writer& writer, std::size_t count, const TargetLine* targets, std::size_t first) {
  for (std::size_t plane = 0; plane < writer.planes; ++plane) {
    const std::size_t at = plane * targets[0].planeSize + first * writer.pixelBytes;
    std::memcpy(targets[1].line + at, targets[0].line + at, count * writer.pixelBytes);
  }
}

// Pixels of a strip. Where the target is stored past the caches, loads of the next strip wait for stores of the last
// one, and short strips spread both more evenly.
std::size_t StripPixels(const TargetLine& target) { return target.streams ? kStripPixels / 4 : kStripPixels; }

// Rare steps with strips of their own stay out of line: a large frame on the stack costs a single pixel dearly.
template <class Sample>
[[gnu::noinline]] void StoreByMatrix(const Channels<Sample>& channels, const StripSteps<Sample>& steps,
                                     std::size_t count, const TargetLine& out, std::size_t first, KernelChoice choice) {
  StripSteps<Sample> rest = steps;
  rest.matrix = nullptr;
  Strip<Sample> strip;
  Chosen(kApplyMatrix.template Of<Sample>(), choice)(channels, *steps.matrix, count,
                                                     {strip.red, strip.green, strip.blue});
  StorePixels<Sample>({strip.red, strip.green, strip.blue}, rest, count, out, first, choice);
}

template <class Sample>
[[gnu::noinline]] void StoreWidened(const Channels<Sample>& channels, const StripSteps<Sample>& steps,
                                    std::size_t count, const TargetLine& out, std::size_t first, KernelChoice choice) {
  Strip<std::uint16_t> words;
  std::copy_n(channels.red, count, words.red);
  std::copy_n(channels.green, count, words.green);
  std::copy_n(channels.blue, count, words.blue);
  Chosen(steps.writer.store.words, choice)({words.red, words.green, words.blue}, steps.widening, count, out, first);
}

}  // namespace

template <class Sample>
void StorePixels(const Channels<Sample>& channels, const StripSteps<Sample>& steps, std::size_t count,
                 const TargetLine& out, std::size_t first, KernelChoice choice) {
  const Writer& writer = steps.writer;
  if (steps.matrix != nullptr) return StoreByMatrix(channels, steps, count, out, first, choice);
  if (steps.widening != nullptr) {
    StoreWidened(channels, steps, count, out, first, choice);
  } else {
    Chosen(writer.store.template Of<Sample>(), choice)(channels, steps.tables, count, out, first);
  }
  if (out.opaque) kMakeOpaque.Active()(out.line + first * writer.pixelBytes, writer.pixelBytes, count);
}

StripWalk::StripWalk(std::uint32_t groupPixels, const Writer& writer, const TargetLine& target, std::size_t count,
                     std::size_t first, std::size_t most)
    : mMost(most), mCount(count) {
  const std::uint8_t* const begin = target.line + first * writer.pixelBytes;
  if (target.streams || !IsInOneGo(begin, count * writer.pixelBytes)) {
    mNext = PixelsToCacheLine(groupPixels, writer, begin);
  }
  if (mNext == 0) mNext = most;
}

bool StripWalk::Next() {
  mAt += mPixels;
  mPixels = std::min(mNext, mCount - mAt);
  mNext = mMost;
  return mPixels != 0;
}

template <class Sample>
void ConvertStrips(const StripSteps<Sample>& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first) {
  if (targetCount == 2 && targets[0].streams) {
    // What went past the cache cannot be repeated from there.
    ConvertStrips(steps, in, count, &targets[0], 1, first);
    ConvertStrips(steps, in, count, &targets[1], 1, first);
    return;
  }
  const bool inTarget = HasRoom<Sample>(steps.writer, targets[0]);
  // Words are complete there where they only have to be shifted up, and bytes where nothing is looked up.
  const bool complete = inTarget && steps.tables == nullptr && steps.matrix == nullptr &&
                        (sizeof(Sample) == 1 || targets[0].fit.down == 0);
  if constexpr (sizeof(Sample) == 2) {
    if (complete) return DecodeInto(steps, in, count, targets[0], first);
  }
  Strip<Sample> strip;
  // Channels that need no strip are stored in one go, unless something is done to them afterwards.
  const bool plain = HasChannels(steps, in, targets[0]);
  const bool whole = (plain || complete) && steps.widening == nullptr && steps.matrix == nullptr && !targets[0].opaque;
  StripWalk walk(steps.groupPixels, steps.writer, targets[0], count, first, whole ? count : StripPixels(targets[0]));
  while (walk.Next()) {
    const std::size_t at = first + walk.At();
    const Room<Sample> room =
        inTarget ? RoomIn<Sample>(targets[0], at) : Room<Sample>{strip.red, strip.green, strip.blue};
    const Channels<Sample> channels = sizeof(Sample) == 2 && plain ? ChannelsIn<Sample>(in, walk.At())
                                                                   : steps.decode(in, walk.At(), walk.Pixels(), room);
    StorePixels(channels, steps, walk.Pixels(), targets[0], at, KernelChoice::kActive);
    if (targetCount == 2) Repeat(steps.writer, walk.Pixels(), targets, at);
  }
}

template <class Sample>
void StoreDecodedRun(const Channels<Sample>& channels, const StripSteps<Sample>& steps, std::size_t count,
                     const TargetLine& target, std::size_t step) {
  const LineRun run{target.run->lines, step, target.run->target};
  TargetLine out = target;
  out.run = &run;
  StorePixels(channels, steps, count, out, 0, KernelChoice::kActive);
}

template <class Sample>
std::uint32_t LinesAtOnce(const StripSteps<Sample>& steps, const SourceLines& in, const TargetLine& target,
                          std::size_t pixels) {
  const bool inTwoSteps = steps.widening == nullptr && steps.matrix == nullptr && !target.opaque;
  if (!inTwoSteps || pixels == 0 || !StoresRuns(steps.writer)) return 0;
  if (HasChannels(steps, in, target)) return target.run->lines;
  const auto lines = static_cast<std::uint32_t>(kStripPixels / StepInStrip(pixels));
  return lines > 1 ? lines : 0;
}

template <class Sample>
void ConvertAtOnce(const StripSteps<Sample>& steps, const SourceLines& in, std::size_t count,
                   const TargetLine& target) {
  if (sizeof(Sample) == 2 && HasChannels(steps, in, target)) {
    return StorePixels(ChannelsIn<Sample>(in, 0), steps, count, target, 0, KernelChoice::kActive);
  }
  const std::size_t step = StepInStrip(count) * sizeof(Sample);
  const LineRun decoded{target.run->lines, target.run->source, step};
  Strip<Sample> strip;
  StoreDecodedRun(steps.decode(in, 0, count, {strip.red, strip.green, strip.blue, 0, &decoded}), steps, count, target,
                  step);
}

template void StorePixels(const Channels<std::uint8_t>&, const StripSteps<std::uint8_t>&, std::size_t,
                          const TargetLine&, std::size_t, KernelChoice);
template void StorePixels(const Channels<std::uint16_t>&, const StripSteps<std::uint16_t>&, std::size_t,
                          const TargetLine&, std::size_t, KernelChoice);
template void ConvertStrips(const StripSteps<std::uint8_t>&, const SourceLines&, std::size_t, const TargetLine*,
                            std::size_t, std::size_t);
template void ConvertStrips(const StripSteps<std::uint16_t>&, const SourceLines&, std::size_t, const TargetLine*,
                            std::size_t, std::size_t);

template void StoreDecodedRun(const Channels<std::uint8_t>&, const StripSteps<std::uint8_t>&, std::size_t,
                              const TargetLine&, std::size_t);
template void StoreDecodedRun(const Channels<std::uint16_t>&, const StripSteps<std::uint16_t>&, std::size_t,
                              const TargetLine&, std::size_t);

template std::uint32_t LinesAtOnce(const StripSteps<std::uint8_t>&, const SourceLines&, const TargetLine&, std::size_t);
template std::uint32_t LinesAtOnce(const StripSteps<std::uint16_t>&, const SourceLines&, const TargetLine&,
                                   std::size_t);

template void ConvertAtOnce(const StripSteps<std::uint8_t>&, const SourceLines&, std::size_t, const TargetLine&);
template void ConvertAtOnce(const StripSteps<std::uint16_t>&, const SourceLines&, std::size_t, const TargetLine&);

}  // namespace LmImagingLib
