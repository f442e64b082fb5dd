// Planar RGB of 16-bit little-endian words: a plane of red, one of green, one of blue.
#include "kernels/decoder.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGBPlanar16Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 2, kLines = 3, kBeyond = 0;
  static constexpr bool kGray = false;

  template <class Sample>
  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    out[0] = {SampleAt<2, Sample>(in, 0, 0), SampleAt<2, Sample>(in, 1, 0), SampleAt<2, Sample>(in, 2, 0)};
  }

#if LM_LANES
  template <class Reader, class Sample>
  static RgbLanes<Sample> Block(const Reader& read, Of<Sample>) {
    Lanes<Sample> plane[3][1];
    for (std::size_t k = 0; k < 3; ++k) LoadSamples<2>(read, k, 0, kBlock<Sample>, plane[k]);
    return {plane[0][0], plane[1][0], plane[2][0]};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(RGBPlanar16, RGBPlanar16Layout)
