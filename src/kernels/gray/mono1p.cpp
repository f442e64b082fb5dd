// Grayscale of 1, 2 or 4 bits, the first pixel in the lowest bits of a byte. Bits are repeated, so that white is white.
#include "kernels/decoder.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <unsigned kBits>
struct FewBits {
  static constexpr std::size_t kPixels = 8 / kBits, kBytes = 1, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = true;

  template <class Sample>
  static void Group(const SourceLines& in, Sample* out) {
    constexpr unsigned kMask = (1U << kBits) - 1;
    // 255, 85 or 17 of bytes, and 65535, 21845 or 4369 of words.
    constexpr unsigned kRepeat = ((1U << 8 * sizeof(Sample)) - 1) / kMask;
    const unsigned byte = in.line[0][0];
    for (std::size_t k = 0; k < kPixels; ++k) out[k] = static_cast<Sample>((byte >> k * kBits & kMask) * kRepeat);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(Mono1p, FewBits<1>)
LM_EXPORT_WIDE_DECODER(Mono2p, FewBits<2>)
LM_EXPORT_WIDE_DECODER(Mono4p, FewBits<4>)
