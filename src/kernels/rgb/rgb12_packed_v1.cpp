// RGB of 12 bits packed, two pixels in nine bytes: R0, low bits of R0 and G0, G0, B0, low, R1, G1, low, B1.
#include "kernels/decoder.h"
#include "kernels/gray/packed_gev.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB12PackedV1Group {
  static constexpr std::size_t kPixels = 2, kSamples = 9;
  static constexpr std::size_t kAt[][kPixels] = {{0, 5}, {2, 6}, {3, 8}};  // red, green, blue
};

struct RGB12PackedV1Layout : ColorSamples<RGB12PackedV1Group, 1> {
  using ColorSamples::Group;
  static void Group(const SourceLines& in, Rgb<std::uint16_t>* out) {
    const std::uint8_t* const p = in.line[0];
    out[0] = {PackedGEV::First(p, in), PackedGEV::Second(p, in), PackedGEV::First(p + 3, in)};
    out[1] = {PackedGEV::Second(p + 3, in), PackedGEV::First(p + 6, in), PackedGEV::Second(p + 6, in)};
  }

#if LM_LANES
  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t> samples) {
    return ColorSamples::Block(read, samples);
  }

  // The samples of a line are packed as gray ones are.
  template <std::size_t kPart, class Reader>
  static U16 Samples(const Reader& read) {
    return PackedGEV::Words<Groups<12, 3 * kWordGroups, kPart * kWordGroups, 1>>(read);
  }

  template <class Reader>
  static RgbLanes<std::uint16_t> Block(const Reader& read, Of<std::uint16_t>) {
    const U16 window[3] = {Samples<0>(read), Samples<1>(read), Samples<2>(read)};
    return {Deinterleave<0, std::uint16_t>(window), Deinterleave<1, std::uint16_t>(window),
            Deinterleave<2, std::uint16_t>(window)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(RGB12PackedV1, RGB12PackedV1Layout)
