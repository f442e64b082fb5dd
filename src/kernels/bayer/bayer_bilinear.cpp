// Bayer mosaic, bilinear method: each pixel of a line from its own sample and the eight around it. The rows are the one
// above, the pixels' own, and the one below, all beginning one sample left of the first pixel.
#include "kernels/bayer/bilinear_bytes.h"
#include "kernels/bayer/bilinear_wide.h"
#include "kernels/bayer/bilinear_words.h"
#include "kernels/writers/interleaved_words.h"
#include "kernels/writers/luma.h"
#include "simd/direct.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class Sample>
struct BilinearLayout {
  // A pixel has three columns: it overlaps its neighbours by a sample on either side.
  static constexpr std::size_t kPixels = 1, kBytes = sizeof(Sample), kLines = 3, kBeyond = 2 * sizeof(Sample);
  static constexpr bool kGray = false;

  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    const auto sample = [&in](std::size_t line, std::size_t column) -> unsigned {
      return SampleAt<sizeof(Sample), Sample>(in, line, column);
    };
    const unsigned own = sample(1, 1);
    const unsigned horizontal = sample(1, 0) + sample(1, 2);
    const unsigned vertical = sample(0, 1) + sample(2, 1);
    const unsigned diagonal = sample(0, 0) + sample(0, 2) + sample(2, 0) + sample(2, 2);
    const unsigned cross = (horizontal + vertical) >> 2;
    // At a green site all four diagonal neighbours are green too; the mean of the five evens out the two greens.
    const unsigned green = (own + diagonal) / 5;
    const auto color = [](unsigned r, unsigned g, unsigned b) {
      return Rgb<Sample>{static_cast<Sample>(r), static_cast<Sample>(g), static_cast<Sample>(b)};
    };
    switch (in.site) {
      case Site::kGreenInRedRow:
        *out = color(horizontal >> 1, green, vertical >> 1);
        break;
      case Site::kGreenInBlueRow:
        *out = color(vertical >> 1, green, horizontal >> 1);
        break;
      case Site::kRed:
        *out = color(own, cross, diagonal >> 2);
        break;
      default:
        *out = color(diagonal >> 2, cross, own);
    }
  }
};

struct BilinearBytes : BilinearLayout<std::uint8_t> {
#if LM_LANES
  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t>) {
    const ByteSamples above = LoadByteRow(read, 0), own = LoadByteRow(read, 1), below = LoadByteRow(read, 2);
    return Merged(PixelColumns<BilinearPixels>{{own, above + below, read.in.site}});
  }
#endif
};

struct BilinearWordsLayout : BilinearLayout<std::uint16_t> {
#if LM_LANES
  // Inline, as compilers would rather call what several loops use, and hand vectors over in memory.
  template <class Reader>
  [[gnu::always_inline]] static RgbLanes<std::uint16_t> Block(const Reader& read, Of<std::uint16_t>) {
    const Site site = read.in.site;
    if (read.in.mask < 1U << 13) {
      return BilinearWords(LoadWordsAround(read, 0), LoadWordsAround(read, 1), LoadWordsAround(read, 2), site);
    }
    return InTurn(BilinearWide(LoadWideRow(read, 0), LoadWideRow(read, 1), LoadWideRow(read, 2), site));
  }
#endif
};

// Two lines share two of their rows.
template <class Line_>
struct PairOfLines : Line_ {
  using Line = Line_;
  static constexpr std::size_t kLines = 4, kTargets = 2, kFresh = 2;
  static constexpr bool kMosaic = true, kIsApart = false;
  static constexpr std::size_t kNextLine = 1;
};

struct BilinearPair : PairOfLines<BilinearBytes> {
  using Sample = std::uint8_t;

#if LM_LANES
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    // The last row is loaded late: all at once would not fit 16 registers.
    const Site site = read.in.site;
    const ByteSamples above = LoadByteRow(read, 0), first = LoadByteRow(read, 1), second = LoadByteRow(read, 2);
    store(0, PixelColumns<BilinearPixels>{{first, above + second, site}});
    store(1, PixelColumns<BilinearPixels>{{second, first + LoadByteRow(read, 3), Below(site)}});
  }
#endif
};

/// @tparam kNarrow  whether samples have 13 bits or fewer
template <bool kNarrow>
struct BilinearWordPair : PairOfLines<BilinearWordsLayout> {
  using Sample = std::uint16_t;

#if LM_LANES
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    const Site site = read.in.site;
    if constexpr (kNarrow) {
      const WordsAround above = LoadWordsAround(read, 0), first = LoadWordsAround(read, 1),
                        second = LoadWordsAround(read, 2);
      store(0, BilinearWords(above, first, second, site));
      store(1, BilinearWords(first, second, LoadWordsAround(read, 3), Below(site)));
    } else {
      const WideRow above = LoadWideRow(read, 0), first = LoadWideRow(read, 1), second = LoadWideRow(read, 2);
      store(0, BilinearWide(above, first, second, site));
      store(1, BilinearWide(first, second, LoadWideRow(read, 3), Below(site)));
    }
  }
#endif
};

/// Converts words of any depth, by one writer of words of up to 13 bits and by another.
template <class NarrowWriter, class Writer = NarrowWriter>
void ConvertWords(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                  std::size_t first) {
  (in.mask < 1U << 13 ? Direct<BilinearWordPair<true>, NarrowWriter>::Convert
                      : Direct<BilinearWordPair<false>, Writer>::Convert)(in, from, count, targets, first);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_DEFINE_DECODER(std::uint8_t, BayerBilinear, BilinearBytes)
LM_DEFINE_DECODER(std::uint16_t, BayerBilinear, BilinearWordsLayout)
LM_EXPORT_DIRECT(BayerBilinearToRGB24, BilinearPair, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(BayerBilinearToBGR24, BilinearPair, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(BayerBilinearToRGB32, BilinearPair, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BayerBilinearToBGR32, BilinearPair, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(BayerBilinearToLuma8, BilinearPair, LumaToBytes)
LM_EXPORT_DIRECT(BayerBilinearToLuma, BilinearPair, LumaToWords<std::uint8_t, false>)
LM_DEFINE_DIRECT(BayerBilinearToLumaWords,
                 ConvertWords<LumaToWords<std::uint16_t, true>, LumaToWords<std::uint16_t, false>>)
LM_DEFINE_DIRECT(BayerBilinearToRGBWords, ConvertWords<ShiftedWords<First::kRed, 3>>)
LM_DEFINE_DIRECT(BayerBilinearToBGRWords, ConvertWords<ShiftedWords<First::kBlue, 3>>)
LM_DEFINE_DIRECT(BayerBilinearToRGB64, ConvertWords<ShiftedWords<First::kRed, 4>>)
LM_DEFINE_DIRECT(BayerBilinearToBGR64, ConvertWords<ShiftedWords<First::kBlue, 4>>)
