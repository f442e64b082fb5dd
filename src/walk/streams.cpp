#include "walk/streams.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "LmImagingLib/PixelConverter.h"
#include "walk/frame.h"

#if defined(LM_VECTOR_X86)
#include <cpuid.h>
#include <xmmintrin.h>
#endif

namespace LmImagingLib {

namespace {

// How far ahead to fetch the source, and the destination where it is stored through the caches. Processors fetch no
// further than to the end of a page of 4 KiB by themselves, and 2 KiB are converted before the memory answers. Lines of
// source and destination a multiple of 4 KiB apart would share the few places of the first-level cache that both can
// have. What is stored past the caches needs no place in them, and planes lose a fifth with less than 8 KiB.
constexpr std::uint32_t kFetchAhead = 7168, kFetchAheadOfStreams = 8192;

// Bytes of an image that may be in the first-level caches: fetching them takes time and gains none.
constexpr std::size_t kSmallImage = 1 << 16;

// Bytes of an image from which fetching is a loss to kernels that only move bytes. Its pages are then about as many as
// the second-level translation buffer knows (4096 on the AMD EPYC where this was measured): at 16.6 MB, fetching made
// them take a fourteenth longer, at 14.5 MB it saved a tenth.
constexpr std::size_t kMostFetchedMoves = 16'000'000;

// How far ahead to fetch for these kernels, which are done with a line sooner: 7 KiB let frames of 640 x 480 take a
// twentieth longer there, and no cold frame less.
constexpr std::uint32_t kFetchMovesAhead = 2048;

// As the processor reports it. The C library's answer counts the caches of all cores together on some processors.
std::size_t LastLevelCache() {
  std::size_t bytes = 0;
#if defined(LM_VECTOR_X86)
  // Both vendors describe one cache a subleaf, in the same form.
  for (const unsigned leaf : {0x4U, 0x8000001DU}) {
    unsigned a, b, c, d;
    for (unsigned cache = 0; __get_cpuid_count(leaf, cache, &a, &b, &c, &d) != 0 && (a & 0x1F) != 0; ++cache) {
      const std::size_t ways = (b >> 22) + 1, partitions = (b >> 12 & 0x3FF) + 1, line = (b & 0xFFF) + 1;
      bytes = std::max(bytes, ways * partitions * line * (std::size_t{c} + 1));
    }
  }
#endif
  return bytes != 0 ? bytes : std::size_t{32} << 20;
}

// Whether stores past the caches are slow. From Skylake-X to Cascade Lake, which are those with AVX-512BW and without
// VBMI, images of 20 million pixels take 5 to 50 % longer with them.
bool StreamsAreSlow() {
#if defined(LM_VECTOR_X86)
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx512bw") != 0 && __builtin_cpu_supports("avx512vbmi") == 0;
#else
  return false;
#endif
}

// Found while the library loads: later, another thread might be asking while the process forks.
const bool kStreamsAreSlow = StreamsAreSlow();
std::size_t sMostUnstreamed = kStreamsAreSlow ? std::numeric_limits<std::size_t>::max() : LastLevelCache() / 3 * 2;

bool Streams(std::uint32_t flags, std::size_t source, std::size_t destination) {
  // A fourth channel that is made opaque is read again.
  if ((flags & ConversionFlags::kOpaque) != 0) return false;
  if (StreamsPay(source, destination)) return true;
  return (flags & ConversionFlags::kReadLater) != 0 && !kStreamsAreSlow && source + destination > kSmallImage;
}

}  // namespace

bool StreamsPay(std::size_t source, std::size_t destination) {
  const std::size_t most = destination <= source / 2 ? sMostUnstreamed / 4 * 3 : sMostUnstreamed;
  return source + destination > most;
}

bool IsSmallImage(std::size_t bytes) { return bytes <= kSmallImage && bytes <= sMostUnstreamed / 4 * 3; }

std::size_t ForceStreamsAbove(std::size_t bytes) { return std::exchange(sMostUnstreamed, bytes); }

StreamScope::StreamScope(Frame& frame, std::uint32_t lines) {
  const std::size_t source = frame.sourceLine * lines * frame.sourcePlanes;
  const std::size_t destination = frame.destinationLine * lines * frame.destinationPlanes;
  const std::size_t bytes = source + destination;
  mStreams = Streams(frame.flags, source, destination);
  frame.streams = mStreams;
  frame.fetchAhead = mStreams ? kFetchAheadOfStreams : bytes <= kSmallImage ? 0 : kFetchAhead;
  frame.fetchMovesAhead = frame.fetchAhead;
  if (!mStreams && !kStreamsAreSlow && bytes > kSmallImage) {
    frame.fetchMovesAhead = bytes <= kMostFetchedMoves ? kFetchMovesAhead : 0;
  }
}

void StreamScope::End() {
#if defined(LM_VECTOR_X86)
  _mm_sfence();  // only these processors have such stores
#endif
}

}  // namespace LmImagingLib
