// Grayscale of 10 to 16 bits in 16-bit little-endian words.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 2, kLines = 1;
  static void Gray(const SourceLines& in, std::uint8_t* out) { out[0] = Sample16(in.line[0], in.shift); }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale16, DecodeGray<Layout>)
