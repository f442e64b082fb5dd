#pragma once

#include "simd/lanes.h"

// The numbers that parted rows are computed with: registers of them, or single ones where there are no vectors. The
// text of a kernel is the same for both.
namespace LmImagingLib::LM_ISA {
namespace {

template <class Value>
inline Value Lesser(Value a, Value b) {
  return a < b ? a : b;
}
template <class Value>
inline Value Greater(Value a, Value b) {
  return a > b ? a : b;
}

#if LM_LANES

template <class Value>
using Numbers = Lanes<Value>;

/// How many values are computed at once.
template <class Value>
inline constexpr std::size_t kNumbers = kBlock<Value>;

template <class Value>
inline Numbers<Value> Read(const Value* from) {
  Numbers<Value> v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

template <class Vector, class Value>
inline void Write(Vector v, Value* to) {
  static_assert(sizeof(v[0]) == sizeof(Value));
  std::memcpy(to, &v, sizeof v);
}

template <class Value>
inline Numbers<Value> ReadWeights(const std::int16_t* from) {
  if constexpr (sizeof(Value) == 2) {
    return Read(from);
  } else {
    std::int16_t __attribute__((vector_size(kLanes / 2))) half;
    std::memcpy(&half, from, sizeof half);
    return __builtin_convertvector(half, I32);
  }
}

/// Where the condition is true 1, else 0.
template <class Vector>
inline Vector One(Vector condition) {
  return -condition;
}
template <class Vector>
inline Vector Choose(Vector condition, Vector a, Vector b) {
  return condition ? a : b;
}

// The bytes of the words of two registers that were joined within each 16 bytes, in turn.
template <std::size_t... kLane>
inline U8 InTurn(U8 joined, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(joined, joined, (kLane / 16 * 16 + kLane % 16 / 2 + kLane % 2 * 8)...);
}

/// The samples of even and of odd columns in turn. Those that become bytes are clamped.
inline U8 Columns(I16 even, I16 odd) { return InTurn(ClampJoin(even, odd), std::make_index_sequence<kLanes>{}); }
inline U16 Columns(I32 even, I32 odd) { return U16(U32(even) | U32(odd) << 16); }
template <class Vector, class Sample>
inline void StoreColumns(Vector even, Vector odd, Sample* to) {
  Store(Columns(even, odd), to);
}

#else

// Sums of vectors stay within their lanes, so that wider numbers come to the same.
template <class Value>
using Numbers = std::int32_t;
template <class Value>
inline constexpr std::size_t kNumbers = 1;

template <class Value>
inline std::int32_t Read(const Value* from) {
  return *from;
}
template <class Value>
inline void Write(std::int32_t v, Value* to) {
  *to = static_cast<Value>(v);
}
template <class Value>
inline std::int32_t ReadWeights(const std::int16_t* from) {
  return *from;
}
inline std::int32_t One(bool condition) { return condition ? 1 : 0; }
inline std::int32_t Choose(bool condition, std::int32_t a, std::int32_t b) { return condition ? a : b; }
template <class Sample>
inline void StoreColumns(std::int32_t even, std::int32_t odd, Sample* to) {
  to[0] = static_cast<Sample>(even);
  to[1] = static_cast<Sample>(odd);
}

#endif

/// The values `by` columns right of those of one parity, 0 for even columns and 1 for odd ones. A negative `by` is
/// left.
template <std::ptrdiff_t kParity, class Value>
inline const Value* Column(const Value* row, std::ptrdiff_t odd, std::ptrdiff_t by) {
  const std::ptrdiff_t column = kParity + by + 64;  // never negative
  return row + (column % 2 != 0 ? odd : 0) + (column / 2 - 32);
}

template <class Vector>
inline Vector Clamp(Vector v, Vector white) {
  return Greater(Lesser(v, white), Vector{});
}
/// The same of a colour that is stored next, and clamped there if it becomes a byte.
template <class Vector>
inline Vector ClampColor(Vector v, Vector white) {
#if LM_LANES
  if constexpr (sizeof(v[0]) == 2) return v;
#endif
  return Clamp(v, white);
}

/// v / 2^kBits, halves rounded up.
template <int kBits, class Vector>
inline Vector Rounded(Vector v) {
#if LM_LANES
  if constexpr (sizeof(v[0]) == 2) return MultiplyRounded(v, 1 << (15 - kBits));
#endif
  return (v + (1 << kBits >> 1)) >> kBits;
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
