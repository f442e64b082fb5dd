#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

// Vectors of one register, and what kernels do with them. Included by kernels only, and compiled once for each
// instruction set; the intrinsics of an architecture stay in this folder.
#if defined(LM_SCALAR)
#define LM_LANES 0
#elif defined(__AVX512VBMI__)
#define LM_LANES 64
#elif defined(__AVX2__)
#define LM_LANES 32
#else
#define LM_LANES 16
#endif

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Pixels of a block: byte lanes of a register.
inline constexpr std::size_t kLanes = LM_LANES;

using U8 = std::uint8_t __attribute__((vector_size(kLanes)));
using I16 = std::int16_t __attribute__((vector_size(kLanes)));
using U16 = std::uint16_t __attribute__((vector_size(kLanes)));
using U32 = std::uint32_t __attribute__((vector_size(kLanes)));

inline U8 Load(const std::uint8_t* from) {
  U8 v;
  std::memcpy(&v, from, kLanes);
  return v;
}

inline void Store(U8 v, std::uint8_t* to) { std::memcpy(to, &v, kLanes); }

inline U8 Fill(std::uint8_t value) { return U8{} + value; }

}  // namespace
}  // namespace LmImagingLib::LM_ISA

#if defined(__x86_64__)
#include "simd/lanes_x86.h"
#else
#include "simd/lanes_neon.h"
#endif

namespace LmImagingLib::LM_ISA {
namespace {

/// The value in a register. Left alone, compilers load a value that is used twice from memory twice, and loads that
/// cross cache lines are what a neighbourhood is made of.
inline U8 Pinned(U8 v) {
#if defined(__x86_64__)
  __asm__("" : "+x"(v));
#endif
  return v;
}

/// Copies `count` bytes, and touches no other.
inline void CopyPart(const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
  for (; count > kLanes; count -= kLanes, from += kLanes, to += kLanes) Store(Load(from), to);
  StorePart(LoadPart(from, count), to, count);
}

template <class Index, std::size_t kStep, std::size_t... kLane>
inline U8 PickStep(U8 before, U8 next, std::index_sequence<kLane...>) {
  // Lanes that lie in the vectors before stay where an earlier step put them.
  return __builtin_shufflevector(before, next,
                                 (Index::At(kLane) / kLanes == kStep ? kLanes + Index::At(kLane) % kLanes
                                  : kStep == 1                       ? Index::At(kLane) % kLanes
                                                                     : kLane)...);
}

template <class Index, std::size_t kStep, std::size_t kVectors>
inline U8 PickFrom(U8 before, const U8 (&window)[kVectors]) {
  if constexpr (kStep == kVectors) {
    return before;
  } else {
    return PickFrom<Index, kStep + 1>(PickStep<Index, kStep>(before, window[kStep], std::make_index_sequence<kLanes>{}),
                                      window);
  }
}

/// Lane i of the result is byte `Index::At(i)` of the window.
template <class Index, std::size_t kVectors>
inline U8 Pick(const U8 (&window)[kVectors]) {
  if constexpr (kVectors == 1) {
    return PickStep<Index, 1>(window[0], window[0], std::make_index_sequence<kLanes>{});
  } else {
    return PickFrom<Index, 1>(window[0], window);
  }
}

// Register `kPart` of the bytes a0 b0 c0 a1 b1 c1 ...
template <std::size_t kPart, std::size_t... kLane>
inline U8 Third(U8 a, U8 b, U8 c, std::index_sequence<kLane...>) {
  constexpr std::size_t kFirst = kPart * kLanes;
  const U8 ab = __builtin_shufflevector(a, b, ((kFirst + kLane) % 3 == 1 ? kLanes : 0) + (kFirst + kLane) / 3 ...);
  return __builtin_shufflevector(ab, c, ((kFirst + kLane) % 3 == 2 ? kLanes + (kFirst + kLane) / 3 : kLane)...);
}

/// Stores a0 b0 c0 a1 b1 c1 ...: 3 * kLanes bytes.
inline void StoreInterleaved(U8 a, U8 b, U8 c, std::uint8_t* to) {
  constexpr std::make_index_sequence<kLanes> kAll{};
  Store(Third<0>(a, b, c, kAll), to);
  Store(Third<1>(a, b, c, kAll), to + kLanes);
  Store(Third<2>(a, b, c, kAll), to + 2 * kLanes);
}

// Register `kPart` of the elements a0 b0 a1 b1 ...
template <std::size_t kPart, class V, std::size_t... kLane>
inline V Zip(V a, V b, std::index_sequence<kLane...>) {
  constexpr std::size_t kCount = sizeof...(kLane);
  return __builtin_shufflevector(a, b, ((kPart * kCount + kLane) / 2 + kLane % 2 * kCount)...);
}

/// Stores a0 b0 c0 d0 a1 b1 c1 d1 ...: 4 * kLanes bytes.
inline void StoreInterleaved(U8 a, U8 b, U8 c, U8 d, std::uint8_t* to) {
  constexpr std::make_index_sequence<kLanes> kBytes{};
  constexpr std::make_index_sequence<kLanes / 2> kPairs{};
  const U16 ab[2] = {U16(Zip<0>(a, b, kBytes)), U16(Zip<1>(a, b, kBytes))};
  const U16 cd[2] = {U16(Zip<0>(c, d, kBytes)), U16(Zip<1>(c, d, kBytes))};
  for (std::size_t k = 0; k < 2; ++k, to += 2 * kLanes) {
    Store(U8(Zip<0>(ab[k], cd[k], kPairs)), to);
    Store(U8(Zip<1>(ab[k], cd[k], kPairs)), to + kLanes);
  }
}

/// The truncated mean of each pair of bytes: halves were rounded up where the sum is odd.
inline U8 MeanDown(U8 a, U8 b) { return MeanUp(a, b) - ((a ^ b) & 1); }

/// The truncated mean of four bytes: with x and y the truncated means of the pairs, and p and q the halves dropped,
/// (2x + p + 2y + q) >> 2 = (x + y + (p & q)) >> 1.
inline U8 MeanDown(U8 a, U8 b, U8 c, U8 d) {
  const U8 x = MeanDown(a, b);
  const U8 y = MeanDown(c, d);
  return MeanUp(x, y) - ((x ^ y) & ~((a ^ b) & (c ^ d)) & 1);
}

/// The bytes of a vector as 16-bit lanes, in their order.
inline U16 FirstHalf(U8 v) { return U16(Zip<0>(v, U8{}, std::make_index_sequence<kLanes>{})); }
inline U16 SecondHalf(U8 v) { return U16(Zip<1>(v, U8{}, std::make_index_sequence<kLanes>{})); }

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
