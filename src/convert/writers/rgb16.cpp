// RGB16: a 16-bit little-endian word, red in bits 15-11, green in 10-5, blue in 4-0.
#include "simd/stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Writer {
  static constexpr std::size_t kBytes = 2;

  static void Pixel(Rgb pixel, std::uint8_t* to) {
    const auto word = static_cast<std::uint16_t>((pixel.r & 0xF8) << 8 | (pixel.g & 0xFC) << 3 | pixel.b >> 3);
    std::memcpy(to, &word, sizeof word);
  }

#if LM_LANES
  static U16 Words(U16 r, U16 g, U16 b) { return (r & 0xF8) << 8 | (g & 0xFC) << 3 | b >> 3; }

  template <class To>
  static void Block(const RgbLanes& in, To to) {
    Store(U8(Words(FirstHalf(in.r), FirstHalf(in.g), FirstHalf(in.b))), to);
    Store(U8(Words(SecondHalf(in.r), SecondHalf(in.g), SecondHalf(in.b))), to + kLanes);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WRITER(StoreRGB16, Writer)
