#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {
namespace {

using Bytes = std::vector<std::uint8_t>;

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

// A thread keeps its last plan, which a replacement ends.
TEST(ConvertImage, UsesAReplacementFromTheNextFrameOn) {
  static const Negative sNegative(0x20007);
  const std::uint8_t gray[] = {0, 1, 200};
  const auto convert = [&gray] {
    Bytes pixels(12, 9);
    const ConstImageView source{0x10001, gray, sizeof gray, 3, 1};
    EXPECT_TRUE(ConvertImage(source, {0x20007, pixels.data(), pixels.size(), 3, 1}).IsOK());
    return Bytes(pixels.begin(), pixels.begin() + 3);
  };
  EXPECT_EQ(convert(), (Bytes{0, 0, 0}));
  const PixelConverter* own = nullptr;
  ASSERT_TRUE(PixelTypeFactory::ReplacePixelConverter(sNegative, &own).IsOK());
  EXPECT_EQ(convert(), (Bytes{255, 254, 55}));
  ASSERT_TRUE(PixelTypeFactory::ReplacePixelConverter(*own, nullptr).IsOK());
  EXPECT_EQ(convert(), (Bytes{0, 0, 0}));
}

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

// Types that contradict the converters that they are registered for.
TEST(ConvertImage, GoesByTheConverterWhereATypeSaysOtherwise) {
  constexpr PixelTypeID kOnePlane = 0x5000000010012;
  const PixelType type(kOnePlane, 8, 1, false);
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelType(kOnePlane, &type, "one plane").IsOK());
  ASSERT_TRUE(PixelTypeFactory::ClonePixelConverters(0x820002, kOnePlane).IsOK());
  Bytes planes(36), pixels(36);
  const auto convert = [&](PixelTypeID from, PixelTypeID to, std::size_t planeBytes) {
    const std::size_t sizes[] = {from == kOnePlane ? planeBytes : 36, to == kOnePlane ? planeBytes : 36};
    return ConvertImage({from, planes.data(), sizes[0], 4, 3}, {to, pixels.data(), sizes[1], 4, 3});
  };
  EXPECT_EQ(RequiredSize(kOnePlane, 4, 3), 36u);
  for (const auto& [from, to] : {std::pair(kOnePlane, PixelTypeID{0x420002}), {PixelTypeID{0x420002}, kOnePlane}}) {
    EXPECT_FALSE(convert(from, to, 35).IsOK());
    EXPECT_TRUE(convert(from, to, 36).IsOK());
  }
}

TEST(ConvertImage, RefusesConvertersThatCannotBeRun) {
  constexpr PixelTypeID kSteps0 = 0x5000000010013, kWide = 0x5000000010014;
  static const PixelConverter sSteps0(kSteps0, 0x10001, 1, 1, 1, 0);  // stay registered
  static const PixelConverter sNarrows(0x20003, 0x10001, 4, 1, 1, 1);
  static const ComplexConverter sOurs(*PixelTypeFactory::FindConverter(0x10001, 0x20003),
                                      *PixelTypeFactory::FindConverter(0x20003, 0x20001));
  static const ComplexConverter sTheirs(*PixelTypeFactory::FindConverter(0x10001, 0x20003), sNarrows);
  const PixelType type(kSteps0, 8, 1, false);
  for (const PixelTypeID id : {kSteps0, kWide}) {
    ASSERT_TRUE(PixelTypeFactory::RegisterPixelType(id, &type, nullptr).IsOK());
  }
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelConverter(sSteps0).IsOK());
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelConverter(kWide, 0x20001, &sOurs).IsOK());
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelConverter(kWide, 0x10001, &sTheirs).IsOK());
  Bytes bytes(64);
  ConversionResult result = ConvertImage({kSteps0, bytes.data(), 6, 3, 2}, {0x10001, &bytes[32], 6, 3, 2});
  EXPECT_NE(result.message.find("0 lines"), std::string::npos) << result.message;
#ifndef _WIN32  // whose unsigned long has 32 bits
  // A line, or an image, of four gigabytes between the stages.
  const struct {
    PixelTypeID to;
    unsigned long width, pixelBytes;
  } wide[] = {{0x20001, 0x3FFFFFFE, 2}, {0x10001, 0x40000000, 1}, {0x10001, 0x40000010, 1}};
  for (const auto& call : wide) {
    result = ConvertImage({kWide, bytes.data(), call.width, call.width, 1},
                          {call.to, bytes.data() + call.width, call.pixelBytes * call.width, call.width, 1});
    EXPECT_NE(result.message.find("between the stages"), std::string::npos) << result.message;
  }
#endif
}

}  // namespace
}  // namespace LmImagingLib
