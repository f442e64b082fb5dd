// Grayscale of 8 bits, two's complement: -128 is black.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 1, kLines = 1;
  static void Gray(const SourceLines& in, std::uint8_t* out) {
    out[0] = static_cast<std::uint8_t>(in.line[0][0] ^ 0x80);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale8Signed, DecodeGray<Layout>)
