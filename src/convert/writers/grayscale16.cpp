// Grayscale16: a 16-bit little-endian word, 0 to 255: the value is not widened, as applications scale it themselves.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Writer {
  static constexpr std::size_t kBytes = 2;
  static void Pixel(Rgb pixel, std::uint8_t* to) {
    const std::uint16_t word = pixel.r;
    std::memcpy(to, &word, sizeof word);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WRITER(StoreGrayscale16, StorePixels<Writer>)
