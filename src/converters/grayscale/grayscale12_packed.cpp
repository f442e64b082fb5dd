// Grayscale of 10 or 12 bits packed: p0 in bits 0-11 and p1 in bits 12-23 of three bytes, lowest first.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 3, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = true;

  static void Group(const SourceLines& in, std::uint8_t* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = static_cast<std::uint8_t>((p[0] | (p[1] & 0x0FU) << 8) >> in.shift);
    out[1] = static_cast<std::uint8_t>((p[1] >> 4 | std::uint32_t{p[2]} << 4) >> in.shift);
  }

#if LM_LANES
  // Byte kByte of the group that lane i belongs to.
  template <std::size_t kByte>
  struct ByteIndex {
    static constexpr std::size_t At(std::size_t lane) { return lane / 2 * 3 + lane % 2 + kByte; }
  };

  // Every lane gets the two bytes that its sample lies in: p0 in bits 0-11 of the first two bytes of the group, p1 in
  // bits 4-15 of the last two. The low byte of the shifted pair, put together from the bytes.
  template <class Reader>
  static U8 Block(const Reader& read) {
    U8 window[2] = {read(0, 0), read.Half(0, kLanes)};
    const U16 low = U16(Pick<ByteIndex<0>>(window));
    const U16 high = U16(Pick<ByteIndex<1>>(window));
    const U16 even = (low & 0xFF) | high << 8;
    const U16 odd = low >> 8 | (high & 0xFF00);
    const auto shift = static_cast<std::uint16_t>(read.in.shift);
    return U8(((even & 0x0FFF) >> shift & 0xFF) | odd >> 4 >> shift << 8);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale12Packed, Layout)
