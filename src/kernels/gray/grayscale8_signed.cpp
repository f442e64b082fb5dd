// Grayscale of 8 bits, two's complement: -128 is black.
#include "kernels/decoder.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Grayscale8SignedLayout {
  static constexpr std::size_t kPixels = 1, kBytes = 1, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = true;

  static void Group(const SourceLines& in, std::uint8_t* out) {
    out[0] = static_cast<std::uint8_t>(in.line[0][0] ^ 0x80);
  }

#if LM_LANES
  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t>) {
    return read(0, 0) ^ Fill(0x80);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale8Signed, Grayscale8SignedLayout)
