#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "LmImagingLib/Development.h"
#include "LmImagingLib/Extended.h"
#include "LmImagingLib/ImageViews.h"
#include "model/development.h"
#include "simd/each_set.h"

namespace LmImagingLib {
namespace {

namespace Flags = ConversionFlags;
using Bytes = std::vector<std::uint8_t>;
using model::PlainDevelopment;
using model::WithoutDefects;
using model::Words;

struct Case {
  const char* name;
  PixelTypeID from, to;
  unsigned depth, bits;  // of the source's samples, and of the results
  DevelopmentSettings settings;
  unsigned long layout;  // of a mosaic, else 0
};

constexpr ColorMatrix kMatrix{1.7, -0.5, -0.2, -0.25, 1.6, -0.35, 0.05, -0.55, 1.5};

DevelopmentSettings Settings(unsigned long method, bool defects, const ColorMatrix& matrix, double black,
                             ToneCurve tone = {ToneCurve::kSRGB}) {
  DevelopmentSettings settings;
  settings.correctsDefects = defects;
  settings.black = {black, black * 1.25, black / 2};
  settings.gains = {1.9, 1.0, 1.6};
  settings.method = method;
  settings.matrix = matrix;
  settings.tone = tone;
  return settings;
}

struct Develops : testing::Test {
  Develops() { RegisterExtendedFormats(); }
};

// Samples as bytes or words, with some defects.
Words Noise(std::size_t count, unsigned depth) {
  std::mt19937 random(3);
  Words samples(count);
  for (std::uint16_t& sample : samples) {
    const unsigned range = (1U << depth) - 1;
    sample =
        static_cast<std::uint16_t>(random() % 50 == 0 ? random() % (range + 1) : range / 4 + random() % (range / 4));
  }
  return samples;
}

Bytes Stored(const Words& samples, unsigned depth) {
  Bytes bytes;
  for (const std::uint16_t sample : samples) {
    bytes.push_back(static_cast<std::uint8_t>(sample));
    if (depth > 8) bytes.push_back(static_cast<std::uint8_t>(sample >> 8));
  }
  return bytes;
}

// Demosaics what was looked up by a conversion that the tests of demosaicing compare with the model.
Words Demosaiced(const Words& samples, unsigned bits, unsigned width, unsigned height, unsigned long flags) {
  const bool half = (flags & Flags::kHalfSize) != 0;
  const unsigned w = half ? width / 2 : width, h = half ? height / 2 : height;
  const PixelTypeID from = bits == 8 ? 0x20010 : bits == 12 ? 0x20012 : 0x20020;
  const PixelTypeID to = bits == 8 ? 0x20002 : bits == 12 ? 0x2000C : 0x20004;
  const Bytes source = Stored(samples, bits);
  Bytes out(std::size_t{w} * h * (bits == 8 ? 3 : 6));
  ConvertOptions options;
  options.flags = flags;
  const ConversionResult result =
      ConvertImage({from, source.data(), source.size(), width, height}, {to, out.data(), out.size(), w, h}, options);
  EXPECT_TRUE(result.IsOK()) << result.message;
  Words colors;
  for (std::size_t i = 0; i < out.size(); i += bits == 8 ? 1 : 2) {
    colors.push_back(static_cast<std::uint16_t>(bits == 8 ? out[i] : out[i] | out[i + 1] << 8));
  }
  return colors;
}

TEST_F(Develops, EqualsThePlainFormulasInEachSet) {
  DevelopmentSettings half = Settings(Flags::kHalfSize, true, kMatrix, 16);
  half.defectThreshold = 30;
  const Case cases[] = {
      {"adaptive", 0x20011, 0x20002, 10, 8, Settings(Flags::kAdaptive, true, kIdentityMatrix, 16), Flags::kBayerRG},
      {"adaptive, matrix", 0x20012, 0x20006, 12, 8, Settings(Flags::kAdaptive, true, kMatrix, 64), Flags::kBayerGR},
      {"deep", 0x20012, 0x20004, 12, 16, Settings(Flags::kAdaptive, true, kMatrix, 64), Flags::kBayerBG},
      {"12 bits", 0x20020, 0x2000C, 16, 12, Settings(Flags::kBilinear, false, kMatrix, 900), Flags::kBayerGB},
      {"deep without a matrix", 0x20012, 0x20004, 12, 16,
       Settings(Flags::kGradientCorrected, false, kIdentityMatrix, 5, {ToneCurve::kGamma, 2.2}), Flags::kBayerRG},
      {"bytes, blocks", 0x20010, 0x20002, 8, 8, Settings(0, true, kMatrix, 4), Flags::kBayerGR},
      {"half", 0x20011, 0x20002, 10, 8, half, Flags::kBayerRG},
      {"colours", 0x2000C, 0x20006, 12, 8, Settings(Flags::kAdaptive, true, kMatrix, 64, {ToneCurve::kBT709}), 0},
      {"bytes of colours", 0x20002, 0x20002, 8, 8, Settings(Flags::kAdaptive, false, kIdentityMatrix, 9), 0},
      {"deep colours", 0x2000C, 0x20004, 12, 16, Settings(Flags::kAdaptive, false, kMatrix, 64), 0},
  };
  constexpr unsigned kWidth = 151, kHeight = 13;
  ForEachInstructionSet([&] {
    for (const Case& c : cases) {
      SCOPED_TRACE(c.name);
      const Words samples = Noise(std::size_t{kWidth} * kHeight * (c.layout == 0 ? 3 : 1), c.depth);
      const bool half2 = c.layout != 0 && c.settings.method == Flags::kHalfSize;
      const unsigned width = half2 ? kWidth / 2 : kWidth, height = half2 ? kHeight / 2 : kHeight;

      const PlainDevelopment plain{c.settings, c.depth, c.bits};
      Words looked = c.layout != 0 && c.settings.correctsDefects
                         ? WithoutDefects(samples, kWidth, kHeight,
                                          c.settings.defectThreshold != 0 ? c.settings.defectThreshold
                                                                          : ((1U << c.depth) - 1) >> 6)
                         : samples;
      const unsigned redColumn = c.layout == Flags::kBayerGR || c.layout == Flags::kBayerBG ? 1 : 0;
      const unsigned redRow = c.layout == Flags::kBayerGB || c.layout == Flags::kBayerBG ? 1 : 0;
      for (unsigned i = 0; i < looked.size(); ++i) {
        const bool inRedColumn = i % kWidth % 2 == redColumn, inRedRow = i / kWidth % 2 == redRow;
        const unsigned channel = c.layout == 0 ? i % 3 : inRedColumn != inRedRow ? 1 : inRedRow ? 0 : 2;
        looked[i] = static_cast<std::uint16_t>(plain.LookUp(looked[i], channel));
      }
      if (c.layout != 0) looked = Demosaiced(looked, c.bits, kWidth, kHeight, c.layout | c.settings.method);

      const Bytes source = Stored(samples, c.depth);
      Bytes out(std::size_t{width} * height * 3 * (c.bits > 8 ? 2 : 1));
      Development development;
      ASSERT_TRUE(Development::Make(c.settings, development).IsOK());
      DevelopOptions options;
      options.flags = c.layout;
      const ConversionResult result = Develop(development, {c.from, source.data(), source.size(), kWidth, kHeight},
                                              {c.to, out.data(), out.size(), width, height}, options);
      ASSERT_TRUE(result.IsOK()) << result.message;
      for (std::size_t i = 0; i < std::size_t{width} * height; ++i) {
        unsigned color[] = {looked[3 * i], looked[3 * i + 1], looked[3 * i + 2]};
        plain.Finish(color);
        for (unsigned k = 0; k < 3; ++k) {
          const std::size_t at = 3 * i + (c.to == 0x20006 ? 2 - k : k);
          const unsigned got = c.bits == 8 ? out[at] : out[2 * at] | out[2 * at + 1] * 256U;
          ASSERT_EQ(got, color[k]) << "pixel " << i << ", channel " << k;
        }
      }
    }
  });
}

Bytes Developed(const Development& development, const ConstImageView& source, PixelTypeID to,
                const DevelopOptions& options) {
  Bytes out(RequiredSize(to, source.width, source.height).value_or(0));
  const ConversionResult result =
      Develop(development, source, {to, out.data(), out.size(), source.width, source.height}, options);
  EXPECT_TRUE(result.IsOK()) << result.message;
  return out;
}

TEST_F(Develops, PackedFramesBandsAndRangesAsTheWholeImage) {
  constexpr unsigned kWidth = 1026, kHeight = 1030;
  const Words samples = Noise(std::size_t{kWidth} * kHeight, 12);
  const Bytes words = Stored(samples, 12);
  Bytes packed;  // two pixels in three bytes: the low bits of the stream first
  for (std::size_t i = 0; i < samples.size(); i += 2) {
    const unsigned both = samples[i] | static_cast<unsigned>(samples[i + 1]) << 12;
    for (unsigned k = 0; k < 3; ++k) packed.push_back(static_cast<std::uint8_t>(both >> 8 * k));
  }
  Development development;
  ASSERT_TRUE(Development::Make(Settings(Flags::kAdaptive, true, kMatrix, 64), development).IsOK());
  DevelopOptions options;
  options.flags = Flags::kBayerRG;
  const ConstImageView whole{0x20012, words.data(), words.size(), kWidth, kHeight};
  const Bytes expected = Developed(development, whole, 0x20002, options);
  options.threads = 3;
  EXPECT_EQ(Developed(development, whole, 0x20002, options), expected);
  EXPECT_EQ(Developed(development, {0x420012, packed.data(), packed.size(), kWidth, kHeight}, 0x20002, options),
            expected);
  Bytes parts(expected.size());
  for (const auto& [first, end] : {std::pair(0U, 400U), {400U, 404U}, {404U, kHeight}}) {
    options.firstLine = first;
    options.lines = end - first;
    ASSERT_TRUE(Develop(development, whole, {0x20002, parts.data(), parts.size(), kWidth, kHeight}, options).IsOK());
  }
  EXPECT_EQ(parts, expected);
}

TEST_F(Develops, OfEightBitsAreShiftedUp) {
  DevelopmentSettings settings = Settings(Flags::kAdaptive, true, kMatrix, 64);
  settings.depth = ConversionDepth::kEightBits;
  Development development;
  ASSERT_TRUE(Development::Make(settings, development).IsOK());
  const Words frame = Noise(3 * 65 * 9, 12);
  for (const PixelTypeID from : {0x20012L, 0x2000CL}) {
    DevelopOptions options;
    options.flags = from == 0x20012 ? Flags::kBayerRG : Flags::kNone;
    const Bytes bytes = Developed(development, ViewOf(from, frame, 65, 9), 0x20002, options);
    const Bytes words = Developed(development, ViewOf(from, frame, 65, 9), 0x20004, options);
    for (std::size_t i = 0; i < bytes.size(); ++i) ASSERT_EQ(words[2 * i] | words[2 * i + 1] << 8, bytes[i] << 8) << i;
  }
}

// Without a step it is a conversion: also of the last pixels, which some layouts leave alone.
TEST_F(Develops, WithoutStepsConvertsColours) {
  DevelopmentSettings settings;
  settings.tone = {ToneCurve::kLinear};
  Development development;
  ASSERT_TRUE(Development::Make(settings, development).IsOK());
  for (const PixelTypeID from : {0x40001L, 0x440003L, 0x440006L}) {
    for (const unsigned width : {1U, 4U, 2049U, 2050U, 2051U}) {
      const Bytes source = Stored(Noise(RequiredSize(from, width, 2).value(), 8), 8);
      const ConstImageView view = ViewOf(from, source, width, 2);
      Bytes converted(6 * width, 9), developed = converted;
      ASSERT_TRUE(ConvertImage(view, ViewOf(0x420002, converted, width, 2)).IsOK());
      ASSERT_TRUE(Develop(development, view, ViewOf(0x420002, developed, width, 2)).IsOK());
      EXPECT_EQ(developed, converted) << std::hex << from << std::dec << ", " << width;
    }
  }
}

TEST_F(Develops, GrayStaysGrayAndWhiteIsWhiteInEveryDestination) {
  DevelopmentSettings settings;
  settings.matrix = kMatrix;
  Development development;
  ASSERT_TRUE(Development::Make(settings, development).IsOK());
  DevelopOptions options;
  options.flags = Flags::kBayerRG;
  struct Destination {
    PixelTypeID type;
    unsigned white;
  };
  for (const PixelTypeID from : {0x20010L, 0x20012L}) {
    for (const unsigned level : {40U, 255U}) {
      const std::uint16_t sample = static_cast<std::uint16_t>(from == 0x20010 ? level
                                                              : level == 255  ? 4095
                                                                              : level * 16);
      const Bytes source = Stored(Words(64, sample), from == 0x20010 ? 8 : 12);
      const ConstImageView view{from, source.data(), source.size(), 8, 8};
      for (const Destination to : {Destination{0x20002, 255},
                                   {0x20004, 65535},
                                   {0x20008, 1023},
                                   {0x820004, 65535},
                                   {0x10001, 255},
                                   {0x10003, 4095}}) {
        const Bytes out = Developed(development, view, to.type, options);
        const unsigned first = to.white == 255 ? out[0] : out[0] | out[1] * 256U;
        for (std::size_t i = 0; i < out.size(); i += to.white == 255 ? 1 : 2) {
          ASSERT_EQ(to.white == 255 ? out[i] : out[i] | out[i + 1] << 8U, first) << std::hex << from << ' ' << to.type;
        }
        EXPECT_EQ(first == to.white, level == 255) << std::hex << from << ' ' << to.type;
      }
    }
  }
}

TEST_F(Develops, RefusesWithASentenceAndKeepsWhatWas) {
  struct Refusal {
    void (*spoil)(DevelopmentSettings& settings);
    const char* names;
  };
  using S = DevelopmentSettings;
  const Refusal refusals[] = {
      {[](S& s) { s.black.green = -1; }, "settings.black has -1; allowed: 0 to 65535"},
      {[](S& s) { s.gains.blue = 1001; }, "settings.gains has 1001; allowed: 0 to 1000"},
      {[](S& s) { s.gains.red = std::nan(""); }, "settings.gains has nan"},
      {[](S& s) { s.method = 0x300; }, "settings.method is 0x300"},
      {[](S& s) { s.matrix[5] = -6.5; }, "row 2, whose absolute values sum to 7.5; allowed: at most 7"},
      {[](S& s) {
         s.tone = {ToneCurve::kGamma, 0};
       },
       "settings.tone.gamma is 0"},
      {[](S& s) { s.defectThreshold = 65536; }, "settings.defectThreshold is 65536"},
  };
  Development development;
  for (const Refusal& refusal : refusals) {
    DevelopmentSettings settings;
    refusal.spoil(settings);
    const ConversionResult result = Development::Make(settings, development);
    EXPECT_EQ(result.result.GetCode(), LmBaseLib::Result::INVALID_PARAMETER);
    EXPECT_NE(result.message.find(refusal.names), std::string::npos) << result.message;
  }
  EXPECT_EQ(development.Settings().gains.blue, 1);

  const Bytes source(64);
  Bytes out(192, 7);
  const Bytes untouched = out;
  struct Call {
    PixelTypeID from, to;
    unsigned long flags;
    const char* names;
  };
  for (const Call& call : {Call{0x20010, 0x20002, 0, "no Bayer layouts"},
                           {0x10001, 0x20002, 0, "source.type is"},
                           {0x20010, 0x20010, 0x40, "destination.type is"},
                           {0x20010, 0x20002, 0x440, "0x400"},
                           {0x20010, 0x40001, 0x40, "destination.type is"},
                           {0x20011, 0x20002, 0x40, "source.size"}}) {
    DevelopOptions options;
    options.flags = call.flags;
    const ConversionResult result =
        Develop(development, {call.from, source.data(), 64, 8, 8}, {call.to, out.data(), 192, 8, 8}, options);
    EXPECT_FALSE(result.IsOK());
    EXPECT_NE(result.message.find(call.names), std::string::npos) << result.message;
  }
  EXPECT_EQ(out, untouched);
}

}  // namespace
}  // namespace LmImagingLib
