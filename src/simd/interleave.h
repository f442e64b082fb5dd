#pragma once

#include "simd/lanes.h"

// Channels of bytes to interleaved pixels, and back.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

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

template <std::size_t kPart, std::size_t... kLane>
inline U8 Tripled(U8 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(v, v, ((kPart * kLanes + kLane) / 3)...);
}

/// Stores a0 a0 a0 a1 a1 a1 ...: 3 * kLanes bytes.
template <class To>
inline void StoreTripled(U8 v, To to) {
  constexpr std::make_index_sequence<kLanes> kAll{};
  Store(Tripled<0>(v, kAll), to);
  Store(Tripled<1>(v, kAll), to + kLanes);
  Store(Tripled<2>(v, kAll), to + 2 * kLanes);
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

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
