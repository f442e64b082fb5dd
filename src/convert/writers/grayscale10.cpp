// Grayscale10: a 16-bit little-endian word of 10 bits; the 8 bits of the pixel are its top ones.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Writer {
  static constexpr std::size_t kBytes = 2;
  static void Pixel(Rgb pixel, std::uint8_t* to) {
    const auto word = static_cast<std::uint16_t>(pixel.r << 2);
    std::memcpy(to, &word, sizeof word);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WRITER(StoreGrayscale10, StorePixels<Writer>)
