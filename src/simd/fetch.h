#pragma once

#include <cstddef>
#include <cstdint>

#include "simd/lanes.h"

// Fetching lines into the cache ahead of the loops that read and write them. Included by kernels only.
namespace LmImagingLib::LM_ISA {
namespace {

#if LM_LANES

/// Fetches `bytes` bytes of a source, `ahead` bytes on. Always inline, as g++ drops calls of functions that only fetch.
[[gnu::always_inline]] inline void FetchSource(const std::uint8_t* from, std::size_t bytes, std::uint32_t ahead) {
  if (ahead == 0) return;
  for (std::size_t byte = 0; byte < bytes; byte += 64) __builtin_prefetch(from + ahead + byte);
}

/// Fetches the place of later stores: one that misses the cache holds up those after it.
[[gnu::always_inline]] inline void FetchTarget(std::uint8_t* to, std::size_t bytes, std::uint32_t ahead) {
  if (ahead == 0) return;
  for (std::size_t byte = 0; byte < bytes; byte += 64) __builtin_prefetch(to + ahead + byte, 1);
}
// Stores past the caches need nothing in them.
inline void FetchTarget(Stream /*to*/, std::size_t /*bytes*/, std::uint32_t /*ahead*/) {}

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
