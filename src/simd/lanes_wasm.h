#pragma once

#include <wasm_simd128.h>

namespace LmImagingLib::LM_ISA {
namespace {

// There is no such store.
inline constexpr bool kHasStreams = false;
inline void Store(U8 v, Stream to) { Store(v, to.at); }

inline U8 LoadHalf(const std::uint8_t* from) { return U8(wasm_v128_load64_zero(from)); }

/// As many bytes as make a register of words.
inline U16 LoadWide(const std::uint8_t* from) { return U16(wasm_u16x8_load8x8(from)); }

/// 16 bytes each from `from`, and from every `step` bytes on.
inline U8 LoadUnits(const std::uint8_t* from, std::size_t /*step*/) { return Load(from); }

/// The bytes of a vector as the upper halves of 16-bit lanes, in two parts whose order only `ClampJoin` knows.
inline U16 LowWords(U8 v) {
  return U16(__builtin_shufflevector(U8{}, v, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}
inline U16 HighWords(U8 v) {
  return U16(__builtin_shufflevector(U8{}, v, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31));
}

/// Puts two parts together again, signed values clamped to 0..255.
inline U8 ClampJoin(I16 low, I16 high) { return U8(wasm_u8x16_narrow_i16x8(v128_t(low), v128_t(high))); }
/// The same, clamped to -128..127.
inline U8 ClampJoinSigned(I16 low, I16 high) { return U8(wasm_i8x16_narrow_i16x8(v128_t(low), v128_t(high))); }

/// The index of a byte that becomes 0, for `ShuffleUnits`.
inline constexpr std::uint8_t kNoByte = 0x80;
/// Lane i is the byte `index[i]`, 0 to 15.
inline U8 ShuffleUnits(U8 v, U8 index) { return U8(wasm_i8x16_swizzle(v128_t(v), v128_t(index))); }

/// Words of at most 255, in the order of a reader's `Words`, as bytes.
inline U8 JoinWords(U16 first, U16 second) { return ClampJoin(I16(first), I16(second)); }

/// The mean of each pair of samples, halves rounded up.
inline U8 MeanUp(U8 a, U8 b) { return U8(wasm_u8x16_avgr(v128_t(a), v128_t(b))); }
inline U16 MeanUp(U16 a, U16 b) { return U16(wasm_u16x8_avgr(v128_t(a), v128_t(b))); }

// The upper words of 32-bit lanes.
inline U16 UpperWords(v128_t low, v128_t high) {
  return __builtin_shufflevector(U16(low), U16(high), 1, 3, 5, 7, 9, 11, 13, 15);
}

/// The upper 16 bits of each product, rounded down.
inline U16 MultiplyHigh(U16 a, U16 factor) {
  return UpperWords(wasm_u32x4_extmul_low_u16x8(v128_t(a), v128_t(factor)),
                    wasm_u32x4_extmul_high_u16x8(v128_t(a), v128_t(factor)));
}
inline U16 MultiplyHigh(U16 a, std::uint16_t factor) { return MultiplyHigh(a, U16{} + factor); }

/// Likewise of signed numbers; the factor is even.
inline I16 MultiplyHigh(I16 a, std::int16_t factor) {
  const v128_t by = wasm_i16x8_splat(factor);
  return I16(UpperWords(wasm_i32x4_extmul_low_i16x8(v128_t(a), by), wasm_i32x4_extmul_high_i16x8(v128_t(a), by)));
}

/// Signed products, divided by 32768 and rounded to the nearest, halves up.
inline I16 MultiplyRounded(I16 a, std::int16_t factor) {
  return I16(wasm_i16x8_q15mulr_sat(v128_t(a), wasm_i16x8_splat(factor)));
}

/// The sums of the products of neighbours, of signed bytes by factors of 0 to 255. They must fit words.
/// A word of factors has that of the even byte in its lower byte.
inline I16 MultiplyAddBytes(U8 bytes, U16 factors) {
  return (I16(U16(bytes) << 8) >> 8) * I16(factors & 0xFF) + (I16(bytes) >> 8) * I16(factors >> 8);
}

/// The sums of the products of neighbours.
inline I32 MultiplyAdd(I16 a, I16 b) { return I32(wasm_i32x4_dot_i16x8(v128_t(a), v128_t(b))); }

/// Words of two vectors, clamped to 16 bits.
inline I16 ClampPack(I32 low, I32 high) { return I16(wasm_i16x8_narrow_i32x4(v128_t(low), v128_t(high))); }

/// The sums of neighbours, which must fit words, in the order of `ClampPack`.
inline I16 PairSums(I16 low, I16 high) { return ClampPack(MultiplyAdd(low, I16{} + 1), MultiplyAdd(high, I16{} + 1)); }

/// Likewise clamped to 0..65535.
inline U16 ClampPackUp(I32 low, I32 high) { return U16(wasm_u16x8_narrow_i32x4(v128_t(low), v128_t(high))); }

/// The lesser of each pair.
inline U16 Least(U16 a, U16 b) { return U16(wasm_u16x8_min(v128_t(a), v128_t(b))); }

/// Sums, clamped to 16 bits.
inline I16 AddClamped(I16 a, I16 b) { return I16(wasm_i16x8_add_sat(v128_t(a), v128_t(b))); }

/// Differences, at least 0.
inline U16 SubtractClamped(U16 a, U16 b) { return U16(wasm_u16x8_sub_sat(v128_t(a), v128_t(b))); }

/// A table of 256 bytes.
class Table {
 public:
  explicit Table(const ChannelTable<std::uint8_t>& table) : mEntries(table.entries) {}

  // Sixteen lookups of sixteen entries each; a lookup gives 0 where its index is not below 16.
  U8 operator[](U8 index) const {
    U8 found{};
    for (unsigned digit = 0; digit < 16; ++digit) {
      const v128_t part = wasm_v128_load(mEntries + 16 * digit);
      found |= U8(wasm_i8x16_swizzle(part, v128_t(index - static_cast<std::uint8_t>(16 * digit))));
    }
    return found;
  }

 private:
  const std::uint8_t* mEntries;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
