// Bayer mosaic, half size: each 2 x 2 cell of samples makes a pixel. The mean of the greens is rounded.
#include "kernels/writers/interleaved_words.h"
#include "simd/cell_triples.h"
#include "simd/direct.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Of samples of `kSampleBytes` bytes.
template <class Sample, std::size_t kSampleBytes = sizeof(Sample)>
struct BayerHalfLayout {
  static constexpr std::size_t kPixels = 1, kBytes = 2 * kSampleBytes, kLines = 2, kColumns = 2, kBeyond = 0;
  static constexpr bool kGray = false;

  template <class Color, class Value, class Mean>
  static Color CellColor(Site site, const Value (&top)[2], const Value (&bottom)[2], const Mean& mean) {
    const Value green = IsGreen(site) ? mean(top[0], bottom[1]) : mean(top[1], bottom[0]);
    const Value upper = IsGreen(site) ? top[1] : top[0], lower = IsGreen(site) ? bottom[0] : bottom[1];
    return IsInRedRow(site) ? Color{upper, green, lower} : Color{lower, green, upper};
  }

  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    Sample samples[2][2];
    for (std::size_t k = 0; k < 4; ++k) samples[k / 2][k % 2] = SampleAt<kSampleBytes, Sample>(in, k / 2, k % 2);
    *out = CellColor<Rgb<Sample>>(in.site, samples[0], samples[1],
                                  [](Sample a, Sample b) { return static_cast<Sample>((unsigned{a} + b + 1) >> 1); });
  }

#if LM_LANES
  // The even and the odd columns of two registers.
  struct EvenSamples {
    static constexpr std::size_t At(std::size_t i) { return 2 * i; }
  };
  struct OddSamples {
    static constexpr std::size_t At(std::size_t i) { return 2 * i + 1; }
  };

  template <class Reader>
  static void Part(const Reader& read, std::size_t line, Lanes<Sample> (&columns)[2]) {
#if LM_LANES == 32
    // Words that become bytes are loaded as two packs want them, each within 16 bytes.
    if constexpr (kSampleBytes > sizeof(Sample)) {
      const auto factor = static_cast<std::uint16_t>(0x100U >> read.in.shift);
      const auto bytesAt = [&](std::size_t offset) {
        return U16(JoinWords(U16(read.Units(line, offset, 2 * kLanes)) * factor >> 8,
                             U16(read.Units(line, offset + 16, 2 * kLanes)) * factor >> 8));
      };
      const U16 first = bytesAt(0), second = bytesAt(kLanes);
      columns[0] = JoinWords(first & 0xFF, second & 0xFF);
      columns[1] = JoinWords(first >> 8, second >> 8);
      return;
    }
#endif
    Lanes<Sample> window[2];
    LoadSamples<kSampleBytes>(read, line, 0, 2 * kBlock<Sample>, window);
    columns[0] = Pick<EvenSamples>(window);
    columns[1] = Pick<OddSamples>(window);
  }

  template <class Reader>
  static RgbLanes<Sample> Block(const Reader& read, Of<Sample>) {
    using V = Lanes<Sample>;
    V columns[2][2];
    for (std::size_t line = 0; line < 2; ++line) Part(read, line, columns[line]);
    return CellColor<RgbLanes<Sample>>(read.in.site, columns[0], columns[1], [](V a, V b) { return MeanUp(a, b); });
  }
#endif
};

#if LM_LANES
/// The cells of a block, for a writer.
template <class Layout, class Sample, std::size_t kSampleBytes, class Reader>
struct HalfCells {
  RgbLanes<Sample> Colors() const { return Layout::Block(read, Of<Sample>{}); }

#if LM_HAS_CELL_TRIPLES
  template <class To>
  static constexpr bool kStores = kStoresTriples<Sample, kSampleBytes, To>;

  template <bool kRedFirst, class Change, class To>
  void StoreTriples(const Change& change, To to) const {
    using Triples = CellTriples<Sample, kSampleBytes>;
    if (IsGreen(read.in.site)) {
      Triples::template StoreBlock<!kRedFirst>(CellRows<Reader>{read, 1, 0}, change, to);
    } else {
      Triples::template StoreBlock<kRedFirst>(CellRows<Reader>{read, 0, 1}, change, to);
    }
  }
#endif

  const Reader& read;
};
#endif

/// The pixels of a line, straight into a writer.
template <class Sample_, std::size_t kSampleBytes = sizeof(Sample_)>
struct HalfLine : SingleLine<BayerHalfLayout<Sample_, kSampleBytes>, Sample_> {
  static constexpr bool kMosaic = true, kIsApart = true;

#if LM_LANES
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    store(0, HalfCells<HalfLine, Sample_, kSampleBytes, Reader>{read});
  }
#endif
};

/// Hands channels to a writer: of four samples, or where no better way is known.
template <class Writer>
struct FromCells : Writer {
  using Writer::Writer;

#if LM_LANES
  template <class Cells, class To>
  void Block(const Cells& cells, To to) const {
    Writer::Block(cells.Colors(), to);
  }
#endif
};

#if LM_HAS_CELL_TRIPLES
struct HalfUnchanged {
  U8 operator()(U8 v) const { return v; }
};

template <First kFirst>
struct HalfBytes : Interleaved<kFirst, 3> {
  template <class Cells, class To>
  static void Block(const Cells& cells, To to) {
    if constexpr (Cells::template kStores<To>) {
      cells.template StoreTriples<kFirst == First::kRed>(HalfUnchanged{}, to);
    } else {
      Interleaved<kFirst, 3>::Block(cells.Colors(), to);
    }
  }
};

/// Shifts words up. @param kClears  whether that leaves nothing of what is above a sample
template <class Words, bool kClears_>
struct HalfShift {
  static constexpr bool kClears = kClears_;

  U16 operator()(U16 words) const { return writer.Shifted(words); }

  const Words& writer;
};

template <First kFirst, bool kClears>
struct HalfWords : ShiftedWords<kFirst, 3> {
  using ShiftedWords<kFirst, 3>::ShiftedWords;

  template <class Cells, class To>
  void Block(const Cells& cells, To to) const {
    cells.template StoreTriples<kFirst == First::kRed>(HalfShift<HalfWords, kClears>{*this}, to);
  }
};
#else
template <First kFirst>
using HalfBytes = FromCells<Interleaved<kFirst, 3>>;
#endif

template <First kFirst>
using HalfFours = FromCells<Interleaved<kFirst, 4>>;
using HalfLineOfWords = HalfLine<std::uint8_t, 2>;

// Without a branch in the loop of words that need no shift to the right, which is most of them. Memory is slower than
// registers of 64 bytes shift.
template <First kFirst>
void ConvertWords(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                  std::size_t first) {
  using Line = HalfLine<std::uint16_t>;
#if LM_LANES == 32
  if (in.shift == 0 && (in.mask << targets[0].fit.up & 0x8000U) != 0) {
    return Direct<Line, HalfWords<kFirst, true>>::Convert(in, from, count, targets, first);
  }
#endif
#if LM_HAS_CELL_TRIPLES
  if (LM_LANES == 64 || in.shift == 0) {
    return Direct<Line, HalfWords<kFirst, false>>::Convert(in, from, count, targets, first);
  }
#endif
  Direct<Line, FromCells<ShiftedWords<kFirst, 3>>>::Convert(in, from, count, targets, first);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_DEFINE_DECODER(std::uint8_t, BayerHalf, BayerHalfLayout<std::uint8_t>)
LM_DEFINE_DECODER(std::uint16_t, BayerHalf, BayerHalfLayout<std::uint16_t>)
LM_DEFINE_DECODER(std::uint8_t, BayerHalfOfWords, BayerHalfLayout<std::uint8_t, 2>)
LM_EXPORT_DIRECT(BayerHalfToRGB24, HalfLine<std::uint8_t>, HalfBytes<First::kRed>)
LM_EXPORT_DIRECT(BayerHalfToBGR24, HalfLine<std::uint8_t>, HalfBytes<First::kBlue>)
LM_EXPORT_DIRECT(BayerHalfToRGB32, HalfLine<std::uint8_t>, HalfFours<First::kRed>)
LM_EXPORT_DIRECT(BayerHalfToBGR32, HalfLine<std::uint8_t>, HalfFours<First::kBlue>)
LM_EXPORT_DIRECT(BayerWordHalfToRGB24, HalfLineOfWords, HalfBytes<First::kRed>)
LM_EXPORT_DIRECT(BayerWordHalfToBGR24, HalfLineOfWords, HalfBytes<First::kBlue>)
LM_EXPORT_DIRECT(BayerWordHalfToRGB32, HalfLineOfWords, HalfFours<First::kRed>)
LM_EXPORT_DIRECT(BayerWordHalfToBGR32, HalfLineOfWords, HalfFours<First::kBlue>)
LM_DEFINE_DIRECT(BayerHalfToRGBWords, ConvertWords<First::kRed>)
LM_DEFINE_DIRECT(BayerHalfToBGRWords, ConvertWords<First::kBlue>)
