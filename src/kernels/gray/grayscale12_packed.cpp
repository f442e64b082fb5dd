// Grayscale of 10 or 12 bits packed: p0 in bits 0-11 and p1 in bits 12-23 of three bytes, lowest first.
#include "kernels/decoder.h"
#include "simd/packed.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Grayscale12PackedLayout {
  static constexpr std::size_t kPixels = 2, kBytes = 3, kLines = 1, kBeyond = 0, kBytesOfEight = 12;
  static constexpr bool kGray = true;

  template <class Sample>
  static void Group(const SourceLines& in, Sample* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = FromWord<Sample>(p[0] | (p[1] & 0x0FU) << 8, in);
    out[1] = FromWord<Sample>(p[1] >> 4 | std::uint32_t{p[2]} << 4, in);
  }

#if LM_LANES
  // Sample l begins in byte 3 l / 2, at bit 0 or 4. A product moves either to bits 4-15.
  struct Bytes {
    static constexpr std::size_t At(std::size_t sample, std::size_t byte) { return sample * 3 / 2 + byte; }
  };
  struct Factors {
    static constexpr unsigned At(std::size_t sample) { return sample % 2 == 0 ? 16 : 1; }
  };

  template <class Groups, class Reader>
  static U16 Words(const Reader& read) {
    return PackedWords<Groups, Bytes>(read, 0) * EightValues<Factors>() >> 4;
  }

  template <class Reader, class Sample>
  static Lanes<Sample> Block(const Reader& read, Of<Sample> samples) {
    return PackedBlock<Grayscale12PackedLayout>(read, samples);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(Grayscale12Packed, Grayscale12PackedLayout)
