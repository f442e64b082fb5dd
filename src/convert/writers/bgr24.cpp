// BGR24: the bytes blue, green, red.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Writer {
  static constexpr std::size_t kBytes = 3;

  static void Pixel(Rgb pixel, std::uint8_t* to) {
    to[0] = pixel.b;
    to[1] = pixel.g;
    to[2] = pixel.r;
  }

#if LM_LANES
  template <class To>
  static void Block(const RgbLanes& in, To to) {
    StoreInterleaved(in.b, in.g, in.r, to);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WRITER(StoreBGR24, Writer)
