#pragma once

#include <immintrin.h>

namespace LmImagingLib::LM_ISA {
namespace {

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

#if LM_LANES == 64
/// Loads and stores the first `count` bytes, at most kLanes, and touches no other; the rest loads as 0.
inline U8 LoadPart(const std::uint8_t* from, std::size_t count) {
  return U8(_mm512_maskz_loadu_epi8(_bzhi_u64(~std::uint64_t{0}, static_cast<unsigned>(count)), from));
}
inline void StorePart(U8 v, std::uint8_t* to, std::size_t count) {
  _mm512_mask_storeu_epi8(to, _bzhi_u64(~std::uint64_t{0}, static_cast<unsigned>(count)), __m512i(v));
}
#else
inline U8 LoadPart(const std::uint8_t* from, std::size_t count) {
  U8 v{};
  std::memcpy(&v, from, count);
  return v;
}
inline void StorePart(U8 v, std::uint8_t* to, std::size_t count) { std::memcpy(to, &v, count); }
#endif

/// The bytes of a vector as 16-bit lanes, in two halves whose order only `Join` and `ClampJoin` know.
inline U16 LowHalf(U8 v) {
#if LM_LANES == 64
  return U16(_mm512_unpacklo_epi8(__m512i(v), __m512i{}));
#elif LM_LANES == 32
  return U16(_mm256_unpacklo_epi8(__m256i(v), __m256i{}));
#else
  return U16(_mm_unpacklo_epi8(__m128i(v), __m128i{}));
#endif
}
inline U16 HighHalf(U8 v) {
#if LM_LANES == 64
  return U16(_mm512_unpackhi_epi8(__m512i(v), __m512i{}));
#elif LM_LANES == 32
  return U16(_mm256_unpackhi_epi8(__m256i(v), __m256i{}));
#else
  return U16(_mm_unpackhi_epi8(__m128i(v), __m128i{}));
#endif
}

/// Puts two halves together again, signed values clamped to 0..255.
inline U8 ClampJoin(I16 low, I16 high) {
#if LM_LANES == 64
  return U8(_mm512_packus_epi16(__m512i(low), __m512i(high)));
#elif LM_LANES == 32
  return U8(_mm256_packus_epi16(__m256i(low), __m256i(high)));
#else
  return U8(_mm_packus_epi16(__m128i(low), __m128i(high)));
#endif
}

/// The bytes of two vectors of words in turn, signed values clamped to 0..255.
inline U8 ClampZip(I16 even, I16 odd) {
#if LM_LANES == 64
  const __m512i order = _mm512_broadcast_i32x4(_mm_setr_epi8(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15));
  return U8(_mm512_shuffle_epi8(__m512i(ClampJoin(even, odd)), order));
#elif LM_LANES == 32
  const __m256i order =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15));
  return U8(_mm256_shuffle_epi8(__m256i(ClampJoin(even, odd)), order));
#else
  const __m128i order = _mm_setr_epi8(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15);
  return U8(_mm_shuffle_epi8(__m128i(ClampJoin(even, odd)), order));
#endif
}

/// The low bytes of 2 * kLanes bytes' worth of words, in their order in memory.
inline U8 LowBytes(U16 first, U16 second) {
#if LM_LANES == 64
  const __m512i bytes = _mm512_packus_epi16(__m512i(first & 0xFF), __m512i(second & 0xFF));
  return U8(_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), bytes));
#elif LM_LANES == 32
  const __m256i bytes = _mm256_packus_epi16(__m256i(first & 0xFF), __m256i(second & 0xFF));
  return U8(_mm256_permute4x64_epi64(bytes, 0xD8));
#else
  return U8(_mm_packus_epi16(__m128i(first & 0xFF), __m128i(second & 0xFF)));
#endif
}

/// The mean of each pair of bytes, halves rounded up.
inline U8 MeanUp(U8 a, U8 b) {
#if LM_LANES == 64
  return U8(_mm512_avg_epu8(__m512i(a), __m512i(b)));
#elif LM_LANES == 32
  return U8(_mm256_avg_epu8(__m256i(a), __m256i(b)));
#else
  return U8(_mm_avg_epu8(__m128i(a), __m128i(b)));
#endif
}

/// The upper 16 bits of each product.
inline U16 MultiplyHigh(U16 a, std::uint16_t factor) {
  const U16 b = U16{} + factor;
#if LM_LANES == 64
  return U16(_mm512_mulhi_epu16(__m512i(a), __m512i(b)));
#elif LM_LANES == 32
  return U16(_mm256_mulhi_epu16(__m256i(a), __m256i(b)));
#else
  return U16(_mm_mulhi_epu16(__m128i(a), __m128i(b)));
#endif
}

/// A table of 256 bytes in registers. Keep it in a local variable: behind a reference it is loaded anew after each
/// store.
class Table {
 public:
#if LM_LANES == 64
  explicit Table(const std::uint8_t* entries)
      : mPart{__m512i(Load(entries)), __m512i(Load(entries + 64)), __m512i(Load(entries + 128)),
              __m512i(Load(entries + 192))} {}

  U8 operator[](U8 index) const {
    const auto i = __m512i(index);
    const __m512i low = _mm512_permutex2var_epi8(mPart[0], i, mPart[1]);
    const __m512i high = _mm512_permutex2var_epi8(mPart[2], i, mPart[3]);
    return U8(_mm512_mask_blend_epi8(_mm512_movepi8_mask(i), low, high));
  }

 private:
  __m512i mPart[4];
#else
  explicit Table(const std::uint8_t* entries) : mEntries(entries) {}

  // Sixteen shuffles of sixteen entries each. A shuffle gives 0 where the top bit of its index is set; xor with the
  // high digit, and a saturating addition of 0x70, leave that bit clear only where the digit is the table's.
  U8 operator[](U8 index) const {
    U8 found{};
    for (unsigned digit = 0; digit < 16; ++digit) {
      const U8 local = index ^ static_cast<std::uint8_t>(16 * digit);
#if LM_LANES == 32
      const __m256i part =
          _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(mEntries + 16 * digit)));
      found |= U8(_mm256_shuffle_epi8(part, _mm256_adds_epu8(__m256i(local), _mm256_set1_epi8(0x70))));
#else
      const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mEntries + 16 * digit));
      found |= U8(_mm_shuffle_epi8(part, _mm_adds_epu8(__m128i(local), _mm_set1_epi8(0x70))));
#endif
    }
    return found;
  }

 private:
  const std::uint8_t* mEntries;
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
