// Grayscale of 10 or 12 bits packed for GigE Vision: p0 top 8 bits, low bits of both, p1 top 8 bits.
#include "kernels/decoder.h"
#include "kernels/gray/packed_gev.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct GrayscalePackedGEVGroup {
  static constexpr std::size_t kPixels = 2, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0, 2}};
};

struct GrayscalePackedGEVLayout : GraySamples<GrayscalePackedGEVGroup, 1> {
  static constexpr std::size_t kBytesOfEight = 12;

  using GraySamples::Group;
  static void Group(const SourceLines& in, std::uint16_t* out) {
    out[0] = PackedGEV::First(in.line[0], in);
    out[1] = PackedGEV::Second(in.line[0], in);
  }

#if LM_LANES
  template <class Groups, class Reader>
  static U16 Words(const Reader& read) {
    return PackedGEV::Words<Groups>(read);
  }

  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t> samples) {
    return GraySamples::Block(read, samples);
  }
  template <class Reader>
  static U16 Block(const Reader& read, Of<std::uint16_t> samples) {
    return PackedBlock<GrayscalePackedGEVLayout>(read, samples);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(GrayscalePackedGEV, GrayscalePackedGEVLayout)
