// White balance from a gray patch: measures the patch, makes a filter of the gains that turn it gray, converts with it.
#include <LmImagingLib/LmImagingLib.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kRGB24 = 0x420002;

constexpr unsigned long kWidth = 320;
constexpr unsigned long kHeight = 240;

// Where the gray card lies in the picture. In a mosaic, places and sizes are even: the colours repeat every 2 pixels.
constexpr unsigned long kPatchX = 120, kPatchY = 80;
constexpr unsigned long kPatchSize = 64;

struct Color {
  double red, green, blue;
};

// A frame as a camera would deliver it under warm light: words of 10 bits from a sensor with the filters R G / G B. A
// gray card lies on a dark blue table.
std::vector<std::uint16_t> TakeFrame() {
  constexpr Color kLight{1.0, 0.8, 0.45};
  constexpr Color kCard{600, 600, 600}, kTable{80, 100, 300};
  std::vector<std::uint16_t> frame(kWidth * kHeight);
  for (unsigned long y = 0; y < kHeight; ++y) {
    for (unsigned long x = 0; x < kWidth; ++x) {
      const bool onCard = x >= kPatchX && x < kPatchX + kPatchSize && y >= kPatchY && y < kPatchY + kPatchSize;
      const Color& color = onCard ? kCard : kTable;
      const double sample = y % 2 == 0 && x % 2 == 0   ? color.red * kLight.red
                            : y % 2 == 1 && x % 2 == 1 ? color.blue * kLight.blue
                                                       : color.green * kLight.green;
      frame[y * kWidth + x] = static_cast<std::uint16_t>(sample);
    }
  }
  return frame;
}

std::vector<std::uint8_t> Convert(const ConstImageView& source, const ConvertOptions& options) {
  std::vector<std::uint8_t> picture(RequiredSize(kRGB24, source.width, source.height).value());
  const ImageView destination{kRGB24, picture.data(), picture.size(), source.width, source.height};
  const ConversionResult result = ConvertImage(source, destination, options);
  if (!result.IsOK()) {
    std::fprintf(stderr, "%s\n", result.message.c_str());
    std::exit(EXIT_FAILURE);
  }
  return picture;
}

Color Mean(const std::vector<std::uint8_t>& picture) {
  Color sum{};
  for (std::size_t i = 0; i < picture.size(); i += 3) {
    sum.red += picture[i];
    sum.green += picture[i + 1];
    sum.blue += picture[i + 2];
  }
  const double count = static_cast<double>(picture.size()) / 3;
  return {sum.red / count, sum.green / count, sum.blue / count};
}

void Print(const char* what, const Color& color) {
  std::printf("%-14s red %6.2f  green %6.2f  blue %6.2f\n", what, color.red, color.green, color.blue);
}

}  // namespace

int main() {
  const PFNCFormat& format = *FindPFNC("BayerRG10").format;
  const std::vector<std::uint16_t> frame = TakeFrame();
  const ConstImageView image{format.type, frame.data(), frame.size() * sizeof(std::uint16_t), kWidth, kHeight};

  // The patch is an image too: it begins inside the frame, and its lines lie as far apart as the frame's.
  const std::size_t offset = kPatchY * kWidth + kPatchX;
  ConstImageView patch = image;
  patch.data = frame.data() + offset;
  patch.size = image.size - offset * sizeof(std::uint16_t);
  patch.width = patch.height = kPatchSize;
  patch.lineSize = kWidth * sizeof(std::uint16_t);

  ConvertOptions options;
  options.flags = format.flags | ConversionFlags::kBilinear;
  const Color measured = Mean(Convert(patch, options));
  Print("gray patch", measured);
  if (std::min({measured.red, measured.green, measured.blue}) < 1) {
    std::fprintf(stderr, "The patch is too dark to find the light's colour\n");
    return EXIT_FAILURE;
  }

  // Gains below 1 would turn overexposed white into a colour, so the strongest channel keeps its own.
  const double strongest = std::max({measured.red, measured.green, measured.blue});
  const Color gains{strongest / measured.red, strongest / measured.green, strongest / measured.blue};
  RGBFilter filter(8);  // conversions look colours up at 8 bits, whatever the camera's width
  filter.SetMultipliers(gains.red, gains.green, gains.blue);
  Print("gains", gains);

  options.filter = &filter;
  const Color balanced = Mean(Convert(patch, options));
  Print("balanced patch", balanced);
  const std::vector<std::uint8_t> picture = Convert(image, options);

  // A gain moves whole steps of 8 bits: what is left of a tint is below one gain.
  const auto [least, most] = std::minmax({balanced.red, balanced.green, balanced.blue});
  const bool neutral = most - least <= std::max({gains.red, gains.green, gains.blue});
  const bool tableIsBlue = picture[2] > picture[0] && picture[2] > picture[1];
  if (!neutral || !tableIsBlue) {
    std::fprintf(stderr, "The picture is not balanced\n");
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
