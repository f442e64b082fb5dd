#pragma once

#include "simd/lanes.h"

// Samples of two registers in turn, and the order that they need before that.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

// Elements from one half of each 16 bytes, in turn from a and b.
template <std::size_t kHigh, class V, std::size_t... kLane>
inline V ZipHalves(V a, V b, std::index_sequence<kLane...>) {
  constexpr std::size_t kCount = sizeof...(kLane);
  constexpr std::size_t kPart = 16 * kCount / kLanes;
  return __builtin_shufflevector(
      a, b, (kLane / kPart * kPart + kHigh * kPart / 2 + kLane % kPart / 2 + kLane % 2 * kCount)...);
}
template <std::size_t kHigh, class V>
inline V ZipHalves(V a, V b) {
  return ZipHalves<kHigh>(a, b, std::make_index_sequence<kLanes / sizeof(a[0])>{});
}

// Fours of bytes, dealt out to the 16 bytes of a register in turn.
template <std::size_t... kLane>
inline U32 Deal(U32 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(v, v, (kLane % 4 * (kLanes / 16) + kLane / 4)...);
}
template <class V>
inline V Deal(V v) {
  return V(Deal(U32(v), std::make_index_sequence<kLanes / 4>{}));
}

// Eights of bytes, likewise.
template <std::size_t... kLane>
inline U64 DealEights(U64 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(v, v, (kLane % 2 * (kLanes / 16) + kLane / 2)...);
}
inline U8 DealEights(U8 v) { return U8(DealEights(U64(v), std::make_index_sequence<kLanes / 8>{})); }

/// A register of a line, its eights dealt out.
template <class Reader>
inline U8 ReadDealt(const Reader& read, std::size_t line, std::size_t offset) {
#if LM_LANES == 32
  // One more load and a blend take less time than a permutation across the halves.
  const U64 v = U64(read(line, offset)), middle = U64(read.Units(line, offset + 8, 0));
  return U8(__builtin_shufflevector(v, middle, 0, 5, 6, 3));
#else
  return DealEights(read(line, offset));
#endif
}

template <class Sample>
struct PairsOf {
  using Type = U16;
};
template <>
struct PairsOf<std::uint16_t> {
  using Type = U32;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
