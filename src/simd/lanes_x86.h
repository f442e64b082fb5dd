#pragma once

#include <immintrin.h>

namespace LmImagingLib::LM_ISA {
namespace {

// A register, and an intrinsic by what its name is without the width.
#if LM_LANES == 64
using Register = __m512i;
#define LM_INTRINSIC(name) _mm512_##name
inline Register Broadcast(__m128i v) { return _mm512_broadcast_i32x4(v); }
#elif LM_LANES == 32
using Register = __m256i;
#define LM_INTRINSIC(name) _mm256_##name
inline Register Broadcast(__m128i v) { return _mm256_broadcastsi128_si256(v); }
#else
using Register = __m128i;
#define LM_INTRINSIC(name) _mm_##name
inline Register Broadcast(__m128i v) { return v; }
#endif

inline constexpr bool kHasStreams = true;

inline void Store(U8 v, Stream to) {
#if LM_LANES == 64
  _mm512_stream_si512(reinterpret_cast<Register*>(to.at), Register(v));
#elif LM_LANES == 32
  _mm256_stream_si256(reinterpret_cast<Register*>(to.at), Register(v));
#else
  _mm_stream_si128(reinterpret_cast<Register*>(to.at), Register(v));
#endif
}

#if LM_LANES == 64
inline U8 LoadHalf(const std::uint8_t* from) {
  return U8(_mm512_castsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from))));
}
#elif LM_LANES == 32
inline U8 LoadHalf(const std::uint8_t* from) {
  return U8(_mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))));
}
#else
inline U8 LoadHalf(const std::uint8_t* from) { return U8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from))); }
#endif

/// As many bytes as make a register of words. Written as a shuffle, g++ loads them by an instruction of its own.
inline U16 LoadWide(const std::uint8_t* from) {
#if LM_LANES == 64
  return U16(_mm512_cvtepu8_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from))));
#elif LM_LANES == 32
  return U16(_mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))));
#else
  return U16(_mm_cvtepu8_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from))));
#endif
}

#if LM_LANES == 32
/// 16 bytes each from `from` and from `step` bytes on.
inline U8 LoadUnits(const std::uint8_t* from, std::size_t step) {
  return U8(_mm256_loadu2_m128i(reinterpret_cast<const __m128i*>(from + step), reinterpret_cast<const __m128i*>(from)));
}
#elif LM_LANES == 16
inline U8 LoadUnits(const std::uint8_t* from, std::size_t /*step*/) { return Load(from); }
#endif

#if LM_LANES == 64
/// 16 bytes from each address.
inline U8 LoadUnits(const std::uint8_t* first, const std::uint8_t* second, const std::uint8_t* third,
                    const std::uint8_t* fourth) {
  const auto load = [](const std::uint8_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); };
  const __m256i low = _mm256_inserti128_si256(_mm256_castsi128_si256(load(first)), load(second), 1);
  const __m256i high = _mm256_inserti128_si256(_mm256_castsi128_si256(load(third)), load(fourth), 1);
  return U8(_mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1));
}
#endif

#if LM_LANES == 32
/// Stores the first half of a register.
inline void StoreHalf(U8 v, std::uint8_t* to) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_castsi256_si128(Register(v)));
}
inline void StoreHalf(U8 v, Stream to) {
  _mm_stream_si128(reinterpret_cast<__m128i*>(to.at), _mm256_castsi256_si128(Register(v)));
}

/// Stores 24 bytes: the first 12 of the first half of a register, then 12 of the second one, whose last eight come
/// first and whose first four are in its last four places.
inline void StoreTwelvesInTurn(U8 v, std::uint8_t* to) {
  const __m128i odd = _mm256_extracti128_si256(Register(v), 1);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_blend_epi32(_mm256_castsi256_si128(Register(v)), odd, 8));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to + 16), odd);
}
#endif

/// The index of a byte that becomes 0, for `ShuffleUnits`.
inline constexpr std::uint8_t kNoByte = 0x80;
/// Lane i is the byte `index[i]`, 0 to 15, of its unit of 16 bytes.
inline U8 ShuffleUnits(U8 v, U8 index) { return U8(LM_INTRINSIC(shuffle_epi8)(Register(v), Register(index))); }

#if LM_HAS_MASKS
/// Loads and stores the first `count` bytes, at most kLanes, and touches no other; the rest loads as 0.
inline U8 LoadPart(const std::uint8_t* from, std::size_t count) {
  return U8(_mm512_maskz_loadu_epi8(_bzhi_u64(~std::uint64_t{0}, static_cast<unsigned>(count)), from));
}
inline void StorePart(U8 v, std::uint8_t* to, std::size_t count) {
  _mm512_mask_storeu_epi8(to, _bzhi_u64(~std::uint64_t{0}, static_cast<unsigned>(count)), __m512i(v));
}
#endif

/// The bytes of a vector as the upper halves of 16-bit lanes, in two parts whose order only `ClampJoin` knows.
inline U16 LowWords(U8 v) { return U16(LM_INTRINSIC(unpacklo_epi8)(Register{}, Register(v))); }
inline U16 HighWords(U8 v) { return U16(LM_INTRINSIC(unpackhi_epi8)(Register{}, Register(v))); }

/// Puts two parts together again, signed values clamped to 0..255.
inline U8 ClampJoin(I16 low, I16 high) { return U8(LM_INTRINSIC(packus_epi16)(Register(low), Register(high))); }
/// The same, clamped to -128..127.
inline U8 ClampJoinSigned(I16 low, I16 high) { return U8(LM_INTRINSIC(packs_epi16)(Register(low), Register(high))); }

/// Words of at most 255, in the order of a reader's `Words`, as bytes.
inline U8 JoinWords(U16 first, U16 second) {
  const U8 bytes = ClampJoin(I16(first), I16(second));
#if LM_LANES == 64
  return U8(_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), __m512i(bytes)));
#else
  return bytes;
#endif
}

/// The mean of each pair of samples, halves rounded up.
inline U8 MeanUp(U8 a, U8 b) { return U8(LM_INTRINSIC(avg_epu8)(Register(a), Register(b))); }
inline U16 MeanUp(U16 a, U16 b) { return U16(LM_INTRINSIC(avg_epu16)(Register(a), Register(b))); }

/// The upper 16 bits of each product, rounded down.
inline U16 MultiplyHigh(U16 a, U16 factor) { return U16(LM_INTRINSIC(mulhi_epu16)(Register(a), Register(factor))); }
inline U16 MultiplyHigh(U16 a, std::uint16_t factor) { return MultiplyHigh(a, U16{} + factor); }
/// Likewise of signed numbers; the factor is even.
inline I16 MultiplyHigh(I16 a, std::int16_t factor) {
  return I16(LM_INTRINSIC(mulhi_epi16)(Register(a), Register(I16{} + factor)));
}

/// Signed products, divided by 32768 and rounded to the nearest, halves up.
inline I16 MultiplyRounded(I16 a, std::int16_t factor) {
  return I16(LM_INTRINSIC(mulhrs_epi16)(Register(a), Register(I16{} + factor)));
}

/// The sums of the products of neighbours, of signed bytes by factors of 0 to 255. They must fit words.
/// A word of factors has that of the even byte in its lower byte.
inline I16 MultiplyAddBytes(U8 bytes, U16 factors) {
  return I16(LM_INTRINSIC(maddubs_epi16)(Register(factors), Register(bytes)));
}

/// The sums of the products of neighbours.
inline I32 MultiplyAdd(I16 a, I16 b) { return I32(LM_INTRINSIC(madd_epi16)(Register(a), Register(b))); }

/// Words of two vectors, clamped to 16 bits, each 16 bytes from the same 16 bytes of both.
inline I16 ClampPack(I32 low, I32 high) { return I16(LM_INTRINSIC(packs_epi32)(Register(low), Register(high))); }

/// The sums of neighbours, which must fit words, in the order of `ClampPack`.
inline I16 PairSums(I16 low, I16 high) {
#if LM_LANES == 64
  return ClampPack(MultiplyAdd(low, I16{} + 1), MultiplyAdd(high, I16{} + 1));
#else
  // Products would do as well, but the ports that multiply are busy already: with AVX2, gray of BGR32 would take a
  // twelfth longer on Zen 5.
  return I16(LM_INTRINSIC(hadd_epi16)(Register(low), Register(high)));
#endif
}

/// Likewise clamped to 0..65535.
inline U16 ClampPackUp(I32 low, I32 high) { return U16(LM_INTRINSIC(packus_epi32)(Register(low), Register(high))); }

/// The lesser of each pair.
inline U16 Least(U16 a, U16 b) { return U16(LM_INTRINSIC(min_epu16)(Register(a), Register(b))); }

/// Sums, clamped to 16 bits.
inline I16 AddClamped(I16 a, I16 b) { return I16(LM_INTRINSIC(adds_epi16)(Register(a), Register(b))); }

/// Differences, at least 0.
inline U16 SubtractClamped(U16 a, U16 b) { return U16(LM_INTRINSIC(subs_epu16)(Register(a), Register(b))); }

/// A table of 256 bytes in registers. Keep it in a local variable: through a reference it is loaded anew after each
/// store.
class Table {
 public:
#if LM_BYTE_SHUFFLE == 64
  explicit Table(const ChannelTable<std::uint8_t>& table)
      : mPart{__m512i(Load(table.entries)), __m512i(Load(table.entries + 64)), __m512i(Load(table.entries + 128)),
              __m512i(Load(table.entries + 192))} {}

  U8 operator[](U8 index) const {
    const auto i = __m512i(index);
    const __m512i low = _mm512_permutex2var_epi8(mPart[0], i, mPart[1]);
    const __m512i high = _mm512_permutex2var_epi8(mPart[2], i, mPart[3]);
    return U8(_mm512_mask_blend_epi8(_mm512_movepi8_mask(i), low, high));
  }

 private:
  __m512i mPart[4];
#else
  explicit Table(const ChannelTable<std::uint8_t>& table) : mEntries(table.entries) {}

  // Sixteen shuffles of sixteen entries each, by the low digit of an index. The bits of the high digit choose among
  // them, the lowest one first: between two and two, and then between what was chosen.
  U8 operator[](U8 index) const {
    const U8 low = index & 0xF;
    const auto bits = U16(index);
    return Chosen<0, 16>(low, {Sign(bits << 3), Sign(bits << 2), Sign(bits << 1), Sign(bits)});
  }

 private:
#if LM_HAS_MASKS
  using Choice = __mmask64;
  static Choice Sign(U16 bytes) { return _mm512_movepi8_mask(Register(bytes)); }
  static U8 Blend(U8 a, U8 b, Choice choice) { return U8(_mm512_mask_blend_epi8(choice, Register(a), Register(b))); }
#else
  // The upper bit of each byte.
  using Choice = U16;
  static Choice Sign(U16 bytes) { return bytes; }
  static U8 Blend(U8 a, U8 b, Choice choice) {
    return U8(LM_INTRINSIC(blendv_epi8)(Register(a), Register(b), Register(choice)));
  }
#endif
  struct Choices {
    Choice by16, by32, by64, by128;
  };

  // Of `kCount` parts from `kFirst` on the one that an index is in.
  template <std::size_t kFirst, std::size_t kCount>
  U8 Chosen(U8 low, const Choices& choices) const {
    if constexpr (kCount == 1) {
      const auto* const part = reinterpret_cast<const __m128i*>(mEntries + 16 * kFirst);
      return U8(LM_INTRINSIC(shuffle_epi8)(Broadcast(_mm_loadu_si128(part)), Register(low)));
    } else {
      const Choice choice = kCount == 2   ? choices.by16
                            : kCount == 4 ? choices.by32
                            : kCount == 8 ? choices.by64
                                          : choices.by128;
      return Blend(Chosen<kFirst, kCount / 2>(low, choices), Chosen<kFirst + kCount / 2, kCount / 2>(low, choices),
                   choice);
    }
  }

  const std::uint8_t* mEntries;
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
