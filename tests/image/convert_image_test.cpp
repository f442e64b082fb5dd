#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "model/frame.h"
#include "model/guarded_buffer.h"
#include "model/image.h"

// What is accepted equals the model, and touches no byte outside the pixels: buffers have exactly the size that is
// asked for and are at inaccessible pages.

namespace LmImagingLib {
namespace {

using model::OneOf;
using model::Random;
using model::View;
using Bytes = std::vector<std::uint8_t>;

struct Geometry {
  unsigned long width, height;
};

constexpr bool IsInterlaced(PixelTypeID type) { return (type & kInterlacedFlag) != 0; }

class ConvertImageTest : public testing::Test {
 protected:
  ConvertImageTest() { RegisterExtendedFormats(); }

  Bytes Noise(std::size_t size) {
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(mRandom());
    return bytes;
  }

  std::size_t Padded(PixelTypeID type, unsigned long width) {
    const std::size_t padding = OneOf(mRandom, {0, 0, 1, 2, 3, 16});
    const std::size_t dense = View::DenseLine(type, width);
    return padding == 0 ? OneOf(mRandom, {0, 1}) * dense : dense + padding;
  }

  // Flags that mean something for the source, and depth.
  std::uint32_t AnyFlags(PixelTypeID from, bool demosaics) {
    std::uint32_t flags = OneOf(mRandom, {0, 0x800}) | OneOf(mRandom, {0, 0, 0x2000});
    if (IsInterlaced(from)) flags |= OneOf(mRandom, {0, 1});
    if ((from & 0x40000) != 0) flags |= OneOf(mRandom, {0, 0x4000, 0x8000, 0xC000});
    if (model::SourceOf(from).family != model::Family::BAYER) return flags;
    flags |= OneOf(mRandom, {0x10, 0x20, 0x40, 0x80}) | OneOf(mRandom, {0, 0x1000});
    return flags | OneOf(mRandom, {0, 0x100, 0x200, 0x400, demosaics ? 0x10000U : 0U});
  }

  model::Options AnyOptions(PixelTypeID from, unsigned long height, bool pairs) {
    model::Options options;
    options.flags = AnyFlags(from, pairs);
    options.filter = mFilters.Pick(mRandom);
    options.lines = height;
    if (mRandom() % 3 != 0) return options;
    options.firstLine = mRandom() % height;
    options.lines = 1 + mRandom() % (height - options.firstLine);
    if (pairs) {
      options.firstLine -= options.firstLine % 2;
      options.lines = std::min(height - options.firstLine, (options.lines + 1) / 2 * 2);
    }
    return options;
  }

  // Converts noise and compares all bytes of the destination.
  void Check(const View& source, const View& destination, const model::Options& options) {
    const auto side = mRandom() % 4 == 0 ? GuardedBuffer::Against::BEGIN : GuardedBuffer::Against::END;
    const Bytes from = Noise(source.Bytes());
    const Bytes before = Noise(destination.Bytes());
    std::uint8_t* const in = mSource.Place(from.size(), side);
    std::uint8_t* const out = mDestination.Place(before.size(), side);
    std::copy(from.begin(), from.end(), in);
    std::copy(before.begin(), before.end(), out);

    const ConversionResult result =
        ConvertImage({source.type, in, from.size(), source.width, source.height, source.line},
                     {destination.type, out, before.size(), destination.width, destination.height, destination.line},
                     {mFilters.FilterOf(options.filter), options.flags, options.firstLine, options.lines,
                      (options.flags & 0x800) != 0 ? ConversionDepth::kFull : ConversionDepth::kEightBits});

    const std::string what = Describe(source, destination, options);
    ASSERT_TRUE(result.IsOK()) << what << ": " << result.message;
    const Bytes expected = model::ConvertImage(source, destination, options, from, before);
    const std::size_t at = model::FirstDifference(out, expected);
    ASSERT_EQ(at, expected.size()) << what << ": " << unsigned{out[at]} << " for " << unsigned{expected[at]};
  }

  static std::string Describe(const View& source, const View& destination, const model::Options& options) {
    std::ostringstream text;
    text << std::hex << "0x" << source.type << " to 0x" << destination.type << std::dec << ", " << source.width << " x "
         << source.height << " in lines of " << source.line << " and " << destination.line << ", flags 0x" << std::hex
         << options.flags << std::dec << ", lines from " << options.firstLine << ": " << options.lines;
    return text.str();
  }

  Random mRandom{5};
  model::Filters mFilters{mRandom};

 private:
  GuardedBuffer mSource{1 << 21};
  GuardedBuffer mDestination{1 << 21};
};

TEST_F(ConvertImageTest, EveryPairEqualsTheModel) {
  for (const auto& [from, to] : model::AllPairs(model::Registered::EXTENDED)) {
    const bool pairs = PixelTypeFactory::FindConverter(from, to)->GetLinesPerStep() > 1;
    for (unsigned round = 0; round < 24; ++round) {
      const unsigned long least = pairs ? 2 : 1;
      // Some images have more lines than go through a strip at once.
      const Geometry size{least + mRandom() % OneOf(mRandom, {6, 40}),
                          least + mRandom() % OneOf(mRandom, {9, 9, 9, 80})};
      std::size_t sourceLine = Padded(from, size.width);
      if (from == 0x10010001 || (IsInterlaced(from) && size.height % 2 != 0)) sourceLine = 0;
      const model::Options options = AnyOptions(from, size.height, pairs);
      const unsigned long down = (options.flags & ConversionFlags::kHalfSize) != 0 ? 2 : 1;
      Check({from, size.width, size.height, sourceLine},
            {to, size.width / down, size.height / down, Padded(to, size.width / down)}, options);
      if (HasFatalFailure()) return;
    }
  }
}

// Longer than the band that a chain converts at a time, and wider than what is kept on the stack.
TEST_F(ConvertImageTest, ChainsOfAnySizeEqualTheModel) {
  for (const PixelTypeID from : {0x20040, 0x420012, 0x320011, 0x1020010, 0x10007}) {
    for (const Geometry& size : {Geometry{300, 401}, Geometry{301, 500}, Geometry{7001, 21}, Geometry{26002, 6}}) {
      for (const std::size_t padding : {0U, 2U}) {
        if (padding != 0 && IsInterlaced(from) && size.height % 2 != 0) continue;
        const View source(from, size.width, size.height, View::DenseLine(from, size.width) + padding);
        for (const std::uint32_t flags : {0x40U, 0x180U, 0x1410U}) {
          const std::uint32_t own = from == 0x10007 ? 0x800 : flags;
          Check(source, {0x420006, size.width, size.height, 0}, {own, nullptr, 0, size.height});
          Check(source, {0x820002, size.width, size.height, 0}, {own, mFilters.Pick(mRandom), 2, 4});
        }
      }
    }
  }
}

// Bands meet at rows that both read; an executor may run them in any order. A fifth and a third of the lines are odd.
TEST_F(ConvertImageTest, BandsOnThreadsEqualTheWhole) {
  std::size_t bands = 0;
  const Executor backwards = [&](std::size_t count, const std::function<void(std::size_t)>& job) {
    bands = count;
    while (count-- != 0) job(count);
  };
  for (const PixelTypeID from : {0x20010, 0x20012, 0x320011, 0x420012, 0x440006, 0x640006, 0x10010001, 0x210002}) {
    const View source(from, 1022, 1507, 0), destination(0x20A40, 1022, 1507, 0);
    const Bytes image = Noise(source.Bytes());
    const auto convert = [&](unsigned threads, const Executor* executor) {
      ConvertOptions options;
      if (PixelTypeFactory::FindPixelType(from)->IsBayerPattern()) options.flags = 0x140;
      options.firstLine = 2;
      options.threads = threads;
      options.executor = executor;
      Bytes converted(destination.Bytes());
      EXPECT_TRUE(ConvertImage({from, image.data(), image.size(), 1022, 1507},
                               {0x20A40, converted.data(), converted.size(), 1022, 1507}, options)
                      .IsOK());
      return converted;
    };
    const Bytes whole = convert(1, &backwards);
    EXPECT_EQ(bands, 0u);
    EXPECT_TRUE(convert(5, &backwards) == whole) << std::hex << from;
    EXPECT_EQ(std::exchange(bands, 0), 5u);
    EXPECT_TRUE(convert(3, nullptr) == whole) << std::hex << from;
  }
}

// Edges mirror each other there.
TEST_F(ConvertImageTest, SmallMosaicsEqualTheModel) {
  for (unsigned long size = 0; size < 19 * 19; ++size) {
    const unsigned long width = 2 + size % 19, height = 2 + size / 19;
    for (const std::uint32_t flags : {0x220U, 0x440U}) {
      Check({0x20010, width, height, 0}, {0x20002, width, height, 0}, {flags, nullptr, 0, height});
      Check({0x20016, width, height, 0}, {0x20004, width, height, 0}, {flags | 0x800U, nullptr, 0, height});
    }
    if (HasFatalFailure()) return;
  }
}

TEST(RequiredSize, IsWhatConversionsReadAndWrite) {
  RegisterExtendedFormats();
  const struct {
    PixelTypeID type;
    unsigned long width, height;
    std::size_t lineSize;
    std::optional<std::size_t> bytes;
  } cases[] = {
    {0x10001, 5, 3, 0, 15},
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
    {0x41080A, 5, 3, 0, 3 * 7},  // lines of packed extended formats begin with a byte
    {0x42094E, 3, 2, 0, 2 * 6},
    {0x420A0C, 3, 2, 0, 2 * 14},
    {0x210001, 4, 3, 0, 12},
    {0x31337, 4, 3, 0, std::nullopt},
    {0x20011, 0xFFFFFFFF, 1, 0, std::nullopt},
#if SIZE_MAX > 0xFFFFFFFF
    {0x20011, 0x20000000, 0xFFFFFFFF, 0, 0x3FFFFFFFC0000000},
#endif
#if ULONG_MAX > 0xFFFFFFFF
    {0x10001, 0x100000000, 1, 0, std::nullopt},
#endif
    {0x10001, 1, 0xFFFFFFFF, ~std::size_t{0}, std::nullopt}
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RequiredSize(c.type, c.width, c.height, c.lineSize), c.bytes)
        << std::hex << c.type << std::dec << ", " << c.width << " x " << c.height << " in lines of " << c.lineSize;
  }
  EXPECT_EQ(PixelTypeFactory::FindPixelType(0x41080A)->GetBufferSizeFor(5, 3), 21U);
}

}  // namespace
}  // namespace LmImagingLib
