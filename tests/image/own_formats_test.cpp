#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
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
