// Bayer mosaic, block method: each 2 x 2 cell of samples makes four equal pixels, two on each of two lines.
#include "kernels/writers/interleaved_words.h"
#include "kernels/writers/luma.h"
#include "simd/direct.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

// The cell is a b / c d; its first site says which of them is red. The mean of the greens is truncated.
template <class Color, class Value>
Color CellColor(Site site, Value a, Value b, Value c, Value d, Value (*mean)(Value, Value)) {
  switch (site) {
    case Site::kGreenInRedRow:
      return {b, mean(a, d), c};
    case Site::kGreenInBlueRow:
      return {c, mean(a, d), b};
    case Site::kRed:
      return {a, mean(b, c), d};
    default:
      return {d, mean(b, c), a};
  }
}

/// Of samples of `kSampleBytes` bytes.
template <class Sample, std::size_t kSampleBytes = sizeof(Sample)>
struct BayerBlockLayout {
  static constexpr std::size_t kPixels = 2, kBytes = 2 * kSampleBytes, kLines = 2, kBeyond = 0;
  static constexpr bool kGray = false;

  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    const auto sample = [&in](std::size_t line, std::size_t column) {
      return SampleAt<kSampleBytes, Sample>(in, line, column);
    };
    out[0] = out[1] =
        CellColor<Rgb<Sample>, Sample>(in.site, sample(0, 0), sample(0, 1), sample(1, 0), sample(1, 1),
                                       [](Sample a, Sample b) { return static_cast<Sample>((unsigned{a} + b) >> 1); });
  }

#if LM_LANES
  // Both pixels of a pair from the even, or from the odd sample.
  static Lanes<Sample> Even(Lanes<Sample> samples) {
    using Pairs = typename PairsOf<Sample>::Type;
    constexpr int kBits = 8 * sizeof(Sample);
    const Pairs low = Pairs(samples) << kBits;
    return Lanes<Sample>(low | low >> kBits);
  }
  static Lanes<Sample> Odd(Lanes<Sample> samples) {
    using Pairs = typename PairsOf<Sample>::Type;
    constexpr int kBits = 8 * sizeof(Sample);
    const Pairs high = Pairs(samples) >> kBits;
    return Lanes<Sample>(high | high << kBits);
  }

  template <class Reader>
  static RgbLanes<Sample> Block(const Reader& read, Of<Sample>) {
    using V = Lanes<Sample>;
    V line[2][1];
    for (std::size_t k = 0; k < 2; ++k) LoadSamples<kSampleBytes>(read, k, 0, kBlock<Sample>, line[k]);
    return CellColor<RgbLanes<Sample>, V>(read.in.site, Even(line[0][0]), Odd(line[0][0]), Even(line[1][0]),
                                          Odd(line[1][0]), [](V a, V b) { return MeanDown(a, b); });
  }
#endif
};

// Both lines that a cell makes are the same.
template <class Sample_, std::size_t kSampleBytes = sizeof(Sample_)>
struct BlockPair : BayerBlockLayout<Sample_, kSampleBytes> {
  using Sample = Sample_;
  using Line = BayerBlockLayout<Sample, kSampleBytes>;
  static constexpr std::size_t kTargets = 2, kFresh = 2;
  static constexpr bool kMosaic = true, kIsApart = false;
  static constexpr std::size_t kNextLine = 0;

#if LM_LANES
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    const RgbLanes<Sample> pixels = Line::Block(read, Of<Sample>{});
    store(0, pixels);
    store(1, pixels);
  }
#endif
};

using WordBlockPair = BlockPair<std::uint8_t, 2>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_DEFINE_DECODER(std::uint8_t, BayerBlock, BayerBlockLayout<std::uint8_t>)
LM_DEFINE_DECODER(std::uint16_t, BayerBlock, BayerBlockLayout<std::uint16_t>)
LM_DEFINE_DECODER(std::uint8_t, BayerBlockOfWords, BayerBlockLayout<std::uint8_t, 2>)
LM_EXPORT_DIRECT(BayerBlockToRGB24, BlockPair<std::uint8_t>, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerBlockToBGR24, BlockPair<std::uint8_t>, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerBlockToRGB32, BlockPair<std::uint8_t>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerBlockToBGR32, BlockPair<std::uint8_t>, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(BayerBlockToLuma8, BlockPair<std::uint8_t>, LumaToBytes)
LM_EXPORT_DIRECT(BayerBlockToLuma, BlockPair<std::uint8_t>, LumaToWords<std::uint8_t, false>)
LM_EXPORT_DIRECT(BayerBlockToLumaWords, BlockPair<std::uint16_t>, LumaToWords<std::uint16_t, false>)
LM_EXPORT_DIRECT(BayerBlockToRGBWords, BlockPair<std::uint16_t>, ShiftedWords<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerBlockToBGRWords, BlockPair<std::uint16_t>, ShiftedWords<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerBlockToRGB64, BlockPair<std::uint16_t>, ShiftedWords<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerBlockToBGR64, BlockPair<std::uint16_t>, ShiftedWords<First::kBlue, 4>)
LM_EXPORT_DIRECT(BayerWordBlockToRGB24, WordBlockPair, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerWordBlockToBGR24, WordBlockPair, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerWordBlockToRGB32, WordBlockPair, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerWordBlockToBGR32, WordBlockPair, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(BayerWordBlockToLuma8, WordBlockPair, LumaToBytes)
LM_EXPORT_DIRECT(BayerWordBlockToLuma, WordBlockPair, LumaToWords<std::uint8_t, false>)
