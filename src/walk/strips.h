#pragma once

#include "formats/writers.h"
#include "simd/color_matrix.h"
#include "simd/strip.h"

namespace LmImagingLib {

/// The steps of a line: decode, look up, store.
template <class Sample>
struct StripSteps {
  DecodeKernel<Sample>* decode;
  std::uint32_t groupPixels;           ///< pixels that the source decodes together
  bool plain;                          ///< whether the source holds its channels as samples that are complete
  const LookupTables<Sample>* tables;  ///< null where nothing is looked up
  const Writer& writer;
  /// Of bytes that are to become words: the lookup that makes words of them, or null.
  const LookupTables<std::uint16_t>* widening = nullptr;
  /// Applied to the colours before anything else, or null.
  const MatrixSteps* matrix = nullptr;
};

inline constexpr std::size_t kCacheLine = 64;

/// Divides the pixels of a line into strips.
class StripWalk {
 public:
  /// @param groupPixels  pixels that strips do not divide, a power of two
  /// @param count  pixels to convert, the first of which is pixel `first` of the target
  /// @param most  pixels of a strip at most
  StripWalk(std::uint32_t groupPixels, const Writer& writer, const TargetLine& target, std::size_t count,
            std::size_t first, std::size_t most);

  /// Goes on to the next strip; false after the last.
  bool Next();
  /// The first pixel of the strip, from 0.
  std::size_t At() const { return mAt; }
  std::size_t Pixels() const { return mPixels; }

 private:
  std::size_t mAt = 0;
  std::size_t mPixels = 0;
  std::size_t mNext = 0;  // pixels of the next strip
  std::size_t mMost;
  std::size_t mCount;
};

/// Which twin of a kernel runs: of a few pixels the definition is the faster one.
enum class KernelChoice { kActive, kDefinition };

/// Looks up and stores `count` decoded pixels, at most those of a strip where anything but the lookup is to be done.
template <class Sample>
void StorePixels(const Channels<Sample>& channels, const StripSteps<Sample>& steps, std::size_t count,
                 const TargetLine& out, std::size_t first, KernelChoice choice);

/// Converts `count` pixels, whole groups of the source, from the beginning of `in` to pixel `first` of each target.
/// @param targetCount  lines that receive the same pixels
template <class Sample>
void ConvertStrips(const StripSteps<Sample>& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first);

/// Whether a line of so many bytes is stored in one go. Others begin with a strip that ends where the target reaches a
/// cache line. In short lines one more strip takes longer than stores that cross cache lines.
/// @param step  from the line to the next one that is stored so
inline bool IsInOneGo(const std::uint8_t* target, std::size_t bytes, std::size_t step = 0) {
  constexpr std::size_t kFewBytes = 2048;
  return bytes < kFewBytes || (reinterpret_cast<std::uintptr_t>(target) | step) % kCacheLine == 0;
}

/// Whether lines that are stored in one go need no strip: their channels are in the source, or are decoded into the
/// target.
template <class Sample>
bool NeedsNoStrip(const StripSteps<Sample>& steps, const TargetLine& target) {
  if (steps.widening != nullptr || steps.matrix != nullptr || target.opaque || target.streams) return false;
  if (sizeof(Sample) == 1 && steps.plain) return true;
  return steps.tables == nullptr && steps.writer.isPlain && steps.writer.pixelBytes == sizeof(Sample) &&
         (sizeof(Sample) == 1 || target.fit.down == 0);
}

/// Whether a writer stores the lines of a run by one call. All do but that of gray bytes, which are decoded where they
/// go.
inline bool StoresRuns(const Writer& writer) { return writer.planes != 1 || writer.pixelBytes != 1 || IsLuma(writer); }

/// Whether lines that need no strip may be a run: they are complete once they are decoded, or a writer of bytes takes
/// them from the source or from planes of the target.
template <class Sample>
bool TakesRuns(const StripSteps<Sample>& steps) {
  return sizeof(Sample) == 2 || (!steps.plain && steps.writer.planes == 1) || StoresRuns(steps.writer);
}

/// Samples from a line to the next one in a strip that holds several.
inline std::size_t StepInStrip(std::size_t pixels) { return (pixels + kCacheLine - 1) / kCacheLine * kCacheLine; }

/// Lines of a run that are stored by one call of a kernel: all of them where the source holds their channels, or as
/// many as a strip has room for, once another call has decoded them. 0 where each line needs calls of its own.
template <class Sample>
std::uint32_t LinesAtOnce(const StripSteps<Sample>& steps, const SourceLines& in, const TargetLine& target,
                          std::size_t pixels);

/// Converts the lines of a run, at most as many as `LinesAtOnce`.
template <class Sample>
void ConvertAtOnce(const StripSteps<Sample>& steps, const SourceLines& in, std::size_t count, const TargetLine& target);

/// Stores the lines of a run whose channels were decoded, `step` bytes from one line to the next.
template <class Sample>
void StoreDecodedRun(const Channels<Sample>& channels, const StripSteps<Sample>& steps, std::size_t count,
                     const TargetLine& target, std::size_t step);

/// Converts such a line as `ConvertStrips` does, with less work beside its pixels. Words of the target are aligned.
/// @param in  is told how far to shift words meanwhile; a copy of it would wait for the stores of its members
template <class Sample>
void ConvertWithoutStrip(const StripSteps<Sample>& steps, SourceLines& in, std::size_t count,
                         const TargetLine& target) {
  auto* const plane = reinterpret_cast<Sample*>(target.line);
  const std::size_t step = target.planeSize / sizeof(Sample);
  if (sizeof(Sample) == 2) in.up = target.fit.up;
  [[maybe_unused]] const Channels<Sample> channels =
      steps.decode(in, 0, count, {plane, plane + step, plane + 2 * step, target.ahead, target.run});
  in.up = 0;
  if constexpr (sizeof(Sample) == 1) {
    const bool isThere = channels.red == plane && steps.writer.planes == 1 && steps.tables == nullptr;
    if (isThere) return;
    if (target.run == nullptr || steps.plain) {
      steps.writer.store.bytes.Active()(channels, steps.tables, count, target, 0);
    } else {
      StoreDecodedRun(channels, steps, count, target, target.run->target);
    }
  }
}

/// Converts `count` pixels from the beginning of `in` to pixel `first` of the targets by a kernel that needs no strips.
/// Stores past the caches are aligned.
inline void ConvertDirectly(DirectKernel* convert, std::uint32_t groupPixels, const Writer& writer,
                            const SourceLines& in, std::size_t count, const TargetLine* targets, std::size_t first) {
  if (!targets[0].streams) {
    convert(in, 0, count, targets, first);
    return;
  }
  StripWalk walk(groupPixels, writer, targets[0], count, first, count);
  while (walk.Next()) convert(in, walk.At(), walk.Pixels(), targets, first + walk.At());
}

}  // namespace LmImagingLib
