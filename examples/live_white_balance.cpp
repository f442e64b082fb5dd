// A live view that follows the light: each frame is measured, and the gains move towards the estimate a little at a
// time, so that no single frame makes the picture flicker.
#include <LmImagingLib/LmImagingLib.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kRGB24 = 0x20002;
constexpr unsigned long kWidth = 320, kHeight = 240;
constexpr double kEase = 0.15;  // of the way to the estimate in each frame

// A frame of 10-bit words from a sensor with the filters R G / G B: gray stripes, under a light that turns from white
// to red.
std::vector<std::uint16_t> TakeFrame(double warmth) {
  const double red = 1.0, green = 1.0 - 0.2 * warmth, blue = 1.0 - 0.5 * warmth;
  std::vector<std::uint16_t> frame(kWidth * kHeight);
  for (unsigned long y = 0; y < kHeight; ++y) {
    for (unsigned long x = 0; x < kWidth; ++x) {
      const double gray = 200.0 + 80.0 * static_cast<double>(x / 32 % 8);
      const double light = y % 2 == 0 && x % 2 == 0 ? red : y % 2 == 1 && x % 2 == 1 ? blue : green;
      frame[y * kWidth + x] = static_cast<std::uint16_t>(gray * light);
    }
  }
  return frame;
}

double Eased(double now, double target) { return now + kEase * (target - now); }

// How far the mean colour of a picture is from gray, in steps of 8-bit values.
double Tint(const std::vector<std::uint8_t>& picture) {
  double sums[3] = {};
  for (std::size_t i = 0; i < picture.size(); ++i) sums[i % 3] += picture[i];
  const auto [least, most] = std::minmax({sums[0], sums[1], sums[2]});
  return (most - least) / (kWidth * kHeight);
}

[[noreturn]] void Fail(const char* message) {
  std::fprintf(stderr, "%s\n", message);
  std::exit(EXIT_FAILURE);
}

}  // namespace

int main() {
  const PFNCFormat& format = *FindPFNC("BayerRG10").format;
  WhiteBalanceOptions measuring;
  measuring.flags = format.flags;
  DevelopOptions developing;
  developing.flags = format.flags;
  DevelopmentSettings settings;  // sRGB; the gains begin at 1
  std::vector<std::uint8_t> picture(kWidth * kHeight * 3);

  double tint = 0;
  for (int k = 0; k < 80; ++k) {
    const std::vector<std::uint16_t> frame = TakeFrame(std::min(k / 20.0, 1.0));
    const ConstImageView source{format.type, frame.data(), frame.size() * sizeof(std::uint16_t), kWidth, kHeight};

    const WhiteBalance found = EstimateWhiteBalance(source, measuring);
    if (!found.result.IsOK()) Fail(found.message.c_str());
    // A frame that is too dark or overexposed leaves the gains as they are.
    if (found.IsFound()) {
      settings.gains = {Eased(settings.gains.red, found.gains.red), Eased(settings.gains.green, found.gains.green),
                        Eased(settings.gains.blue, found.gains.blue)};
    }
    // Making a development costs a few tables. Where the light is steady, keep the one that there is.
    Development development;
    if (!Development::Make(settings, development).IsOK()) Fail("The gains do not fit");
    const ConversionResult result =
        Develop(development, source, {kRGB24, picture.data(), picture.size(), kWidth, kHeight}, developing);
    if (!result.IsOK()) Fail(result.message.c_str());

    tint = Tint(picture);
    if (k % 10 == 9) {
      std::printf("frame %2d  gains %.3f %.3f %.3f  tint %.1f\n", k + 1, settings.gains.red, settings.gains.green,
                  settings.gains.blue, tint);
    }
  }
  if (tint > 1) Fail("The picture is not gray");
  return EXIT_SUCCESS;
}
