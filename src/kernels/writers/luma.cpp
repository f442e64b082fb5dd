// Gray of colours: (77 red + 150 green + 29 blue + 128) >> 8, as bytes or in 16-bit little-endian words. The weights
// are those of ITU-R BT.601 in 256ths: 0.299, 0.587 and 0.114.
#include "simd/luma_lanes.h"
#include "simd/wide_stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class Sample>
Sample Luma(const Rgb<Sample>& pixel) {
  return static_cast<Sample>((77U * pixel.r + 150U * pixel.g + 29U * pixel.b + 128U) >> 8);
}

struct LumaBytes {
  static constexpr std::size_t kBytes = 1;

  static void Pixel(Rgb<std::uint8_t> pixel, std::uint8_t* to) { *to = Luma(pixel); }

#if LM_LANES
  template <class To>
  static void Block(const RgbLanes<std::uint8_t>& in, To to) {
    Store(LumaLanes(in), to);
  }
#endif
};

// Words are fitted after the sum, which is exact at the depth of the samples.
template <class Sample>
void StoreLuma(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count, const TargetLine& out,
               std::size_t first) {
  std::uint8_t* to = out.line + first * 2;
  std::size_t i = 0;
#if LM_LANES
  if (tables == nullptr) {
    const FitLanes fit(out.fit);
    for (; i + kBlock<Sample> <= count; i += kBlock<Sample>, to += 2 * kBlock<Sample>) {
      StoreLumaWords(RgbLanes<Sample>{Load(in.red + i), Load(in.green + i), Load(in.blue + i)}, to, fit);
    }
  }
#endif
  for (; i < count; ++i, to += 2) {
    const std::uint16_t word = Fitted(Luma(LookUp(tables, in, i)), out.fit);
    std::memcpy(to, &word, sizeof word);
  }
}

}  // namespace

}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_STORE(StoreLumaWords, StoreLuma)
LM_EXPORT_WRITER(StoreLuma8, LumaBytes)
