// BGR of 10 bits packed in a 32-bit little-endian word: blue in bits 9-0, green in 19-10, red in 29-20.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR10PackedV2Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 4, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = false;

  static void Group(const SourceLines& in, Rgb* out) {
    std::uint32_t word;
    std::memcpy(&word, in.line[0], sizeof word);
    out[0] = {static_cast<std::uint8_t>(word >> 22), static_cast<std::uint8_t>(word >> 12),
              static_cast<std::uint8_t>(word >> 2)};
  }

#if LM_LANES
  // The top 8 bits of each sample as bytes 0, 1 and 2 of the word.
  struct Bytes {
    static constexpr std::size_t kPixels = 1, kSamples = 4;
    static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};
  };

  template <class Reader>
  static RgbLanes Block(const Reader& read) {
    U8 window[4];
    for (std::size_t k = 0; k < 4; ++k) {
      const U32 word = U32(read(0, k * kLanes));
      window[k] = U8((word >> 22 & 0xFF) | (word >> 4 & 0xFF00) | (word << 14 & 0xFF0000));
    }
    return {Pick<SampleIndex<Bytes, 0>>(window), Pick<SampleIndex<Bytes, 1>>(window),
            Pick<SampleIndex<Bytes, 2>>(window)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BGR10PackedV2Word, BGR10PackedV2Layout)
