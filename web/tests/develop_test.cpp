#include "develop.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "describe.h"
#include "encode/encode_scene.h"

namespace LmPage {
namespace {

using namespace LmImagingLib;

class Frames : public testing::Test {
 protected:
  static void SetUpTestSuite() { RegisterExtendedFormats(); }

  RawFrame Of(PixelTypeID type, unsigned long flags, std::vector<std::uint8_t> bytes, std::size_t width,
              std::size_t height) {
    mKept.push_back(std::move(bytes));
    return {{mKept.back().data(), mKept.back().size()}, {type, flags, width, height}, 0};
  }
  // A mosaic RG of 12 bits in words, whose colours are everywhere the same.
  RawFrame Plain(unsigned red, unsigned green, unsigned blue) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < 16 * 16; ++i) {
      const unsigned word = i / 16 % 2 != i % 2 ? green : i % 2 == 0 ? red : blue;
      bytes.push_back(static_cast<std::uint8_t>(word));
      bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    return Of(0x20012, ConversionFlags::kBayerRG, bytes, 16, 16);
  }

 private:
  std::deque<std::vector<std::uint8_t>> mKept;  // the memory of the frames of a test
};

using Pixel = std::vector<std::uint8_t>;
Pixel PixelOf(const Picture& picture, std::size_t x, std::size_t y) {
  const auto at = picture.pixels.begin() + static_cast<std::ptrdiff_t>(4 * (y * picture.width + x));
  return {at, at + 4};
}

DevelopmentSettings Linear() {
  DevelopmentSettings settings;
  settings.tone.kind = ToneCurve::kLinear;
  return settings;
}

TEST_F(Frames, BecomePicturesOfColoursAndOfGray) {
  DevelopmentSettings settings = Linear();
  settings.black = {1024, 1024, 1024};
  settings.gains = {1, 2, 1};
  // (2048 - 1024) * 2 / 4095 and (1536 - 1024) / 4095 of 255.
  EXPECT_EQ(PixelOf(DevelopPicture(Plain(1024, 2048, 1536), settings), 7, 6), (Pixel{0, 128, 32, 255}));
  RawFrame gray = Plain(1536, 1536, 1536);
  gray.reading = {0x10003, 0, 16, 16};
  EXPECT_EQ(PixelOf(DevelopPicture(gray, settings), 7, 6), (Pixel{32, 64, 32, 255}));
  settings.method = ConversionFlags::kHalfSize;
  EXPECT_EQ(DevelopPicture(Plain(1, 2, 3), settings).width, 8U);
  EXPECT_EQ(DevelopPicture(gray, settings).width, 16U);
}

TEST_F(Frames, AreBalancedWhereTheyAreGray) {
  const RawFrame frame = Plain(600, 1200, 800);
  for (const std::size_t radius : {0U, 3U, 100U}) {
    const RGBValues gains = BalanceAt(frame, {}, 15, 0, radius);
    EXPECT_NEAR(gains.red, 2, 0.01);
    EXPECT_NEAR(gains.green, 1, 0.01);
    EXPECT_NEAR(gains.blue, 1.5, 0.01);
  }
  EXPECT_THROW(BalanceAt(Plain(4095, 4095, 4095), {}, 5, 5, 2), std::runtime_error);
}

TEST_F(Frames, ThatDoNotFitTheirBytesAreRefused) {
  RawFrame frame = Plain(1, 2, 3);
  frame.reading.height = 17;
  EXPECT_THROW(DevelopPicture(frame, {}), std::runtime_error);
  EXPECT_THROW(ListSamples(frame, 0, 16), std::runtime_error);
}

// Of every type: the counts under the cursor are those that the library decodes.
TEST_F(Frames, HaveTheCountsThatTheLibraryDecodes) {
  std::mt19937 random(3);
  for (unsigned long i = 0;; ++i) {
    const std::unique_ptr<const PixelType> type(PixelTypeFactory::CreatePixelType(i, {}));
    if (type == nullptr) break;
    const PixelTypeID id = type->GetTypeID();
    const bool isGray = (id & kColorSpaceMask) == kColorSpaceGrayscale;
    if (!isGray && ((id & kColorSpaceMask) != kColorSpaceRGB || type->IsBayerPattern())) continue;
    const LmTool::RawFrame scene = LmTool::EncodeScene(id, {32, 16}, 0);
    const RawFrame frame = Of(id, 0, scene.bytes, 32, 16);
    const Picture picture = DevelopPicture(frame, Linear());
    for (int probe = 0; probe < 20; ++probe) {
      const std::size_t x = random() % 32, y = random() % 16;
      std::istringstream samples(ListSamples(frame, x, y));
      std::string name;
      for (unsigned count = 0, most = 0; samples >> name >> count >> most;) {
        const std::size_t channel = name == "G" ? 1 : name == "B" ? 2 : 0;
        unsigned bits = 0;
        while (most >> bits != 0) ++bits;
        const unsigned shown = PixelOf(picture, x, y)[channel];
        const double expected = bits >= 8 ? 255.0 * count / most : shown >> (8 - bits) == count ? shown : -1;
        EXPECT_NEAR(shown, expected, 1) << std::hex << id << std::dec << ' ' << name << " at " << x << ", " << y;
      }
    }
  }
}

TEST_F(Frames, HaveAHistogramOfEachColour) {
  std::istringstream lines(ListHistogram(Plain(600, 940, 860)));
  std::string line;
  for (const auto& [name, part] : {std::pair{'R', 600 / 16}, {'G', 940 / 16}, {'B', 860 / 16}}) {
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line[0], name);
    std::istringstream counts(line.substr(1));
    for (int i = 0, count = 0; counts >> count; ++i) EXPECT_EQ(count, i == part ? (name == 'G' ? 128 : 64) : 0);
  }
}

TEST_F(Frames, HaveBitsThatAreDrawn) {
  EXPECT_EQ(ListBits(0x20011),
            "one 16-bit word a pixel, low byte first\n\np.7\tp.6\tp.5\tp.4\tp.3\tp.2\tp.1\tp.0\n"
            "-\t-\t-\t-\t-\t-\tp.9\tp.8\n");
}

}  // namespace
}  // namespace LmPage
