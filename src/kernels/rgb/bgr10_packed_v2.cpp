// BGR of 10 bits packed in a 32-bit little-endian word: blue in bits 9-0, green in 19-10, red in 29-20;
// and RGB, which has red in bits 9-0.
#include "kernels/decoder.h"
#include "kernels/rgb/exchanged.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR10PackedV2Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 4, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = false;

  template <class Sample>
  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    constexpr unsigned kDown = sizeof(Sample) == 1 ? 2 : 0;
    constexpr std::uint32_t kMask = 0x3FF >> kDown;
    std::uint32_t word;
    std::memcpy(&word, in.line[0], sizeof word);
    out[0] = {static_cast<Sample>(word >> (20 + kDown) & kMask), static_cast<Sample>(word >> (10 + kDown) & kMask),
              static_cast<Sample>(word >> kDown & kMask)};
  }

#if LM_LANES
  // The top 8 bits of each sample as bytes 0, 1 and 2 of the word.
  struct Bytes {
    static constexpr std::size_t kPixels = 1, kSamples = 4;
    static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};
  };

  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t>) {
    U8 window[4];
    for (std::size_t k = 0; k < 4; ++k) {
      const U32 word = U32(read(0, k * kLanes));
      window[k] = U8((word >> 22 & 0xFF) | (word >> 4 & 0xFF00) | (word << 14 & 0xFF0000));
    }
    return {Pick<SampleIndex<Bytes, 0>>(window), Pick<SampleIndex<Bytes, 1>>(window),
            Pick<SampleIndex<Bytes, 2>>(window)};
  }

  // The lower word of each pixel.
  struct LowIndex {
    static constexpr std::size_t At(std::size_t lane) { return 2 * lane; }
  };

  template <class Reader>
  static RgbLanes<std::uint16_t> Block(const Reader& read, Of<std::uint16_t>) {
    const U32 first = U32(read(0, 0));
    const U32 second = U32(read(0, kLanes));
    const auto sample = [&](unsigned at) {
      const U16 window[2] = {U16(first >> at), U16(second >> at)};
      return Pick<LowIndex>(window) & 0x3FF;
    };
    return {sample(20), sample(10), sample(0)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(BGR10PackedV2, BGR10PackedV2Layout)
LM_EXPORT_WIDE_DECODER(RGB10p32, RedBlueExchanged<BGR10PackedV2Layout>)
