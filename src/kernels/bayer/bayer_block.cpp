// Bayer mosaic, block method: each 2 x 2 cell of samples makes four equal pixels, two on each of two lines.
#include "kernels/writers/interleaved.h"
#include "simd/direct.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <std::size_t kSampleBytes>
struct BayerBlockLayout {
  static constexpr std::size_t kPixels = 2, kBytes = 2 * kSampleBytes, kLines = 2, kBeyond = 0;
  static constexpr bool kGray = false;

  static std::uint8_t Mean(unsigned a, unsigned b) { return static_cast<std::uint8_t>((a + b) >> 1); }

  static void Group(const SourceLines& in, Rgb* out) {
    const std::uint8_t a = SampleAt<kSampleBytes>(in.line[0], 0, in.shift);
    const std::uint8_t b = SampleAt<kSampleBytes>(in.line[0], 1, in.shift);
    const std::uint8_t c = SampleAt<kSampleBytes>(in.line[1], 0, in.shift);
    const std::uint8_t d = SampleAt<kSampleBytes>(in.line[1], 1, in.shift);
    out[0] = out[1] = Cell<Rgb>(in.cell, a, b, c, d);
  }

  // The cell is a b / c d; the code says which of them is red. The mean of the greens is truncated.
  template <class Color, class Value>
  static Color Cell(std::uint32_t cell, Value a, Value b, Value c, Value d) {
    switch (cell) {
      case 0:
        return {b, Mean(a, d), c};  // G R / B G
      case 1:
        return {c, Mean(a, d), b};  // G B / R G
      case 2:
        return {a, Mean(b, c), d};  // R G / G B
      default:
        return {d, Mean(b, c), a};  // B G / G R
    }
  }

#if LM_LANES
  static U8 Mean(U8 a, U8 b) { return MeanDown(a, b); }

  // Both pixels of a pair from the even, or from the odd sample.
  static U8 Even(U8 samples) {
    const U16 low = U16(samples) & 0xFF;
    return U8(low | low << 8);
  }
  static U8 Odd(U8 samples) {
    const U16 high = U16(samples) >> 8;
    return U8(high | high << 8);
  }

  template <class Reader>
  static RgbLanes Block(const Reader& read) {
    U8 line[2][1];
    for (std::size_t k = 0; k < 2; ++k) LoadSamples<kSampleBytes>(read, k, 0, kLanes, line[k]);
    return Cell<RgbLanes>(read.in.cell, Even(line[0][0]), Odd(line[0][0]), Even(line[1][0]), Odd(line[1][0]));
  }
#endif
};

// Both lines that a cell makes are the same.
template <std::size_t kSampleBytes>
struct BlockPair : BayerBlockLayout<kSampleBytes> {
  using Line = BayerBlockLayout<kSampleBytes>;
  static constexpr std::size_t kTargets = 2, kFresh = 2;
  static constexpr bool kMosaic = true;
  static constexpr std::size_t kNextLine = 0;
  static constexpr std::uint32_t kNextCell = 0;

#if LM_LANES
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    const RgbLanes pixels = Line::Block(read);
    store(0, pixels);
    store(1, pixels);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BayerBlock8, BayerBlockLayout<1>)
LM_EXPORT_DECODER(BayerBlock16, BayerBlockLayout<2>)
LM_EXPORT_DIRECT(BayerBlock8ToRGB24, BlockPair<1>, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerBlock8ToBGR24, BlockPair<1>, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerBlock8ToRGB32, BlockPair<1>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerBlock8ToBGR32, BlockPair<1>, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(BayerBlock16ToRGB24, BlockPair<2>, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerBlock16ToBGR24, BlockPair<2>, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerBlock16ToRGB32, BlockPair<2>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerBlock16ToBGR32, BlockPair<2>, Interleaved<First::kBlue, 4>)
