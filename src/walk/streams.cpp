#include "walk/streams.h"

#include <algorithm>

#include "LmImagingLib/PixelConverter.h"
#include "walk/frame.h"

#if defined(LM_VECTOR_X86)
#include <cpuid.h>
#include <xmmintrin.h>
#endif

namespace LmImagingLib {

namespace {

// How far ahead to fetch the source: more than a strip of most layouts. 4 KiB take up to a fifth longer.
constexpr std::uint32_t kFetchAhead = 8192;

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

// Asked for while the library loads: later, another thread might be asking while the process forks.
const std::size_t kLastLevelCache = LastLevelCache();

}  // namespace

bool StreamsPay(std::size_t bytes) { return bytes > kLastLevelCache / 3 * 2; }

StreamScope::StreamScope(Frame& frame, std::uint32_t lines)
    // A fourth channel that is made opaque is read again.
    : mStreams(StreamsPay((frame.sourceLine + frame.destinationLine) * lines) &&
               (frame.flags & ConversionFlags::kOpaque) == 0) {
  frame.streams = mStreams;
  frame.fetchAhead = mStreams ? kFetchAhead : 0;
}

StreamScope::~StreamScope() {
#if defined(LM_VECTOR_X86)
  // Only these processors have such stores.
  if (mStreams) _mm_sfence();
#endif
}

}  // namespace LmImagingLib
