#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/RGBFilter.h"
#include "image/unchecked.h"
#include "model/frame.h"
#include "model/guarded_buffer.h"

// What is accepted equals the unchecked conversion, and touches no byte outside the pixels: buffers have exactly the
// size that is asked for and lie at inaccessible pages. What is refused touches nothing and says why.

namespace LmImagingLib {
namespace {

using model::OneOf;
using model::Random;
using unchecked::Bytes;
using unchecked::Layout;

struct Geometry {
  unsigned long width, height;
};

class ConvertImageTest : public testing::Test {
 protected:
  ConvertImageTest() { mFilter.SetMultipliers(1.6, 1.0, 0.25, 0, 7, 100); }

  static Bytes Noise(std::size_t size, Random& random) {
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
  }

  static std::size_t Padded(PixelTypeID type, unsigned long width, Random& random) {
    const std::size_t padding = OneOf(random, {0, 0, 1, 2, 3, 16});
    return padding == 0 ? OneOf(random, {0, 1}) * Layout::LineStep(type, width)
                        : Layout::LineStep(type, width) + padding;
  }

  ConvertOptions AnyOptions(unsigned long height, bool pairs, Random& random) const {
    ConvertOptions options;
    options.flags = OneOf(random, {0, 0x10, 0x20, 0x40, 0x80}) | OneOf(random, {0, 0x100}) | OneOf(random, {0, 1});
    options.filter = random() % 2 == 0 ? &mFilter : nullptr;
    if (random() % 3 != 0) return options;
    options.firstLine = random() % height;
    options.lines = 1 + random() % (height - options.firstLine);
    if (pairs) {
      options.firstLine -= options.firstLine % 2;
      options.lines = std::min(height - options.firstLine, (options.lines + 1) / 2 * 2);
    }
    return options;
  }

  // Converts noise and compares all bytes of the destination.
  void Check(PixelTypeID from, PixelTypeID to, const Geometry& size, std::size_t sourceLine,
             std::size_t destinationLine, const ConvertOptions& options) {
    const auto side = mRandom() % 4 == 0 ? GuardedBuffer::Against::BEGIN : GuardedBuffer::Against::END;
    const Bytes from8 = Noise(*RequiredSize(from, size.width, size.height, sourceLine), mRandom);
    const Bytes before = Noise(*RequiredSize(to, size.width, size.height, destinationLine), mRandom);
    std::uint8_t* const in = mSource.Place(from8.size(), side);
    std::uint8_t* const out = mDestination.Place(before.size(), side);
    std::copy(from8.begin(), from8.end(), in);
    std::copy(before.begin(), before.end(), out);
    const ConstImageView source{from, in, from8.size(), size.width, size.height, sourceLine};
    const ImageView destination{to, out, before.size(), size.width, size.height, destinationLine};

    const ConversionResult result = ConvertImage(source, destination, options);

    const std::string what = Describe(source, destination, options);
    ASSERT_TRUE(result.IsOK()) << what << ": " << result.message;
    const Bytes expected = unchecked::Convert(source, destination, options, from8, before);
    const std::size_t at = model::FirstDifference(out, expected);
    ASSERT_EQ(at, expected.size()) << what << ": " << unsigned{out[at]} << " for " << unsigned{expected[at]};
  }

  static std::string Describe(const ConstImageView& source, const ImageView& destination,
                              const ConvertOptions& options) {
    std::ostringstream text;
    text << std::hex << "0x" << source.type << " to 0x" << destination.type << std::dec << ", " << source.width << " x "
         << source.height << " in lines of " << source.lineSize << " and " << destination.lineSize << ", flags 0x"
         << std::hex << options.flags << std::dec << ", lines from " << options.firstLine << ": " << options.lines;
    return text.str();
  }

  Random mRandom{5};
  RGBFilter mFilter{8};

 private:
  GuardedBuffer mSource{1 << 21};
  GuardedBuffer mDestination{1 << 21};
};

constexpr bool IsInterlaced(PixelTypeID type) { return (type & kInterlacedFlag) != 0; }

TEST_F(ConvertImageTest, EveryPairEqualsTheUncheckedConversion) {
  PixelTypeID from = 0;
  PixelTypeID to = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, from, to); ++i) {
    if (from >> 32 != 0 || to >> 32 != 0) continue;  // types of other tests
    const bool pairs = PixelTypeFactory::FindConverter(from, to)->GetLinesPerStep() > 1;
    for (unsigned round = 0; round < 24; ++round) {
      const unsigned long least = pairs ? 2 : 1;
      const Geometry size{least + mRandom() % OneOf(mRandom, {6, 40}), least + mRandom() % 9};
      std::size_t sourceLine = Padded(from, size.width, mRandom);
      if (from == 0x10010001 || (IsInterlaced(from) && size.height % 2 != 0)) sourceLine = 0;
      Check(from, to, size, sourceLine, Padded(to, size.width, mRandom), AnyOptions(size.height, pairs, mRandom));
      if (HasFatalFailure()) return;
    }
  }
}

// Longer than what a chain converts at a time, and wider than what it keeps inside.
TEST_F(ConvertImageTest, ChainsOfAnySizeEqualTheUncheckedConversion) {
  for (const PixelTypeID from : {0x20040, 0x420012, 0x320011, 0x1020010, 0x10007}) {
    for (const Geometry& size : {Geometry{300, 401}, Geometry{301, 500}, Geometry{7001, 21}, Geometry{26002, 6}}) {
      for (const std::size_t padding : {0U, 2U}) {
        if (padding != 0 && IsInterlaced(from) && size.height % 2 != 0) continue;
        const std::size_t line = Layout::LineStep(from, size.width) + padding;
        for (const unsigned long flags : {0x40UL, 0x180UL}) {
          Check(from, 0x420006, size, line, 0, {nullptr, flags});
          Check(from, 0x820002, size, line, 0, {&mFilter, flags, 2, 4});
        }
      }
    }
  }
}

struct Refusal {
  const char* what;
  void (*spoil)(ConstImageView& source, ImageView& destination, ConvertOptions& options);
  int code;
  std::vector<const char*> message;  // what it must name
};

TEST(ConvertImage, RefusesWithASentenceAndTouchesNothing) {
  // A mosaic of 10-bit words, 6 x 4, to 24-bit colours; each row spoils one thing.
  using C = ConstImageView;
  using I = ImageView;
  using O = ConvertOptions;
  constexpr int kInvalid = LmBaseLib::Result::INVALID_PARAMETER;
  const Refusal refusals[] = {
      {"no source", [](C& s, I&, O&) { s.data = nullptr; }, kInvalid, {"source.data", "null"}},
      {"no destination", [](C&, I& d, O&) { d.data = nullptr; }, kInvalid, {"destination.data", "null"}},
      {"no pixels", [](C& s, I&, O&) { s.width = 0; }, kInvalid, {"source", "0 x 4"}},
      {"no lines", [](C&, I& d, O&) { d.height = 0; }, kInvalid, {"destination", "6 x 0"}},
      {"small source", [](C& s, I&, O&) { s.size = 47; }, kInvalid, {"source.size", "47", "48"}},
      {"small destination", [](C&, I& d, O&) { d.size = 71; }, kInvalid, {"destination.size", "71", "72"}},
      {"small source for its padding",
       [](C& s, I&, O&) {
         s.lineSize = 20;
         s.size = 71;
       },
       kInvalid,
       {"source.size", "71", "72"}},
      {"short lines", [](C& s, I&, O&) { s.lineSize = 11; }, kInvalid, {"source.lineSize", "11", "12"}},
      {"sizes that differ", [](C&, I& d, O&) { d.width = 5; }, kInvalid, {"5 x 4", "6 x 4"}},
      {"unknown type", [](C& s, I&, O&) { s.type = 0x31337; }, kInvalid, {"source.type", "0x31337"}},
      {"unknown pair",
       [](C&, I& d, O&) { d.type = 0x10001; },
       LmBaseLib::Result::NOT_IMPLEMENTED,
       {"destination.type", "0x10001", "0x20011"}},
      {"two layouts", [](C&, I&, O& o) { o.flags = 0x30; }, kInvalid, {"options.flags", "0x30"}},
      {"line that is not there", [](C&, I&, O& o) { o.firstLine = 4; }, kInvalid, {"options.firstLine", "4", "0 to 3"}},
      {"too many lines",
       [](C&, I&, O& o) {
         o.firstLine = 2;
         o.lines = 3;
       },
       kInvalid,
       {"options.lines", "3", "1 to 2"}},
      {"none", [](C&, I&, O& o) { o.lines = 0; }, kInvalid, {"options.lines", "0"}},
      {"half a pair above", [](C&, I&, O& o) { o.firstLine = 1; }, kInvalid, {"options.firstLine", "multiples of 2"}},
      {"half a pair below", [](C&, I&, O& o) { o.lines = 3; }, kInvalid, {"options.lines", "3", "multiples of 2"}},
      {"narrow", [](C& s, I& d, O&) { s.width = d.width = 1; }, kInvalid, {"1 x 4", "2 x 2"}},
      {"low", [](C& s, I& d, O&) { s.height = d.height = 1; }, kInvalid, {"6 x 1", "2 x 2"}},
#ifndef _WIN32  // whose unsigned long has 32 bits
      {"width that wraps", [](C& s, I& d, O&) { s.width = d.width = 0x100000006; }, kInvalid, {"4294967302"}},
#endif
      {"line that wraps", [](C& s, I& d, O&) { s.width = d.width = 0x80000003; }, kInvalid, {"source.width"}},
      {"size that wraps",
       [](C& s, I& d, O&) { s.width = s.height = d.width = d.height = 0x10000; },
       kInvalid,
       {"source.size", "8589934592"}},
      {"line size that wraps", [](C& s, I&, O&) { s.lineSize = ~std::size_t{0} / 2; }, kInvalid, {"source.lineSize"}},
      {"in place", [](C& s, I& d, O&) { s.data = d.data; }, kInvalid, {"overlap"}},
      {"shifted by a byte",
       [](C& s, I& d, O&) { s.data = static_cast<std::uint8_t*>(d.data) - 47; },
       kInvalid,
       {"overlap"}},
      {"dual lines with padding",
       [](C& s, I& d, O&) {
         s.type = 0x10010001;
         d.type = 0x10001;
         s.lineSize = 8;
       },
       kInvalid,
       {"source.lineSize", "8", "6"}},
      {"fields that padding parts",
       [](C& s, I& d, O&) {
         s.type = 0x210001;
         d.type = 0x10001;
         s.height = d.height = 3;
         s.lineSize = 7;
       },
       kInvalid,
       {"source.lineSize", "7", "odd height, 3"}}};
  const Bytes frame(100, 1);
  const Bytes blank(200, 2);
  for (const Refusal& refusal : refusals) {
    Bytes memory = blank;
    ConstImageView source{0x20011, frame.data(), frame.size(), 6, 4};
    ImageView destination{0x20002, memory.data() + 100, 100, 6, 4};
    ConvertOptions options;
    ASSERT_TRUE(ConvertImage(source, destination, options).IsOK());
    memory = blank;
    refusal.spoil(source, destination, options);
    const ConversionResult result = ConvertImage(source, destination, options);
    EXPECT_EQ(result.result.GetCode(), refusal.code) << refusal.what;
    for (const char* const part : refusal.message) {
      EXPECT_NE(result.message.find(part), std::string::npos) << refusal.what << ": " << result.message;
    }
    EXPECT_EQ(memory, blank) << refusal.what;
  }
}

TEST(RequiredSize, IsWhatConversionsReadAndWrite) {
  const struct {
    PixelTypeID type;
    unsigned long width, height;
    std::size_t lineSize;
    std::optional<std::size_t> bytes;
  } cases[] = {{0x10001, 5, 3, 0, 15},
               {0x10001, 5, 3, 8, 21},  // the last line has no padding
               {0x10001, 5, 3, 4, std::nullopt},
               {0x10001, 0, 3, 0, 0},
               {0x20002, 5, 3, 0, 45},  // three bytes a pixel, under the unpacked id too
               {0x420002, 5, 3, 0, 45},
               {0x20003, 5, 3, 0, 60},
               {0x820002, 5, 3, 0, 45},
               {0x820002, 5, 3, 8, 69},  // 8 lines of 8, and one of 5
               {0x82000B, 5, 3, 0, 60},  // the fourth plane is there, although nobody reads it
               {0x820004, 5, 3, 0, 90},
               {0x40002, 5, 3, 0, 60},
               {0x10009, 6, 2, 0, 18},
               {0x10009, 5, 2, 0, 7 + 8},  // a line shares its last byte with the next
               {0x410003, 5, 2, 8, 8 + 8},
               {0x20046, 5, 2, 0, 22 + 23},
               {0x440006, 8, 2, 0, 24},
               {0x440006, 6, 2, 0, 9 + 10},  // up to the V of the fifth and sixth pixel
               {0x440006, 7, 2, 0, 10 + 11},
               {0x210001, 4, 3, 0, 12},
               {0x31337, 4, 3, 0, std::nullopt},
               {0x20011, 0xFFFFFFFF, 1, 0, std::nullopt},
               {0x20011, 0x20000000, 0xFFFFFFFF, 0, 0x3FFFFFFFC0000000},
#ifndef _WIN32  // whose unsigned long has 32 bits
               {0x10001, 0x100000000, 1, 0, std::nullopt},
#endif
               {0x10001, 1, 0xFFFFFFFF, ~std::size_t{0}, std::nullopt}};
  for (const auto& c : cases) {
    EXPECT_EQ(RequiredSize(c.type, c.width, c.height, c.lineSize), c.bytes)
        << std::hex << c.type << std::dec << ", " << c.width << " x " << c.height << " in lines of " << c.lineSize;
  }
}

// An application's own format: 10-bit samples, four pixels in five bytes.
class Dense10To8 : public PixelConverter {
 public:
  Dense10To8(PixelTypeID from, PixelTypeID to) : PixelConverter(from, to, 2, 1, 4, 1) {}
  unsigned long GetSourceLineSize(unsigned long pixels) const override { return (pixels * 5 + 3) / 4; }
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixels) const override {
    for (unsigned long x = 0; x < pixels; ++x) {
      const auto* const bytes = static_cast<const std::uint8_t*>(source) + x / 4 * 5 + x % 4;
      const auto shift = static_cast<unsigned>(2 + 2 * (x % 4));
      static_cast<std::uint8_t*>(destination)[x] = static_cast<std::uint8_t>((bytes[0] | bytes[1] << 8) >> shift);
    }
    return LmBaseLib::Result::OK;
  }
};

TEST(ConvertImage, TakesAnApplicationsOwnFormat) {
  constexpr PixelTypeID kDense10 = 0x5000000010010;
  static const Dense10To8 sConverter(kDense10, 0x10001);  // stays registered
  const PixelType type(kDense10, 10, 2, false);
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelType(kDense10, &type, "Dense 10-bit").IsOK());
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelConverter(sConverter).IsOK());

  EXPECT_EQ(RequiredSize(kDense10, 6, 2), 16u);
  Bytes frame(20, 0);
  frame[10] = 0xFF;  // the second line's first pixel, where lines have ten bytes
  frame[11] = 0x03;
  Bytes gray(12, 9);
  ConstImageView source{kDense10, frame.data(), frame.size(), 6, 2, 10};
  ImageView destination{0x10001, gray.data(), gray.size(), 6, 2};
  const ConversionResult result = ConvertImage(source, destination);
  ASSERT_TRUE(result.IsOK()) << result.message;
  EXPECT_EQ(gray, (Bytes{0, 0, 0, 0, 0, 0, 0xFF, 0, 0, 0, 0, 0}));

  ConvertOptions options;
  options.firstLine = 1;
  EXPECT_FALSE(ConvertImage(source, destination, options).IsOK());
  source.lineSize = 11;  // no whole number of pixels ends there
  EXPECT_FALSE(ConvertImage(source, destination).IsOK());
}

// An application's own way from 8-bit gray: the negative.
class Negative : public PixelConverter {
 public:
  explicit Negative(PixelTypeID to) : PixelConverter(0x10001, to, 1, 1, 1, 1) {}
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixels) const override {
    const auto* const from = static_cast<const std::uint8_t*>(source);
    std::transform(from, from + pixels, static_cast<std::uint8_t*>(destination),
                   [](std::uint8_t gray) { return static_cast<std::uint8_t>(255 - gray); });
    return LmBaseLib::Result::OK;
  }
};

TEST(ConvertImage, TakesAnApplicationsChainWhereItReadsNothingBeyond) {
  constexpr PixelTypeID kNegative8 = 0x5000000010011;
  static const Negative sNegative(kNegative8);  // stay registered
  static const ComplexConverter sChain(*PixelTypeFactory::FindConverter(0x10009, 0x10001), sNegative);
  const PixelType type(kNegative8, 8, 1, false);
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelType(kNegative8, &type, "Negative").IsOK());
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelConverter(sChain).IsOK());

  const Bytes frame(20, 0x55);
  Bytes gray(12, 9);
  const auto convert = [&](unsigned long width, std::size_t lineSize) {
    const ConstImageView source{0x10009, frame.data(), frame.size(), width, 2, lineSize};
    return ConvertImage(source, {kNegative8, gray.data(), gray.size(), width, 2});
  };
  EXPECT_TRUE(convert(6, 0).IsOK());
  EXPECT_EQ(gray, Bytes(12, 0xAA));
  EXPECT_NE(convert(5, 0).message.find("source.width is 5"), std::string::npos);
  EXPECT_NE(convert(4, 9).message.find("without padding"), std::string::npos);
}

}  // namespace
}  // namespace LmImagingLib
