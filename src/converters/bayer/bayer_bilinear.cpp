// Bayer mosaic, bilinear method: each pixel of a line from its own sample and the eight around it. The lines are the
// one above, the pixels' own, and the one below, all beginning one sample left of the first pixel.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <std::size_t kSampleBytes>
struct Layout {
  // A group has four columns: it overlaps its neighbours by a sample on either side.
  static constexpr std::size_t kPixels = 2, kBytes = 2 * kSampleBytes, kLines = 3, kBeyond = 2 * kSampleBytes;
  static constexpr bool kGray = false;

  static void Group(const SourceLines& in, Rgb* out) {
    out[0] = Pixel(in, in.cell, 0);
    out[1] = Pixel(in, in.cell ^ 2U, 1);
  }

  static Rgb Pixel(const SourceLines& in, std::uint32_t cell, std::size_t left) {
    const auto sample = [&in, left](std::size_t line, std::size_t column) -> unsigned {
      return SampleAt<kSampleBytes>(in.line[line], left + column, in.shift);
    };
    const unsigned own = sample(1, 1);
    const unsigned horizontal = sample(1, 0) + sample(1, 2);
    const unsigned vertical = sample(0, 1) + sample(2, 1);
    const unsigned diagonal = sample(0, 0) + sample(0, 2) + sample(2, 0) + sample(2, 2);
    const unsigned cross = (horizontal + vertical) >> 2;
    // At a green site all four diagonal neighbours are green too; the mean of the five evens out the two greens.
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

  static Rgb MakeRgb(unsigned r, unsigned g, unsigned b) {
    return {static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g), static_cast<std::uint8_t>(b)};
  }

#if LM_LANES
  static U8 Samples(const SourceLines& in, std::size_t line, std::size_t column) {
    U8 window[1];
    LoadSamples<kSampleBytes>(in.line[line] + column * kSampleBytes, in.shift, kLanes, window);
    return window[0];
  }

  // Sites of green and of another colour take turns; the samples of one parity fill the 16-bit lanes.
  static U16 OfParity(U8 samples, bool odd) { return odd ? U16(samples) >> 8 : U16(samples) & 0xFF; }

  // The channel of the line's other colour, and that of the colour of the lines around it.
  struct Site {
    U8 line, green, other;
  };

  static Site Interpolate(const SourceLines& in, bool greenIsOdd) {
    const U8 above[3] = {Samples(in, 0, 0), Samples(in, 0, 1), Samples(in, 0, 2)};
    const U8 own[3] = {Samples(in, 1, 0), Samples(in, 1, 1), Samples(in, 1, 2)};
    const U8 below[3] = {Samples(in, 2, 0), Samples(in, 2, 1), Samples(in, 2, 2)};
    const U8 corners[4] = {above[0], above[2], below[0], below[2]};

    U16 sum = OfParity(own[1], greenIsOdd);
    for (const U8& corner : corners) sum += OfParity(corner, greenIsOdd);
    const U16 fifth = MultiplyHigh(sum, 13108);  // sum / 5, as the sum is at most 1275
    const U8 mean5 = U8(greenIsOdd ? fifth << 8 : fifth);

    const std::uint16_t parity = greenIsOdd ? 0xFF00 : 0x00FF;
    const U8 green = U8(U16{} + parity);
    const auto select = [green](U8 atGreen, U8 elsewhere) { return (atGreen & green) | (elsewhere & ~green); };
    return {select(MeanDown(own[0], own[2]), own[1]),
            (mean5 & green) | (MeanDown(own[0], own[2], above[1], below[1]) & ~green),
            select(MeanDown(above[1], below[1]), MeanDown(corners[0], corners[1], corners[2], corners[3]))};
  }

  static RgbLanes Block(const SourceLines& in) {
    const bool greenIsOdd = in.cell >= 2;
    const Site site = greenIsOdd ? Interpolate(in, true) : Interpolate(in, false);
    // Cells 0 and 2 lie on a line of greens and reds, 1 and 3 on one of greens and blues.
    return in.cell % 2 == 0 ? RgbLanes{site.line, site.green, site.other} : RgbLanes{site.other, site.green, site.line};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BayerBilinear8, Layout<1>)
LM_EXPORT_DECODER(BayerBilinear16, Layout<2>)
