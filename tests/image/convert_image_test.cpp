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
// size that is asked for and lie at inaccessible pages.

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

}  // namespace
}  // namespace LmImagingLib
