// Bayer mosaic, block method: each 2 x 2 cell of samples makes four equal pixels, two on each of two lines.
#include "converters/bayer/bayer_samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <std::size_t kSampleBytes>
struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 2 * kSampleBytes, kLines = 2;

  static void Color(const SourceLines& in, Rgb* out) {
    const unsigned a = SampleAt<kSampleBytes>(in.line[0], 0, in.shift);
    const unsigned b = SampleAt<kSampleBytes>(in.line[0], 1, in.shift);
    const unsigned c = SampleAt<kSampleBytes>(in.line[1], 0, in.shift);
    const unsigned d = SampleAt<kSampleBytes>(in.line[1], 1, in.shift);
    out[0] = Cell(in.cell, a, b, c, d);
    out[1] = out[0];
  }

  // The cell is a b / c d; the code says which of them is red. Means are truncated.
  static Rgb Cell(std::uint32_t cell, unsigned a, unsigned b, unsigned c, unsigned d) {
    switch (cell) {
      case 0:
        return MakeRgb(b, (a + d) >> 1, c);  // G R / B G
      case 1:
        return MakeRgb(c, (a + d) >> 1, b);  // G B / R G
      case 2:
        return MakeRgb(a, (b + c) >> 1, d);  // R G / G B
      default:
        return MakeRgb(d, (b + c) >> 1, a);  // B G / G R
    }
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BayerBlock8, DecodeColor<Layout<1>>)
LM_EXPORT_DECODER(BayerBlock16, DecodeColor<Layout<2>>)
