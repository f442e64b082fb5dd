#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "simd/strip.h"

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

/// Where to store past the caches: an address that is a multiple of kLanes.
struct Stream {
  std::uint8_t* at;

  Stream operator+(std::size_t bytes) const { return {at + bytes}; }
};

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

/// Where to store the first `bytes` bytes, and no others.
struct Part {
  std::uint8_t* at;
  std::size_t bytes;

  Part operator+(std::size_t count) const { return {at + count, bytes - (count < bytes ? count : bytes)}; }
};

inline void Store(U8 v, Part to) {
  if (to.bytes >= kLanes) {
    Store(v, to.at);
  } else if (to.bytes != 0) {
    StorePart(v, to.at, to.bytes);
  }
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

/// The bytes that one instruction can shuffle freely: a register of AVX-512, else 16 bytes.
inline constexpr std::size_t kUnit = kLanes == 64 ? 64 : 16;

// Threes. 3 is invertible modulo a unit, so the bytes c, 3 + c, 6 + c ... of three units lie in different lanes: one
// shuffle within a unit moves a channel, and blends, which cost least, do the rest.

// Lane i takes byte 3 i + c of its unit, modulo the unit.
template <std::size_t kChannel, std::size_t... kLane>
inline U8 GatherThirds(U8 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(v, v, (kLane / kUnit * kUnit + (3 * (kLane % kUnit) + kChannel) % kUnit)...);
}

// The reverse: byte i of a unit goes to lane 3 i + c. 43 x 3 is 1 modulo 64, and modulo 16.
template <std::size_t kChannel, std::size_t... kLane>
inline U8 SpreadThirds(U8 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(
      v, v, (kLane / kUnit * kUnit + 43 * ((kLane + kUnit * kUnit - kChannel) % kUnit) % kUnit)...);
}

// Lane l of a unit from a, b or c, as (l + kFirst) % 3 tells.
template <std::size_t kFirst, std::size_t... kLane>
inline U8 BlendThirds(U8 a, U8 b, U8 c, std::index_sequence<kLane...>) {
  const U8 ab = __builtin_shufflevector(a, b, ((kLane % kUnit + kFirst) % 3 == 1 ? kLanes + kLane : kLane)...);
  return __builtin_shufflevector(ab, c, ((kLane % kUnit + kFirst) % 3 == 2 ? kLanes + kLane : kLane)...);
}

#if LM_LANES == 32
// Two units of 16 bytes from two vectors, counted through both.
template <std::size_t kLow, std::size_t kHigh, std::size_t... kLane>
inline U8 Units(U8 a, U8 b, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(a, b, ((kLane < 16 ? kLow : kHigh) * 16 + kLane % 16)...);
}
#endif

/// Stores a0 b0 c0 a1 b1 c1 ...: 3 * kLanes bytes.
template <class To>
inline void StoreInterleaved(U8 a, U8 b, U8 c, To to) {
  constexpr std::make_index_sequence<kLanes> kAll{};
  const U8 x = SpreadThirds<0>(a, kAll);
  const U8 y = SpreadThirds<1>(b, kAll);
  const U8 z = SpreadThirds<2>(c, kAll);
  const U8 part[3] = {BlendThirds<0>(x, y, z, kAll), BlendThirds<1>(x, y, z, kAll), BlendThirds<2>(x, y, z, kAll)};
#if LM_LANES == 32
  Store(Units<0, 2>(part[0], part[1], kAll), to);
  Store(Units<0, 3>(part[2], part[0], kAll), to + kLanes);
  Store(Units<1, 3>(part[1], part[2], kAll), to + 2 * kLanes);
#else
  for (std::size_t k = 0; k < 3; ++k) Store(part[k], to + k * kLanes);
#endif
}

/// Lane i of the result is byte 3 i + kChannel of the window.
template <std::size_t kChannel>
inline U8 Deinterleave(const U8 (&window)[3]) {
  constexpr std::make_index_sequence<kLanes> kAll{};
#if LM_LANES == 32
  const U8 part[3] = {Units<0, 3>(window[0], window[1], kAll), Units<1, 2>(window[0], window[2], kAll),
                      Units<0, 3>(window[1], window[2], kAll)};
#else
  const U8(&part)[3] = window;
#endif
  // Byte 3 i + c lies in lane l of part k, where k + l is c modulo 3.
  return GatherThirds<kChannel>(
      BlendThirds<0>(part[kChannel], part[(kChannel + 2) % 3], part[(kChannel + 1) % 3], kAll), kAll);
}

// Register `kPart` of the elements a0 b0 a1 b1 ...
template <std::size_t kPart, class V, std::size_t... kLane>
inline V Zip(V a, V b, std::index_sequence<kLane...>) {
  constexpr std::size_t kCount = sizeof...(kLane);
  return __builtin_shufflevector(a, b, ((kPart * kCount + kLane) / 2 + kLane % 2 * kCount)...);
}

// Elements from one half of each 16 bytes, in turn from a and b.
template <std::size_t kHigh, class V, std::size_t... kLane>
inline V ZipHalves(V a, V b, std::index_sequence<kLane...>) {
  constexpr std::size_t kCount = sizeof...(kLane);
  constexpr std::size_t kPart = 16 * kCount / kLanes;
  return __builtin_shufflevector(
      a, b, (kLane / kPart * kPart + kHigh * kPart / 2 + kLane % kPart / 2 + kLane % 2 * kCount)...);
}

// Fours of bytes, dealt out to the 16 bytes of a register in turn.
template <std::size_t... kLane>
inline U8 Deal(U8 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(v, v, ((kLane % 16 / 4 * (kLanes / 16) + kLane / 16) * 4 + kLane % 4)...);
}

/// Stores a0 b0 c0 d0 a1 b1 c1 d1 ...: 4 * kLanes bytes.
template <class To>
inline void StoreInterleaved(U8 a, U8 b, U8 c, U8 d, To to) {
  constexpr std::make_index_sequence<kLanes> kBytes{};
  constexpr std::make_index_sequence<kLanes / 2> kPairs{};
  // Zips stay within 16 bytes. Dealt out first, the pixels come out of them in order.
  a = Deal(a, kBytes), b = Deal(b, kBytes), c = Deal(c, kBytes), d = Deal(d, kBytes);
  const U16 ab[2] = {U16(ZipHalves<0>(a, b, kBytes)), U16(ZipHalves<1>(a, b, kBytes))};
  const U16 cd[2] = {U16(ZipHalves<0>(c, d, kBytes)), U16(ZipHalves<1>(c, d, kBytes))};
  for (std::size_t k = 0; k < 2; ++k) {
    Store(U8(ZipHalves<0>(ab[k], cd[k], kPairs)), to + 2 * k * kLanes);
    Store(U8(ZipHalves<1>(ab[k], cd[k], kPairs)), to + (2 * k + 1) * kLanes);
  }
}

/// Whether a product is quicker than a table, which takes sixteen shuffles on narrow registers.
inline constexpr bool kGainsAreQuicker = kLanes < 64;

/// A table that is a gain.
class GainLanes {
 public:
  explicit GainLanes(const ChannelTable& table)
      : mFactor(table.gain.factor), mDown(static_cast<std::uint16_t>(8 - table.gain.shift)) {}

  U8 operator[](U8 index) const {
    return ClampJoin(I16(MultiplyHigh(LowWords(index) >> mDown, mFactor)),
                     I16(MultiplyHigh(HighWords(index) >> mDown, mFactor)));
  }

 private:
  std::uint16_t mFactor, mDown;
};

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
