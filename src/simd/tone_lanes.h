#pragma once

#include "simd/color_matrix.h"
#include "simd/part_lanes.h"

// Tables in parts, where one instruction looks up in the bytes of two registers.
#if LM_BYTE_SHUFFLE == 64
namespace LmImagingLib::LM_ISA {
namespace {

/// Looks light up in the parts of a table. Keep it in a local variable.
class ToneLanes {
 public:
  explicit ToneLanes(const ToneParts& parts) : mFirst(Load(parts.first)), mLeast(parts.least), mRises(parts.rises) {}

  /// Of light less 32768, both halves of each 16 results in a register of their own.
  U8 operator()(U16 first, U16 second) const {
    const U8 high = ClampJoin(I16(first >> 8), I16(second >> 8)) ^ 0x80;
    const U8 low = ClampJoin(I16(first & 0xFF), I16(second & 0xFF));
    const U8 lowTop = U8(U16(low) >> 4) & 0xF;
    const Places at{U8(U16(high) << 4 & 0xF0F0) | lowTop, high + high + (U8(U16(low) >> 7) & 1), high,
                    _mm512_cmpge_epu8_mask(__m512i(high), __m512i(Fill(4096 >> 8))),
                    _mm512_cmpge_epu8_mask(__m512i(high), __m512i(Fill(16384 >> 8)))};
    const __m512i darkEntry = __m512i(low & 0xF), middleEntry = __m512i(lowTop & 7);
    const __m512i entry =
        _mm512_mask_blend_epi8(at.isBright, _mm512_mask_blend_epi8(at.isLit, darkEntry, middleEntry), __m512i(lowTop));
    const __m512i tone = CountRises(mLeast[at], entry, mRises[at]);
    const __mmask64 isFirst = _mm512_testn_epi8_mask(__m512i(high | (low & 0xC0)), __m512i(Fill(0xFF)));
    return U8(_mm512_mask_permutexvar_epi8(tone, isFirst, __m512i(low), __m512i(mFirst)));
  }

 private:
  /// The places of the pieces of some light, if it is in their zone.
  struct Places {
    U8 dark, middle, bright;
    __mmask64 isLit, isBright;
  };

  /// One byte of each piece.
  class Pieces {
   public:
    explicit Pieces(const std::uint8_t* bytes) {
      for (std::size_t k = 0; k < 10; ++k) mPart[k] = __m512i(Load(bytes + 64 * k));
    }

    __m512i operator[](const Places& at) const {
      const __m512i d = __m512i(at.dark), b = __m512i(at.bright);
      const __m512i dark =
          _mm512_mask_blend_epi8(_mm512_movepi8_mask(d), _mm512_permutex2var_epi8(mPart[0], d, mPart[1]),
                                 _mm512_permutex2var_epi8(mPart[2], d, mPart[3]));
      const __m512i middle = _mm512_permutex2var_epi8(mPart[4], __m512i(at.middle), mPart[5]);
      // The first 64 pieces of bright light are in the other zones.
      const __m512i bright = _mm512_mask_blend_epi8(_mm512_movepi8_mask(b), _mm512_permutexvar_epi8(b, mPart[7]),
                                                    _mm512_permutex2var_epi8(mPart[8], b, mPart[9]));
      return _mm512_mask_blend_epi8(at.isBright, _mm512_mask_blend_epi8(at.isLit, dark, middle), bright);
    }

   private:
    __m512i mPart[10];
  };

  const U8 mFirst;
  const Pieces mLeast, mRises;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
