// The fourth channel of pixels of 32 and 64 bits, made all ones after they were stored.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class Pixel>
void SetFourth(std::uint8_t* pixels, std::size_t count) {
  constexpr Pixel kFourth = static_cast<Pixel>(~(~Pixel{0} >> (2 * sizeof(Pixel))));  // the top quarter
  for (std::size_t i = 0; i < count; ++i, pixels += sizeof(Pixel)) {
    Pixel pixel;
    std::memcpy(&pixel, pixels, sizeof pixel);
    pixel |= kFourth;
    std::memcpy(pixels, &pixel, sizeof pixel);
  }
}

}  // namespace

OpaqueKernel MakeOpaque;
void MakeOpaque(std::uint8_t* pixels, std::size_t pixelBytes, std::size_t count) {
  if (pixelBytes == 4) {
    SetFourth<std::uint32_t>(pixels, count);
  } else {
    SetFourth<std::uint64_t>(pixels, count);
  }
}

}  // namespace LmImagingLib::LM_ISA
