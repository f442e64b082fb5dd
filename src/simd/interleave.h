#pragma once

#include "simd/pick.h"
#include "simd/zip.h"

// Channels of samples to interleaved pixels, and back.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// The samples that one instruction can shuffle freely.
template <class Sample>
inline constexpr std::size_t kUnit = sizeof(Sample) == 1 ? LM_BYTE_SHUFFLE : LM_WORD_SHUFFLE / 2;

template <class Sample>
using AllLanes = std::make_index_sequence<kBlock<Sample>>;

/// Even lanes of one, odd lanes of another: a blend.
template <class V, std::size_t... kLane>
inline V EvenOdd(V even, V odd, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(even, odd, (kLane % 2 != 0 ? kLane + sizeof...(kLane) : kLane)...);
}
template <class V>
inline V EvenOdd(V even, V odd) {
  return EvenOdd(even, odd, std::make_index_sequence<kLanes / sizeof(even[0])>{});
}

// Threes. 3 is invertible modulo a unit, so the samples c, 3 + c, 6 + c ... of three units are in different lanes: one
// shuffle within a unit moves a channel, and blends, which cost least, do the rest. In a unit of 16 samples:
//
//   lane       0   1   2   3   4   5   6   7   8   9  10  11  12  13  14  15
//   spread a  a0 a11  a6  a1 a12  a7  a2 a13  a8  a3 a14  a9  a4 a15 a10  a5
//   spread b  b5  b0 b11  b6  b1 b12  b7  b2 b13  b8  b3 b14  b9  b4 b15 b10
//   spread c c10  c5  c0 c11  c6  c1 c12  c7  c2 c13  c8  c3 c14  c9  c4 c15
//   blended:
//   part 0    a0  b0  c0  a1  b1  c1  a2  b2  c2  a3  b3  c3  a4  b4  c4  a5
//   part 1    b5  c5  a6  b6  c6  a7  b7  c7  a8  b8  c8  a9  b9  c9 a10 b10
//   part 2   c10 a11 b11 c11 a12 b12 c12 a13 b13 c13 a14 b14 c14 a15 b15 c15

// Lane i takes sample 3 i + c of its unit, modulo the unit.
template <std::size_t kChannel, class Sample, std::size_t... kLane>
inline Lanes<Sample> GatherThirds(Lanes<Sample> v, std::index_sequence<kLane...>) {
  constexpr std::size_t kSize = kUnit<Sample>;
  return __builtin_shufflevector(v, v, (kLane / kSize * kSize + (3 * (kLane % kSize) + kChannel) % kSize)...);
}

// The reverse: sample i of a unit goes to lane 3 i + c. 43 x 3 is 1 modulo 64, and so modulo 32, 16 and 8.
template <std::size_t kChannel, class Sample, std::size_t... kLane>
inline Lanes<Sample> SpreadThirds(Lanes<Sample> v, std::index_sequence<kLane...>) {
  constexpr std::size_t kSize = kUnit<Sample>;
  return __builtin_shufflevector(
      v, v, (kLane / kSize * kSize + 43 * ((kLane + kSize * kSize - kChannel) % kSize) % kSize)...);
}

// Lane l of a unit from a, b or c, by (l + kFirst) % 3.
template <std::size_t kFirst, class Sample, std::size_t... kLane>
inline Lanes<Sample> BlendThirds(Lanes<Sample> a, Lanes<Sample> b, Lanes<Sample> c, std::index_sequence<kLane...>) {
  constexpr std::size_t kSize = kUnit<Sample>;
  constexpr std::size_t kCount = kBlock<Sample>;
  const Lanes<Sample> ab =
      __builtin_shufflevector(a, b, ((kLane % kSize + kFirst) % 3 == 1 ? kCount + kLane : kLane)...);
  return __builtin_shufflevector(ab, c, ((kLane % kSize + kFirst) % 3 == 2 ? kCount + kLane : kLane)...);
}

#if LM_LANES == 32
// Two units of 16 bytes from two vectors, counted through both.
template <std::size_t kLow, std::size_t kHigh, std::size_t... kLane>
inline U8 Units(U8 a, U8 b, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(a, b, ((kLane < 16 ? kLow : kHigh) * 16 + kLane % 16)...);
}
template <std::size_t kLow, std::size_t kHigh, class Vector>
inline Vector Units(Vector a, Vector b) {
  return Vector(Units<kLow, kHigh>(U8(a), U8(b), std::make_index_sequence<32>{}));
}

/// Stores the halves of two registers in turn.
template <class To>
inline void StoreHalvesInTurn(U8 a, U8 b, To to) {
  if constexpr (std::is_same_v<To, Part>) {
    Store(Units<0, 2>(a, b), to);
  } else {
    StoreHalf(a, to);
    StoreHalf(b, to + kLanes / 2);
  }
  Store(Units<1, 3>(a, b), to + kLanes);
}
#elif LM_LANES > LM_BYTE_SHUFFLE
// Units of 16 bytes in the order in which three registers hold them in turn: unit `kFirst` + l of all is in register
// (kFirst + l) % 3.
template <std::size_t kFirst>
struct UnitsInTurn {
  static constexpr std::size_t At(std::size_t lane) {
    const std::size_t unit = kFirst + lane / 2;
    return unit % 3 * (kLanes / 8) + unit / 3 * 2 + lane % 2;
  }
};
// Every third unit of three registers.
template <std::size_t kFirst>
struct EveryThirdUnit {
  static constexpr std::size_t At(std::size_t lane) { return (lane / 2 * 3 + kFirst) * 2 + lane % 2; }
};
template <class Index, class Vector>
inline Vector PickUnits(const Vector (&window)[3]) {
  const Lanes<std::uint64_t> units[] = {Lanes<std::uint64_t>(window[0]), Lanes<std::uint64_t>(window[1]),
                                        Lanes<std::uint64_t>(window[2])};
  return Vector(Pick<Index>(units));
}
#endif

/// Stores a0 b0 c0 a1 b1 c1 ...: three registers.
template <class Sample, class To>
inline void StoreInterleaved(Lanes<Sample> a, Lanes<Sample> b, Lanes<Sample> c, To to) {
#if LM_STORES_IN_TURN
  if constexpr (std::is_same_v<To, std::uint8_t*>) return StoreInTurn(a, b, c, to);
#endif
  constexpr AllLanes<Sample> kAll{};
  using V = Lanes<Sample>;
  const V x = SpreadThirds<0, Sample>(a, kAll);
  const V y = SpreadThirds<1, Sample>(b, kAll);
  const V z = SpreadThirds<2, Sample>(c, kAll);
  // The unit l of part k continues where the unit l of part k - 1 ends.
  constexpr std::size_t kTurn = kUnit<Sample> % 3;
  const V part[3] = {BlendThirds<0, Sample>(x, y, z, kAll), BlendThirds<kTurn, Sample>(x, y, z, kAll),
                     BlendThirds<2 * kTurn % 3, Sample>(x, y, z, kAll)};
#if LM_LANES == 32
  Store(Units<0, 2>(part[0], part[1]), to);
  Store(Units<0, 3>(part[2], part[0]), to + kLanes);
  Store(Units<1, 3>(part[1], part[2]), to + 2 * kLanes);
#else
#if LM_LANES > LM_BYTE_SHUFFLE
  if constexpr (kUnit<Sample> < kBlock<Sample>) {
    Store(PickUnits<UnitsInTurn<0>>(part), to);
    Store(PickUnits<UnitsInTurn<kLanes / 16>>(part), to + kLanes);
    Store(PickUnits<UnitsInTurn<kLanes / 8>>(part), to + 2 * kLanes);
    return;
  }
#endif
  for (std::size_t k = 0; k < 3; ++k) Store(part[k], to + k * kLanes);
#endif
}

#if LM_LANES == 64 && LM_BYTE_SHUFFLE < 64
template <std::size_t kPart>
struct TripledUnit {
  static constexpr std::size_t At(std::size_t lane) { return (kPart * kLanes + lane * 8) / 48 * 2 + lane % 2; }
};
#endif

template <std::size_t kPart, std::size_t... kLane>
inline U8 Tripled(U8 v, std::index_sequence<kLane...>) {
#if LM_LANES == 64 && LM_BYTE_SHUFFLE < 64
  // The 16 bytes that each 16 are made of, and then a shuffle within these.
  const Lanes<std::uint64_t> window[] = {Lanes<std::uint64_t>(v)};
  v = U8(Pick<TripledUnit<kPart>>(window));
  return __builtin_shufflevector(
      v, v, (kLane / 16 * 16 + (kPart * kLanes + kLane) / 3 - (kPart * kLanes + kLane) / 48 * 16)...);
#else
  return __builtin_shufflevector(v, v, ((kPart * kLanes + kLane) / 3)...);
#endif
}

/// Stores a0 a0 a0 a1 a1 a1 ...: 3 * kLanes bytes.
template <class To>
inline void StoreTripled(U8 v, To to) {
  constexpr std::make_index_sequence<kLanes> kAll{};
  Store(Tripled<0>(v, kAll), to);
  Store(Tripled<1>(v, kAll), to + kLanes);
  Store(Tripled<2>(v, kAll), to + 2 * kLanes);
}

// Sample 3 i + c of three parts, in whose unit l it is in lane l of part k where (k * kUnit + l) % 3 is c. kUnit % 3 is
// its own inverse.
template <std::size_t kChannel, class Sample>
inline Lanes<Sample> GatherChannel(const Lanes<Sample> (&part)[3]) {
  constexpr AllLanes<Sample> kAll{};
  constexpr std::size_t kTurn = kUnit<Sample> % 3;
  constexpr std::size_t kOf0 = kChannel * kTurn % 3, kOf1 = (kChannel + 2) * kTurn % 3,
                        kOf2 = (kChannel + 1) * kTurn % 3;
  return GatherThirds<kChannel, Sample>(BlendThirds<0, Sample>(part[kOf0], part[kOf1], part[kOf2], kAll), kAll);
}

/// Lane i of the result is sample 3 i + kChannel of the window.
template <std::size_t kChannel, class Sample>
inline Lanes<Sample> Deinterleave(const Lanes<Sample> (&window)[3]) {
  if constexpr (kUnit<Sample> == kBlock<Sample>) {
    return GatherChannel<kChannel, Sample>(window);
  } else {
#if LM_LANES == 32
    return GatherChannel<kChannel, Sample>(
        {Units<0, 3>(window[0], window[1]), Units<1, 2>(window[0], window[2]), Units<0, 3>(window[1], window[2])});
#elif LM_LANES > LM_BYTE_SHUFFLE
    return GatherChannel<kChannel, Sample>({PickUnits<EveryThirdUnit<0>>(window), PickUnits<EveryThirdUnit<1>>(window),
                                            PickUnits<EveryThirdUnit<2>>(window)});
#endif
  }
}

/// Stores a0 b0 c0 d0 a1 b1 c1 d1 ...: four registers.
template <class Sample, class To>
inline void StoreInterleaved(Lanes<Sample> a, Lanes<Sample> b, Lanes<Sample> c, Lanes<Sample> d, To to) {
#if LM_STORES_IN_TURN
  if constexpr (std::is_same_v<To, std::uint8_t*>) return StoreInTurn(a, b, c, d, to);
#endif
  using Pairs = typename PairsOf<Sample>::Type;
  // Zips stay within 16 bytes. Dealt out first, the pixels come out of them in order.
  a = Deal(a), b = Deal(b), c = Deal(c), d = Deal(d);
  const Pairs ab[2] = {Pairs(ZipHalves<0>(a, b)), Pairs(ZipHalves<1>(a, b))};
  const Pairs cd[2] = {Pairs(ZipHalves<0>(c, d)), Pairs(ZipHalves<1>(c, d))};
  for (std::size_t k = 0; k < 2; ++k) {
    Store(U8(ZipHalves<0>(ab[k], cd[k])), to + 2 * k * kLanes);
    Store(U8(ZipHalves<1>(ab[k], cd[k])), to + (2 * k + 1) * kLanes);
  }
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
