// Bayer mosaic, bilinear method: each pixel of a line from its own sample and the eight around it. The lines are the
// one above, the pixels' own, and the one below, all beginning one sample left of the first pixel.
#include "converters/bayer/bayer_samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <std::size_t kSampleBytes>
struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 2 * kSampleBytes, kLines = 3;

  // Reads four columns for two pixels: the group overlaps its neighbours by a sample on either side.
  static void Color(const SourceLines& in, Rgb* out) {
    out[0] = Pixel(in, in.cell, 0);
    out[1] = Pixel(in, in.cell ^ 2U, 1);
  }

  static Rgb Pixel(const SourceLines& in, std::uint32_t cell, std::size_t left) {
    const auto sample = [&in, left](std::size_t line, std::size_t column) {
      return SampleAt<kSampleBytes>(in.line[line], left + column, in.shift);
    };
    const unsigned own = sample(1, 1);
    const unsigned horizontal = sample(1, 0) + sample(1, 2);
    const unsigned vertical = sample(0, 1) + sample(2, 1);
    const unsigned diagonal = sample(0, 0) + sample(0, 2) + sample(2, 0) + sample(2, 2);
    const unsigned cross = (horizontal + vertical) >> 2;
    // At a green site all four diagonal neighbours are green too; the mean of the five smooths the two greens' offset.
    const unsigned green = (own + diagonal) / 5;
    switch (cell) {
      case 0:
        return MakeRgb(horizontal >> 1, green, vertical >> 1);  // green between reds
      case 1:
        return MakeRgb(vertical >> 1, green, horizontal >> 1);  // green between blues
      case 2:
        return MakeRgb(own, cross, diagonal >> 2);  // red
      default:
        return MakeRgb(diagonal >> 2, cross, own);  // blue
    }
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BayerBilinear8, DecodeColor<Layout<1>>)
LM_EXPORT_DECODER(BayerBilinear16, DecodeColor<Layout<2>>)
