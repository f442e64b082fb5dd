#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "model/frame.h"
#include "simd/each_set.h"

// What methods of demosaicing must do for reasons of their own, whatever their formulas.

namespace LmImagingLib {
namespace {

using Words = std::vector<std::uint16_t>;

/// A mosaic of 12 bits, or the colours of one, three words a pixel.
struct Picture {
  unsigned long width, height;
  Words words;

  const std::uint16_t* At(unsigned long y, unsigned long x) const { return &words[3 * (y * width + x)]; }
};

Picture MakeMosaic(unsigned long width, unsigned long height, const std::function<unsigned(unsigned, unsigned)>& at) {
  Picture mosaic{width, height, {}};
  for (unsigned y = 0; y < height; ++y) {
    for (unsigned x = 0; x < width; ++x) mosaic.words.push_back(static_cast<std::uint16_t>(at(y, x)));
  }
  return mosaic;
}

Picture Demosaic(const Picture& mosaic, unsigned long flags) {
  Picture colors{mosaic.width, mosaic.height, Words(3 * mosaic.words.size())};
  const ConversionResult result = ConvertImage(
      {0x20012, mosaic.words.data(), 2 * mosaic.words.size(), mosaic.width, mosaic.height},
      {0x2000C, colors.words.data(), 2 * colors.words.size(), mosaic.width, mosaic.height}, {nullptr, flags});
  EXPECT_TRUE(result.IsOK()) << result.message;
  return colors;
}

/// The layouts in which columns, rows, or both are exchanged, by their place among GR, GB, RG and BG.
constexpr unsigned long kLayouts[] = {0x10, 0x20, 0x40, 0x80};
unsigned long Exchanged(std::size_t layout, bool columns, bool rows) {
  return kLayouts[layout ^ (columns ? 2 : 0) ^ (rows ? 3 : 0)];
}

class Demosaicing : public testing::TestWithParam<unsigned long> {
 protected:
  Demosaicing() { RegisterExtendedFormats(); }

  Picture Noise(unsigned long width, unsigned long height) {
    return MakeMosaic(width, height, [this](unsigned, unsigned) { return mRandom() % 4096; });
  }

  model::Random mRandom{1};
};

INSTANTIATE_TEST_SUITE_P(Methods, Demosaicing,
                         testing::Values(ConversionFlags::kGradientCorrected, ConversionFlags::kAdaptive));

TEST_P(Demosaicing, FlippedImagesGiveFlippedColors) {
  for (const auto& [width, height] : {std::pair{24UL, 20UL}, {25UL, 20UL}, {24UL, 21UL}, {25UL, 21UL}, {3UL, 2UL}}) {
    const Picture mosaic = Noise(width, height);
    const Picture flipped = MakeMosaic(width, height, [&, w = width, h = height](unsigned y, unsigned x) {
      return mosaic.words[(h - 1 - y) * w + w - 1 - x];
    });
    for (std::size_t layout = 0; layout < 4; ++layout) {
      const Picture colors = Demosaic(mosaic, GetParam() | kLayouts[layout]);
      const Picture back = Demosaic(flipped, GetParam() | Exchanged(layout, width % 2 == 0, height % 2 == 0));
      for (unsigned long i = 0; i < width * height; ++i) {
        const unsigned long y = i / width, x = i % width;
        ASSERT_TRUE(std::equal(colors.At(y, x), colors.At(y, x) + 3, back.At(height - 1 - y, width - 1 - x)))
            << "layout " << layout << ", " << width << " x " << height << ", at " << x << ", " << y;
      }
    }
  }
}

TEST_P(Demosaicing, LayoutsAgreeOnShiftedMosaics) {
  const Picture mosaic = Noise(40, 38);
  for (std::size_t layout = 0; layout < 4; ++layout) {
    const Picture colors = Demosaic(mosaic, GetParam() | kLayouts[layout]);
    for (const unsigned by : {1U, 2U, 3U}) {
      const unsigned right = by & 1, down = by >> 1;
      const Picture part = Demosaic(
          MakeMosaic(39, 37, [&](unsigned y, unsigned x) { return mosaic.words[(y + down) * 40 + x + right]; }),
          GetParam() | Exchanged(layout, right != 0, down != 0));
      for (unsigned y = 8; y < 29; ++y) {
        for (unsigned x = 8; x < 31; ++x) {
          ASSERT_TRUE(std::equal(part.At(y, x), part.At(y, x) + 3, colors.At(y + down, x + right)));
        }
      }
    }
  }
}

TEST_P(Demosaicing, FlatColorsAndLinearGraysComeBack) {
  const Picture flat = Demosaic(
      MakeMosaic(19, 14, [](unsigned y, unsigned x) { return (x + y) % 2 == 0 ? 1000U
                                                             : y % 2 == 0     ? 4000U
                                                                              : 77U; }),
      GetParam() | ConversionFlags::kBayerGR);
  const std::uint16_t expected[] = {4000, 1000, 77};
  for (unsigned i = 0; i < 19 * 14; ++i) ASSERT_TRUE(std::equal(expected, expected + 3, flat.At(0, i)));

  const auto linear = [](unsigned y, unsigned x) { return 40 + 31 * x + 57 * y; };
  const Picture gray = Demosaic(MakeMosaic(30, 28, linear), GetParam() | ConversionFlags::kBayerBG);
  for (unsigned y = 8; y < 20; ++y) {
    for (unsigned x = 8; x < 22; ++x) {
      for (unsigned k = 0; k < 3; ++k) ASSERT_EQ(gray.At(y, x)[k], linear(y, x)) << x << ", " << y;
    }
  }
}

/// Compares a line of half the size in each layout and instruction set. It has whole blocks and a rest, and begins
/// beside a cache line. `sampleOf` drops the bits of a sample that do not count; results are shifted left by `up`.
template <class Result, class Source, class SampleOf>
void ExpectPixelsOfCells(PixelTypeID from, PixelTypeID to, const SampleOf& sampleOf, std::uint32_t up) {
  RegisterExtendedFormats();
  constexpr unsigned long kWidth = 2 * 713, kPixels = kWidth / 2;
  model::Random random(3);
  alignas(64) Source room[2 * kWidth + 2];
  std::generate_n(room, 2 * kWidth + 2, [&] { return static_cast<Source>(random()); });
  const Source* const samples = room + 2;
  const auto at = [&](std::size_t y, std::size_t x) { return sampleOf(samples[y * kWidth + x]); };
  for (std::size_t layout = 0; layout < 4; ++layout) {
    // GR, RG, GB and BG: where red is in a cell. Blue is at the other end of its diagonal.
    const unsigned long flag = kLayouts[layout];
    const std::size_t y = flag == ConversionFlags::kBayerGB || flag == ConversionFlags::kBayerBG;
    const std::size_t x = flag == ConversionFlags::kBayerGR || flag == ConversionFlags::kBayerBG;
    Result expected[3 * kPixels];
    for (std::size_t k = 0; k < kPixels; ++k) {
      expected[3 * k] = static_cast<Result>(at(y, 2 * k + x) << up);
      expected[3 * k + 1] = static_cast<Result>((at(y, 2 * k + 1 - x) + at(1 - y, 2 * k + x) + 1) >> 1 << up);
      expected[3 * k + 2] = static_cast<Result>(at(1 - y, 2 * k + 1 - x) << up);
    }
    ForEachInstructionSet([&] {
      Result pixels[3 * kPixels] = {};
      PixelTypeFactory::FindConverter(from, to)->Convert(
          samples, kWidth, 2, pixels, kPixels, 1, kPixels, 1,
          flag | ConversionFlags::kHalfSize | ConversionFlags::kFullDepth, 0, nullptr, nullptr);
      EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), pixels)) << "layout " << layout;
    });
  }
}

TEST(HalfSize, PixelsAreThoseOfTheirCells) {
  ExpectPixelsOfCells<std::uint8_t, std::uint8_t>(
      0x20010, 0x420002, [](std::uint32_t byte) { return byte; }, 0);
  // Words with stray bits.
  ExpectPixelsOfCells<std::uint8_t, std::uint16_t>(
      0x20012, 0x420002, [](std::uint32_t word) { return word >> 4 & 0xFF; }, 0);
  ExpectPixelsOfCells<std::uint16_t, std::uint16_t>(
      0x20012, 0x20004, [](std::uint32_t word) { return word & 0xFFF; }, 4);
}

// Lines of half the size need no room of their own: they are not longer than the rows that they are made of.
TEST(HalfSize, InPlaceEqualsIntoAnotherBuffer) {
  constexpr unsigned long kWidth = 512, kHeight = 6;
  model::Random random(4);
  alignas(64) std::uint8_t source[kWidth * kHeight], expected[kWidth / 2 * kHeight / 2 * 3];
  for (std::uint8_t& byte : source) byte = static_cast<std::uint8_t>(random());
  const auto convert = [&](std::uint8_t* to) {
    PixelTypeFactory::FindConverter(0x20010, 0x20002)
        ->Convert(source, kWidth, kHeight, to, kWidth / 2, kHeight / 2, kWidth / 2, kHeight / 2,
                  ConversionFlags::kHalfSize | ConversionFlags::kBayerRG, 0, nullptr, nullptr);
  };
  convert(expected);
  convert(source);
  EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), source));
}

// A chain that an application makes keeps the lines that a method reads around those of a band. The last line of an
// interlaced image of odd height is in no field: it is black, whatever the band held before.
TEST(Chains, EqualDirectConversions) {
  RegisterExtendedFormats();
  constexpr unsigned long kWidth = 1500, kHeight = 203;
  struct Case {
    PixelTypeID from, between, to;
    unsigned long flags;
  };
  model::Random random(2);
  std::vector<std::uint8_t> source(kWidth * kHeight * 2);
  for (std::uint8_t& byte : source) byte = static_cast<std::uint8_t>(random());
  for (const Case& c : {Case{0x420012, 0x20012, 0x20002, 0x110},
                        {0x420012, 0x20012, 0x20002, 0x220},
                        {0x420012, 0x20012, 0x20002, 0x440},
                        {0x420012, 0x20012, 0x20004, 0x940},
                        {0x420012, 0x20012, 0x20002, 0x10080},
                        {0x210002, 0x10001, 0x20002, 0}}) {
    const ComplexConverter chain(*PixelTypeFactory::FindConverter(c.from, c.between),
                                 *PixelTypeFactory::FindConverter(c.between, c.to));
    const unsigned long down = c.flags > 0x10000 ? 2 : 1;
    std::vector<std::uint8_t> expected(kWidth / down * (kHeight / down) * 6), actual = expected;
    const auto convert = [&](const PixelConverter& converter, std::vector<std::uint8_t>& to) {
      converter.Convert(source.data(), kWidth, kHeight, to.data(), kWidth / down, kHeight / down, kWidth / down,
                        kHeight / down, c.flags, 0, nullptr, nullptr);
    };
    convert(*PixelTypeFactory::FindConverter(c.from, c.to), expected);
    convert(chain, actual);
    EXPECT_EQ(model::FirstDifference(actual.data(), expected), expected.size())
        << std::hex << c.from << ", " << c.flags;
  }
}

}  // namespace
}  // namespace LmImagingLib
