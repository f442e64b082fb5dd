#pragma once

#include <arm_neon.h>

namespace LmImagingLib::LM_ISA {
namespace {

// There is no such store of a single register.
inline constexpr bool kHasStreams = false;
inline void Store(U8 v, Stream to) { Store(v, to.at); }

/// Stores a0 b0 c0 a1 b1 c1 ..., and with a fourth register a0 b0 c0 d0 a1 ...
inline void StoreInTurn(U8 a, U8 b, U8 c, std::uint8_t* to) {
  vst3q_u8(to, {{uint8x16_t(a), uint8x16_t(b), uint8x16_t(c)}});
}
inline void StoreInTurn(U16 a, U16 b, U16 c, std::uint8_t* to) {
  vst3q_u16(reinterpret_cast<std::uint16_t*>(to), {{uint16x8_t(a), uint16x8_t(b), uint16x8_t(c)}});
}
inline void StoreInTurn(U8 a, U8 b, U8 c, U8 d, std::uint8_t* to) {
  vst4q_u8(to, {{uint8x16_t(a), uint8x16_t(b), uint8x16_t(c), uint8x16_t(d)}});
}
inline void StoreInTurn(U16 a, U16 b, U16 c, U16 d, std::uint8_t* to) {
  vst4q_u16(reinterpret_cast<std::uint16_t*>(to), {{uint16x8_t(a), uint16x8_t(b), uint16x8_t(c), uint16x8_t(d)}});
}

inline U8 LoadHalf(const std::uint8_t* from) { return U8(vcombine_u8(vld1_u8(from), vdup_n_u8(0))); }

/// As many bytes as make a register of words.
inline U16 LoadWide(const std::uint8_t* from) { return U16(vmovl_u8(vld1_u8(from))); }

/// The bytes of a vector as the upper halves of 16-bit lanes, in two parts whose order only `ClampJoin` knows.
inline U16 LowWords(U8 v) { return U16(vzip1q_u8(vdupq_n_u8(0), uint8x16_t(v))); }
inline U16 HighWords(U8 v) { return U16(vzip2q_u8(vdupq_n_u8(0), uint8x16_t(v))); }

/// Puts two parts together again, signed values clamped to 0..255.
inline U8 ClampJoin(I16 low, I16 high) { return U8(vqmovun_high_s16(vqmovun_s16(int16x8_t(low)), int16x8_t(high))); }
/// The same, clamped to -128..127.
inline U8 ClampJoinSigned(I16 low, I16 high) {
  return U8(vqmovn_high_s16(vqmovn_s16(int16x8_t(low)), int16x8_t(high)));
}

/// 16 bytes each from `from`, and from every `step` bytes on.
inline U8 LoadUnits(const std::uint8_t* from, std::size_t /*step*/) { return Load(from); }

/// The index of a byte that becomes 0, for `ShuffleUnits`.
inline constexpr std::uint8_t kNoByte = 0x80;
/// Lane i is the byte `index[i]`, 0 to 15.
inline U8 ShuffleUnits(U8 v, U8 index) { return U8(vqtbl1q_u8(uint8x16_t(v), uint8x16_t(index))); }

/// Words of at most 255, in the order of a reader's `Words`, as bytes.
inline U8 JoinWords(U16 first, U16 second) { return U8(vuzp1q_u8(uint8x16_t(first), uint8x16_t(second))); }

/// The mean of each pair of samples, halves rounded up.
inline U8 MeanUp(U8 a, U8 b) { return U8(vrhaddq_u8(uint8x16_t(a), uint8x16_t(b))); }
inline U16 MeanUp(U16 a, U16 b) { return U16(vrhaddq_u16(uint16x8_t(a), uint16x8_t(b))); }

/// The upper 16 bits of each product, rounded down.
inline U16 MultiplyHigh(U16 a, U16 factor) {
  const uint32x4_t low = vmull_u16(vget_low_u16(uint16x8_t(a)), vget_low_u16(uint16x8_t(factor)));
  const uint32x4_t high = vmull_high_u16(uint16x8_t(a), uint16x8_t(factor));
  return U16(vuzp2q_u16(vreinterpretq_u16_u32(low), vreinterpretq_u16_u32(high)));
}
inline U16 MultiplyHigh(U16 a, std::uint16_t factor) { return MultiplyHigh(a, U16{} + factor); }

/// Likewise of signed numbers; the factor is even.
inline I16 MultiplyHigh(I16 a, std::int16_t factor) {
  return I16(vqdmulhq_n_s16(int16x8_t(a), static_cast<std::int16_t>(factor / 2)));  // doubles the product
}

/// Signed products, divided by 32768 and rounded to the nearest, halves up.
inline I16 MultiplyRounded(I16 a, std::int16_t factor) { return I16(vqrdmulhq_n_s16(int16x8_t(a), factor)); }

/// The sums of the products of neighbours, of signed bytes by factors of 0 to 255. They must fit words.
/// A word of factors has that of the even byte in its lower byte.
inline I16 MultiplyAddBytes(U8 bytes, U16 factors) {
  return (I16(U16(bytes) << 8) >> 8) * I16(factors & 0xFF) + (I16(bytes) >> 8) * I16(factors >> 8);
}

/// The sums of the products of neighbours.
inline I32 MultiplyAdd(I16 a, I16 b) {
  const int32x4_t low = vmull_s16(vget_low_s16(int16x8_t(a)), vget_low_s16(int16x8_t(b)));
  return I32(vpaddq_s32(low, vmull_high_s16(int16x8_t(a), int16x8_t(b))));
}

/// Words of two vectors, clamped to 16 bits.
inline I16 ClampPack(I32 low, I32 high) { return I16(vqmovn_high_s32(vqmovn_s32(int32x4_t(low)), int32x4_t(high))); }

/// The sums of neighbours, which must fit words, in the order of `ClampPack`.
inline I16 PairSums(I16 low, I16 high) { return I16(vpaddq_s16(int16x8_t(low), int16x8_t(high))); }

/// Likewise clamped to 0..65535.
inline U16 ClampPackUp(I32 low, I32 high) {
  return U16(vqmovun_high_s32(vqmovun_s32(int32x4_t(low)), int32x4_t(high)));
}

/// The lesser of each pair.
inline U16 Least(U16 a, U16 b) { return U16(vminq_u16(uint16x8_t(a), uint16x8_t(b))); }

/// Sums, clamped to 16 bits.
inline I16 AddClamped(I16 a, I16 b) { return I16(vqaddq_s16(int16x8_t(a), int16x8_t(b))); }

/// Differences, at least 0.
inline U16 SubtractClamped(U16 a, U16 b) { return U16(vqsubq_u16(uint16x8_t(a), uint16x8_t(b))); }

/// A table of 256 bytes in registers. Keep it in a local variable: through a reference it is loaded anew after each
/// store.
class Table {
 public:
  explicit Table(const ChannelTable<std::uint8_t>& table)
      : mPart{vld1q_u8_x4(table.entries), vld1q_u8_x4(table.entries + 64), vld1q_u8_x4(table.entries + 128),
              vld1q_u8_x4(table.entries + 192)} {}

  // A lookup leaves the lanes alone whose index is outside of its 64 entries.
  U8 operator[](U8 index) const {
    const auto i = uint8x16_t(index);
    uint8x16_t found = vqtbl4q_u8(mPart[0], i);
    found = vqtbx4q_u8(found, mPart[1], vsubq_u8(i, vdupq_n_u8(64)));
    found = vqtbx4q_u8(found, mPart[2], vsubq_u8(i, vdupq_n_u8(128)));
    found = vqtbx4q_u8(found, mPart[3], vsubq_u8(i, vdupq_n_u8(192)));
    return U8(found);
  }

 private:
  uint8x16x4_t mPart[4];
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
