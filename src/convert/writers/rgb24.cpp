// RGB24: the bytes red, green, blue.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Writer {
  static constexpr std::size_t kBytes = 3;

  static void Pixel(Rgb pixel, std::uint8_t* to) {
    to[0] = pixel.r;
    to[1] = pixel.g;
    to[2] = pixel.b;
  }

#if LM_LANES
  template <class To>
  static void Block(const RgbLanes& in, To to) {
    StoreInterleaved(in.r, in.g, in.b, to);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WRITER(StoreRGB24, Writer)
