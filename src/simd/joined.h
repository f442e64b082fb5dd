#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/strip.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Stores `find(i, k)` as value i + k of `out`, for `count` values. k is a constant once unrolled, and i is even.
///
/// Results are joined to 64 bits and stored together, which compilers do not do by themselves. Storing them one by one
/// takes about as long as looking them up in a table.
template <class Out, class Find>
inline void StoreJoined(std::size_t count, Out* out, const Find& find) {
  constexpr std::size_t kJoined = 8 / sizeof(Out), kBits = 8 * sizeof(Out);
  std::size_t i = 0;
  for (; i + kJoined <= count; i += kJoined) {
    std::uint64_t joined = 0;
#pragma GCC unroll 8
    for (std::size_t k = 0; k < kJoined; ++k) joined |= std::uint64_t{static_cast<Out>(find(i, k))} << k * kBits;
    std::memcpy(out + i, &joined, sizeof joined);
  }
  for (std::size_t k = 0; i + k < count; ++k) out[i + k] = static_cast<Out>(find(i, k));
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
