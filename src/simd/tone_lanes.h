#pragma once

#include "simd/color_matrix.h"
#include "simd/lanes.h"

// Light to bytes in registers.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Light as it is: `LinearTone`.
struct LinearLanes {
  /// The results of even and of odd light in turn.
  U8 operator()(U16 even, U16 odd) const { return U8(By256(even) >> 8 | (By256(odd) & 0xFF00)); }

 private:
  // From 4096 on, light is that in the middle of 16: its lower 4 bits become 8.
  static U16 By256(U16 light) {
    const U16 isLit = U16(I16(light >> 4) > 255);
    light = (light | (isLit & 15)) ^ (isLit & 7);
    return MultiplyHigh(light, 65281) + 128;
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif

// Tone curves as lines, where one instruction looks up in the bytes of two registers.
#if LM_BYTE_SHUFFLE == 64
namespace LmImagingLib::LM_ISA {
namespace {

/// Looks light up by lines. Keep it in a local variable.
template <bool kHasFirst>
class ToneLanes {
 public:
  explicit ToneLanes(const ToneLines& lines)
      : mBase{LoadWords(lines.base[0]), LoadWords(lines.base[1])},
        mSlope{LoadWords(lines.slope[0]), LoadWords(lines.slope[1])},
        mFirst(Load(lines.first)) {
    for (std::size_t k = 0; k < 4; ++k) mNext[k] = __m512i(Load(lines.next + 64 * k));
  }

  /// The results of even and of odd light in turn.
  U8 operator()(U16 even, U16 odd) const {
    const Line a = LineOf(even), b = LineOf(odd);
    const __m512i tone = Bytes<6>(a.tone, b.tone);
    const __m512i at = Bytes<4>(a.scaled, b.scaled);
    const __m512i next =
        _mm512_mask_blend_epi8(_mm512_movepi8_mask(tone), _mm512_permutex2var_epi8(mNext[0], tone, mNext[1]),
                               _mm512_permutex2var_epi8(mNext[2], tone, mNext[3]));
    const __mmask64 isNext = _mm512_cmplt_epu8_mask(_mm512_sub_epi8(at, next), __m512i(Fill(ToneLines::kReach)));
    const __m512i result = _mm512_mask_sub_epi8(tone, isNext, tone, __m512i(Fill(0xFF)));
    if constexpr (!kHasFirst) return U8(result);
    const __m512i high = Bytes<8>(__m512i(even), __m512i(odd));
    const __mmask64 isFirst = _mm512_mask_testn_epi8_mask(_mm512_testn_epi8_mask(high, high), at, __m512i(Fill(0xC0)));
    return U8(_mm512_mask_permutexvar_epi8(result, isFirst, at, __m512i(mFirst)));
  }

 private:
  struct Line {
    __m512i tone, scaled;
  };

  static __m512i LoadWords(const std::uint16_t* from) { return __m512i(Load(from)); }

  Line LineOf(U16 light) const {
    const auto l = __m512i(light);
    const __mmask32 isDark = _mm512_cmplt_epu16_mask(l, _mm512_set1_epi16(4096));
    const __m512i scaled = _mm512_mask_slli_epi16(l, isDark, l, 4);
    const __m512i line = _mm512_srli_epi16(scaled, 11);
    const __m512i at = _mm512_mask_add_epi16(line, isDark, line, _mm512_set1_epi16(32));  // bit 5 chooses the register
    const __m512i base = _mm512_permutex2var_epi16(mBase[1], at, mBase[0]);
    const __m512i slope = _mm512_permutex2var_epi16(mSlope[1], at, mSlope[0]);
    return {_mm512_add_epi16(base, _mm512_mulhi_epu16(slope, scaled)), scaled};
  }

  // The 8 bits of each word from bit `kBit` on, of two registers in turn.
  template <std::uint64_t kBit>
  static __m512i Bytes(__m512i even, __m512i odd) {
    const __m512i bits = _mm512_set1_epi64(static_cast<long long>(0x3030202010100000 + kBit * 0x0101010101010101));
    return _mm512_mask_multishift_epi64_epi8(_mm512_multishift_epi64_epi8(bits, even), 0xAAAAAAAAAAAAAAAA, bits, odd);
  }

  const __m512i mBase[2], mSlope[2];
  const U8 mFirst;
  __m512i mNext[4];
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
