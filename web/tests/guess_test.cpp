#include "guess.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelConverter.h"
#include "encode/encode_scene.h"

namespace LmPage {
namespace {

using namespace LmImagingLib;

class Guesses : public testing::Test {
 protected:
  static void SetUpTestSuite() { RegisterExtendedFormats(); }

  static PFNCFormat Format(const char* name) { return *FindPFNC(name).format; }
  static std::vector<std::uint8_t> Scene(const PFNCFormat& format, std::size_t width, std::size_t height) {
    return LmTool::EncodeScene(format.type, {width, height}, format.flags).bytes;
  }
  static std::string Describe(const Guess& guess) {
    const PFNCFormat* const format = FindPFNC(guess.reading.type, guess.reading.flags);
    return (format != nullptr ? format->name : "?") + (' ' + std::to_string(guess.reading.width)) + 'x' +
           std::to_string(guess.reading.height);
  }
  static std::string First(const std::vector<std::uint8_t>& bytes, const GuessOptions& options = {}) {
    const std::vector<Guess> guesses = GuessReadings({bytes.data(), bytes.size()}, options);
    return guesses.empty() ? "nothing" : Describe(guesses[0]);
  }
};

TEST_F(Guesses, FindFormatAndSizeOfTheScene) {
  const char* const names[] = {"Mono8",           "Mono4p",          "Mono10",        "Mono10p",        "Mono12p",
                               "Mono12Packed",    "Mono14p",         "BayerRG8",      "BayerRG10",      "BayerGR10",
                               "BayerRG12",       "BayerRG10p",      "BayerRG12p",    "BayerRG14p",     "RGB8",
                               "BayerRG10Packed", "BayerRG12Packed", "RGB10",         "RGB12p",         "RGB8_Planar",
                               "RGBa8",           "YUV422_8",        "YUV422_8_UYVY", "YUV411_8_UYYVYY"};
  for (const char* const name : names) {
    EXPECT_EQ(First(Scene(Format(name), 640, 480)), std::string(name) + " 640x480");
    EXPECT_EQ(First(Scene(Format(name), 808, 608)), std::string(name) + " 808x608");
  }
}

TEST_F(Guesses, KeepToAKnownSize) {
  const std::vector<std::uint8_t> bytes = Scene(Format("BayerRG8"), 640, 480);
  GuessOptions options;
  options.width = 640;
  options.height = 480;
  EXPECT_EQ(First(bytes, options), "BayerRG8 640x480");
  options.width = 480;
  options.height = 640;
  for (const Guess& guess : GuessReadings({bytes.data(), bytes.size()}, options)) {
    EXPECT_EQ(guess.reading.width, 480U);
    EXPECT_EQ(guess.reading.height, 640U);
  }
}

// Red and blue are not known from the bytes, so the other orders follow the first.
TEST_F(Guesses, OfferTheOtherOrdersOfColours) {
  const std::vector<std::uint8_t> bytes = Scene(Format("BayerGB8"), 640, 480);
  const std::vector<Guess> guesses = GuessReadings({bytes.data(), bytes.size()});
  ASSERT_GE(guesses.size(), 4U);
  unsigned long seen = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(guesses[i].reading.type, 0x20010);
    seen |= guesses[i].reading.flags;
  }
  EXPECT_EQ(seen, 0xF0UL);
  EXPECT_NE(guesses[0].reading.flags & (ConversionFlags::kBayerGR | ConversionFlags::kBayerGB), 0UL);
}

TEST_F(Guesses, TakeAnyBytes) {
  std::mt19937 random(1);
  for (const std::size_t size : {0U, 1U, 63U, 64U, 1021U, 4096U, 65537U}) {
    std::vector<std::uint8_t> bytes(size);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    for (const Guess& guess : GuessReadings({bytes.data(), size})) EXPECT_GT(guess.reading.width, 0U);
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    GuessReadings({bytes.data(), size});
  }
}

}  // namespace
}  // namespace LmPage
