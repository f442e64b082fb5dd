// Grayscale8: one byte a pixel.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Writer {
  static constexpr std::size_t kBytes = 1;

  static void Pixel(Rgb pixel, std::uint8_t* to) { to[0] = pixel.r; }

#if LM_LANES
  static void Block(const RgbLanes& in, std::uint8_t* to) { Store(in.r, to); }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WRITER(StoreGrayscale8, Writer)
