#pragma once

#include "simd/lanes.h"
#include "simd/mosaic.h"

// Tables of samples in parts, where one instruction looks up in the bytes of two registers.
#if LM_BYTE_SHUFFLE == 64
namespace LmImagingLib::LM_ISA {
namespace {

/// Adds one to `tone` where an entry of a piece is at or after each of two rises, which are nibbles.
inline __m512i CountRises(__m512i tone, __m512i entry, __m512i rises) {
  const __m512i nibble = __m512i(Fill(0xF)), lessOne = __m512i(Fill(0xFF));
  const __mmask64 first = _mm512_cmpge_epu8_mask(entry, _mm512_and_si512(rises, nibble));
  const __mmask64 second = _mm512_cmpge_epu8_mask(entry, _mm512_and_si512(_mm512_srli_epi16(rises, 4), nibble));
  tone = _mm512_mask_sub_epi8(tone, first, tone, lessOne);
  return _mm512_mask_sub_epi8(tone, second, tone, lessOne);
}

/// Looks the samples of one colour up. Parts stay in memory: those of two colours are more than there are registers.
class PartLanes {
 public:
  explicit PartLanes(const SampleParts& parts)
      : mWindowPiece(Fill(parts.windowPiece)), mWindow(parts.window), mLeast(parts.least), mRises(parts.rises) {}

  /// @param low  the lower 8 bits of each sample
  /// @param high  the same without the lowest 4 bits
  U8 operator()(U8 low, U8 high) const {
    const U8 piece = U8(U16(high) << 2 & 0xFCFC) | U8(U16(low) >> 2 & 0x0303);
    const U8 nibble = low & 0xF;
    const __mmask64 isBright = _mm512_cmpge_epu8_mask(__m512i(high), __m512i(Fill(1024 >> 4)));
    const __m512i bright = CountRises(mLeast.Bright(high), __m512i(nibble), mRises.Bright(high));
    __m512i tone =
        _mm512_mask_add_epi8(bright, _knot_mask64(isBright), mLeast.Dark(piece), More(mRises.Dark(piece), nibble));
    const U8 fromWindow = piece ^ mWindowPiece;
    const __mmask64 inWindow =
        _mm512_mask_cmplt_epu8_mask(_knot_mask64(isBright), __m512i(fromWindow), __m512i(Fill(16)));
    tone = _mm512_mask_permutexvar_epi8(tone, inWindow, __m512i(low), _mm512_load_si512(mWindow));
    return U8(tone);
  }

 private:
  /// One byte of each piece.
  class Pieces {
   public:
    explicit Pieces(const std::uint8_t* bytes) : mBytes(bytes) {}

    __m512i Dark(U8 piece) const {
      const auto i = __m512i(piece);
      return _mm512_mask_blend_epi8(_mm512_movepi8_mask(i), _mm512_permutex2var_epi8(Part(0), i, Part(1)),
                                    _mm512_permutex2var_epi8(Part(2), i, Part(3)));
    }
    // The first 64 pieces of 16 are dark.
    __m512i Bright(U8 piece) const {
      const auto i = __m512i(piece);
      return _mm512_mask_blend_epi8(_mm512_movepi8_mask(i), _mm512_permutexvar_epi8(i, Part(5)),
                                    _mm512_permutex2var_epi8(Part(6), i, Part(7)));
    }

   private:
    __m512i Part(std::size_t k) const { return _mm512_load_si512(mBytes + 64 * k); }

    const std::uint8_t* const mBytes;
  };

  // How much more the sample of a piece of 4 is than its first one, by the lowest 2 bits of `nibble`.
  static __m512i More(__m512i rises, U8 nibble) {
    const auto i = __m512i(nibble);
    const __m512i from = _mm512_shuffle_epi8(_mm512_set1_epi32(0x05020000), i);
    const __m512i bits = _mm512_shuffle_epi8(_mm512_set1_epi32(0x07070300), i);
    const __m512i ofByte = _mm512_set1_epi64(0x3830282018100800);
    return _mm512_and_si512(_mm512_multishift_epi64_epi8(_mm512_add_epi8(from, ofByte), rises), bits);
  }

  const U8 mWindowPiece;
  const std::uint8_t* const mWindow;
  const Pieces mLeast, mRises;
};

/// Looks up two registers' worth of samples in words, even and odd ones in parts of their own.
/// @param mask  the bits of a sample, in each word
inline void StoreByParts(const PartLanes& even, const PartLanes& odd, const std::uint8_t* from, U16 mask,
                         std::uint8_t* to) {
  // Both bytes of a sample that are looked up, four registers of them.
  const __m512i bytes = _mm512_set1_epi64(0x3430242014100400);
  __m512i v[4];
  for (std::size_t k = 0; k < 4; ++k) {
    v[k] = _mm512_multishift_epi64_epi8(bytes, __m512i(U16(Load(from + k * kLanes)) & mask));
  }
  // The first, and the third byte of each four in the first half, the second or the fourth in the other half.
  const __m512i evens =
      _mm512_setr_epi64(0x1C1814100C080400, 0x3C3834302C282420, 0x5C5854504C484440, 0x7C7874706C686460,
                        0x1D1915110D090501, 0x3D3935312D292521, 0x5D5955514D494541, 0x7D7975716D696561);
  const __m512i odds = _mm512_add_epi8(evens, __m512i(Fill(2)));
  const auto ends = [](__m512i a, __m512i b, U8& low, U8& high) {
    low = U8(_mm512_shuffle_i64x2(a, b, 0x44));
    high = U8(_mm512_shuffle_i64x2(a, b, 0xEE));
  };
  U8 low, high;
  ends(_mm512_permutex2var_epi8(v[0], evens, v[1]), _mm512_permutex2var_epi8(v[2], evens, v[3]), low, high);
  const U8 evenTones = even(low, high);
  ends(_mm512_permutex2var_epi8(v[0], odds, v[1]), _mm512_permutex2var_epi8(v[2], odds, v[3]), low, high);
  const U8 oddTones = odd(low, high);
  Store(Zip<0>(evenTones, oddTones, std::make_index_sequence<kLanes>{}), to);
  Store(Zip<1>(evenTones, oddTones, std::make_index_sequence<kLanes>{}), to + kLanes);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
