// Bayer mosaic, half size: each 2 x 2 cell of samples makes a pixel. The mean of the greens is rounded.
#include "kernels/writers/interleaved_words.h"
#include "simd/direct.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Of samples of `kSampleBytes` bytes.
template <class Sample, std::size_t kSampleBytes = sizeof(Sample)>
struct BayerHalfLayout {
  static constexpr std::size_t kPixels = 1, kBytes = 2 * kSampleBytes, kLines = 2, kColumns = 2, kBeyond = 0;
  static constexpr bool kGray = false;

  template <class Color, class Value, class Mean>
  static Color CellColor(Site site, const Value (&top)[2], const Value (&bottom)[2], const Mean& mean) {
    const Value green = IsGreen(site) ? mean(top[0], bottom[1]) : mean(top[1], bottom[0]);
    const Value upper = IsGreen(site) ? top[1] : top[0], lower = IsGreen(site) ? bottom[0] : bottom[1];
    return IsInRedRow(site) ? Color{upper, green, lower} : Color{lower, green, upper};
  }

  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    Sample samples[2][2];
    for (std::size_t k = 0; k < 4; ++k) samples[k / 2][k % 2] = SampleAt<kSampleBytes, Sample>(in, k / 2, k % 2);
    *out = CellColor<Rgb<Sample>>(in.site, samples[0], samples[1],
                                  [](Sample a, Sample b) { return static_cast<Sample>((unsigned{a} + b + 1) >> 1); });
  }

#if LM_LANES
  // The even and the odd columns of two registers.
  struct EvenSamples {
    static constexpr std::size_t At(std::size_t i) { return 2 * i; }
  };
  struct OddSamples {
    static constexpr std::size_t At(std::size_t i) { return 2 * i + 1; }
  };

  template <class Reader>
  static void Part(const Reader& read, std::size_t line, Lanes<Sample> (&columns)[2]) {
#if LM_LANES == 32
    // Words that become bytes are loaded as two packs want them, each within 16 bytes.
    if constexpr (kSampleBytes > sizeof(Sample)) {
      const auto factor = static_cast<std::uint16_t>(0x100U >> read.in.shift);
      const auto bytesAt = [&](std::size_t offset) {
        return U16(JoinWords(U16(read.Units(line, offset, 2 * kLanes)) * factor >> 8,
                             U16(read.Units(line, offset + 16, 2 * kLanes)) * factor >> 8));
      };
      const U16 first = bytesAt(0), second = bytesAt(kLanes);
      columns[0] = JoinWords(first & 0xFF, second & 0xFF);
      columns[1] = JoinWords(first >> 8, second >> 8);
      return;
    }
#endif
    Lanes<Sample> window[2];
    LoadSamples<kSampleBytes>(read, line, 0, 2 * kBlock<Sample>, window);
    columns[0] = Pick<EvenSamples>(window);
    columns[1] = Pick<OddSamples>(window);
  }

  template <class Reader>
  static RgbLanes<Sample> Block(const Reader& read, Of<Sample>) {
    using V = Lanes<Sample>;
    V columns[2][2];
    for (std::size_t line = 0; line < 2; ++line) Part(read, line, columns[line]);
    return CellColor<RgbLanes<Sample>>(read.in.site, columns[0], columns[1], [](V a, V b) { return MeanUp(a, b); });
  }
#endif
};

/// The pixels of a line, straight into a writer.
template <class Sample_, std::size_t kSampleBytes = sizeof(Sample_)>
struct HalfLine : SingleLine<BayerHalfLayout<Sample_, kSampleBytes>, Sample_> {
  static constexpr bool kMosaic = true;
};

using HalfLineOfWords = HalfLine<std::uint8_t, 2>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_DEFINE_DECODER(std::uint8_t, BayerHalf, BayerHalfLayout<std::uint8_t>)
LM_DEFINE_DECODER(std::uint16_t, BayerHalf, BayerHalfLayout<std::uint16_t>)
LM_DEFINE_DECODER(std::uint8_t, BayerHalfOfWords, BayerHalfLayout<std::uint8_t, 2>)
LM_EXPORT_DIRECT(BayerHalfToRGB24, HalfLine<std::uint8_t>, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerHalfToBGR24, HalfLine<std::uint8_t>, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerHalfToRGB32, HalfLine<std::uint8_t>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerHalfToBGR32, HalfLine<std::uint8_t>, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(BayerWordHalfToRGB24, HalfLineOfWords, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerWordHalfToBGR24, HalfLineOfWords, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerWordHalfToRGB32, HalfLineOfWords, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerWordHalfToBGR32, HalfLineOfWords, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(BayerHalfToRGBWords, HalfLine<std::uint16_t>, ShiftedWords<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerHalfToBGRWords, HalfLine<std::uint16_t>, ShiftedWords<First::kBlue, 3>)
