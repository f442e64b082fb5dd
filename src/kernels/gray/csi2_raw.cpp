// Grayscale of 10, 12 or 14 bits of MIPI CSI-2: the top 8 bits of four pixels (of 12 bits two), then their low bits,
// those of the first pixel lowest.
#include "kernels/decoder.h"
#include "simd/packed.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <unsigned kBits>
struct CSI2Raw {
  static constexpr std::size_t kPixels = kBits == 12 ? 2 : 4, kBytes = kPixels * kBits / 8, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = true;
  static constexpr unsigned kLowBits = kBits - 8;

  static void Group(const SourceLines& in, std::uint8_t* out) { std::memcpy(out, in.line[0], kPixels); }
  static void Group(const SourceLines& in, std::uint16_t* out) {
    const std::uint8_t* const p = in.line[0];
    std::uint32_t low = 0;
    std::memcpy(&low, p + kPixels, kBytes - kPixels);
    for (std::size_t k = 0; k < kPixels; ++k, low >>= kLowBits) {
      out[k] = static_cast<std::uint16_t>(std::uint32_t{p[k]} << kLowBits | (low & ((1U << kLowBits) - 1)));
    }
  }

#if LM_LANES
  static constexpr std::size_t kBytesOfEight = kBits;
  static constexpr unsigned kAbove = 16 - kLowBits;

  static constexpr std::size_t TopAt(std::size_t sample) { return sample / kPixels * kBytes + sample % kPixels; }
  static constexpr std::size_t LowBit(std::size_t sample) { return sample % kPixels * kLowBits; }
  static constexpr std::size_t LowAt(std::size_t sample) {
    return sample / kPixels * kBytes + kPixels + LowBit(sample) / 8;
  }

  struct Tops {
    static constexpr std::size_t At(std::size_t sample, std::size_t /*byte*/) { return TopAt(sample); }
  };
  // The byte that a sample's low bits begin in, and the next one. The last byte of a group ends with a sample.
  struct Lows {
    static constexpr std::size_t At(std::size_t sample, std::size_t byte) {
      return LowAt(sample) + (LowBit(sample) % 8 + kLowBits > 8 ? byte : 0);
    }
  };
  struct LowsToTop {
    static constexpr unsigned At(std::size_t sample) { return 1U << (kAbove - LowBit(sample) % 8); }
  };

  template <class Groups, class Reader>
  static U16 Words(const Reader& read) {
    return (PackedWords<Groups, Tops>(read, 0) >> 8 << kLowBits) |
           (PackedWords<Groups, Lows>(read, 0) * EightValues<LowsToTop>() >> kAbove);
  }
  template <class Groups, class Reader>
  static U16 TopBytes(const Reader& read) {
    return PackedWords<Groups, Tops>(read, 0) >> 8;
  }

  template <class Reader, class Sample>
  static Lanes<Sample> Block(const Reader& read, Of<Sample> samples) {
    return PackedBlock<CSI2Raw>(read, samples);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(CSI2Raw10, CSI2Raw<10>)
LM_EXPORT_WIDE_DECODER(CSI2Raw12, CSI2Raw<12>)
LM_EXPORT_WIDE_DECODER(CSI2Raw14, CSI2Raw<14>)
