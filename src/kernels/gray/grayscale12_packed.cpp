// Grayscale of 10 or 12 bits packed: p0 in bits 0-11 and p1 in bits 12-23 of three bytes, lowest first.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Grayscale12PackedLayout {
  static constexpr std::size_t kPixels = 2, kBytes = 3, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = true;

  static void Group(const SourceLines& in, std::uint8_t* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = static_cast<std::uint8_t>((p[0] | (p[1] & 0x0FU) << 8) >> in.shift);
    out[1] = static_cast<std::uint8_t>((p[1] >> 4 | std::uint32_t{p[2]} << 4) >> in.shift);
  }

#if LM_LANES
  // Half of each 16 pixels as the words that they lie in: p0 in bits 0-11 of the first two bytes of a group, p1 in bits
  // 4-15 of the last two.
  template <std::size_t kHalf>
  struct WordIndex {
    static constexpr std::size_t At(std::size_t lane) {
      return lane / 16 * 24 + 12 * kHalf + lane % 16 / 4 * 3 + lane % 4 / 2 + lane % 2;
    }
  };

  // The same, where each 16 pixels of a half have 16 bytes of the register to themselves.
  template <std::size_t kHalf>
  struct UnitIndex {
    static constexpr std::size_t At(std::size_t lane) {
      return lane / 16 * 16 + 4 * kHalf + lane % 16 / 4 * 3 + lane % 4 / 2 + lane % 2;
    }
  };

  template <std::size_t kHalf, class Reader>
  static U16 Words(const Reader& read) {
#if LM_LANES == 64
    const U8 window[2] = {Pinned(read(0, 0)), Pinned(read.Half(0, kLanes))};
    return U16(Pick<WordIndex<kHalf>>(window));
#else
    // Both halves fit into 16 bytes, which a shuffle does not leave.
    return U16(Pick<UnitIndex<kHalf>>({read.Units(0, 8 * kHalf, 24)}));
#endif
  }

  template <std::size_t kHalf, class Reader>
  static I16 Samples(const Reader& read) {
    const U16 words = Words<kHalf>(read);
    const U32 mask = U32{} + 0xFFFF;
    const U16 samples = (words & 0x0FFF & U16(mask)) | (words >> 4 & ~U16(mask));
    return I16(samples >> static_cast<std::uint16_t>(read.in.shift) & 0xFF);
  }

  template <class Reader>
  static U8 Block(const Reader& read) {
    return ClampJoin(Samples<0>(read), Samples<1>(read));
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale12Packed, Grayscale12PackedLayout)
