#pragma once

#include "converters/writers.h"
#include "simd/strip.h"

namespace LmImagingLib {

/// The steps of a line: decode, look up, store.
struct StripSteps {
  DecodeKernel* decode;
  std::uint32_t groupPixels;   ///< pixels that the source decodes together
  bool plain;                  ///< whether the source holds its channels as plain bytes
  const LookupTables* tables;  ///< null where nothing is looked up
  const Writer& writer;
};

inline constexpr std::size_t kCacheLine = 64;

/// Divides the pixels of a line into strips.
class StripWalk {
 public:
  /// @param count  pixels to convert, the first of which is pixel `first` of the target
  /// @param most  pixels of a strip at most
  StripWalk(const StripSteps& steps, const TargetLine& target, std::size_t count, std::size_t first, std::size_t most);

  /// Goes on to the next strip; false behind the last.
  bool Next();
  /// The first pixel of the strip, from 0.
  std::size_t At() const { return mAt; }
  std::size_t Pixels() const { return mPixels; }

 private:
  std::size_t mAt = 0;
  std::size_t mPixels = 0;
  std::size_t mNext;  // pixels of the next strip
  std::size_t mMost;
  std::size_t mCount;
};

/// Room for the channels of the pixels from `first` on: in the target itself, where that has planes to write to through
/// the cache, else in `strip`.
inline Room RoomFor(const StripSteps& steps, const TargetLine& target, std::size_t first, Strip& strip) {
  if (steps.writer.planes == 0 || target.streams) return {strip.red, strip.green, strip.blue};
  std::uint8_t* const plane = target.line + first;
  return {plane, plane + target.planeSize, plane + 2 * target.planeSize};
}

/// Converts `count` pixels, whole groups of the source, from the beginning of `in` to pixel `first` of each target.
/// @param targetCount  lines that receive the same pixels
void ConvertStrips(const StripSteps& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first);

/// Converts `count` pixels from the beginning of `in` to pixel `first` of the targets by a kernel that needs no strips.
/// What goes past the caches is aligned.
inline void ConvertDirectly(DirectKernel* convert, const StripSteps& steps, const SourceLines& in, std::size_t count,
                            const TargetLine* targets, std::size_t first) {
  if (!targets[0].streams) {
    convert(in, 0, count, targets, first);
    return;
  }
  StripWalk walk(steps, targets[0], count, first, count);
  while (walk.Next()) convert(in, walk.At(), walk.Pixels(), targets, first + walk.At());
}

/// Converts `pairs` pairs of gray samples of a two-tap readout; the first samples of the pairs make the left half of
/// the target, the second ones the right half.
void ConvertTapStrips(const StripSteps& steps, const SourceLines& in, std::size_t pairs, const TargetLine& target,
                      bool leftBackwards, bool rightBackwards);

}  // namespace LmImagingLib
