#include "walk/streams.h"

#include <algorithm>

#include "walk/conversion_context.h"

#if defined(LM_VECTOR_X86)
#include <cpuid.h>
#include <xmmintrin.h>
#endif

namespace LmImagingLib {

namespace {

// How far ahead to fetch the source: more than a strip of most layouts. 4 KiB take up to a fifth longer.
constexpr std::uint32_t kFetchAhead = 8192;

// As the processor tells it. The C library's answer counts the caches of all cores together on some processors.
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

}  // namespace

bool StreamsPay(std::size_t bytes) {
  static const std::size_t sLastLevelCache = LastLevelCache();
  return bytes > sLastLevelCache / 3 * 2;
}

StreamScope::StreamScope(ConversionContext& context, std::uint32_t lines) : mContext(context) {
  context.streams = StreamsPay((std::size_t{context.sourceLineSize} + context.destinationStride) * lines);
  context.fetchAhead = context.streams ? kFetchAhead : 0;
}

StreamScope::~StreamScope() {
#if defined(LM_VECTOR_X86)
  // Only these processors have such stores.
  if (mContext.streams) _mm_sfence();
#endif
  mContext.streams = false;
  mContext.fetchAhead = 0;
}

}  // namespace LmImagingLib
