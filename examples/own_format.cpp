// A pixel type and a converter of your own: registered once, they work like the built-in ones.
#include <LmImagingLib/LmImagingLib.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>

using LmBaseLib::Result;
using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kBGR24 = 0x420006;
constexpr PixelTypeID kBGR32 = 0x20007;

// Ids above 32 bits never meet a built-in one.
constexpr PixelTypeID kThermal = (PixelTypeID{1} << 32) | kColorSpaceGrayscale | 1;

constexpr unsigned short kBitSize = 16;
constexpr unsigned short kByteSize = 2;

// Temperatures of an infrared camera: 16-bit words, low byte first, in steps of 0.1 K. Cold is blue, warm is red.
class ThermalToBGR24 : public PixelConverter {
 public:
  ThermalToBGR24() : PixelConverter(kThermal, kBGR24, kByteSize, 3, 1, 1) {}

  // Called by `Convert` for each line; does not depend on the line, so any number of threads may be in it.
  Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override {
    const auto* from = static_cast<const std::uint8_t*>(source);
    auto* to = static_cast<std::uint8_t*>(destination);
    for (unsigned long i = 0; i < pixelCount; ++i, from += kByteSize, to += 3) {
      const int kelvin10 = from[0] | from[1] << 8;
      const int warmth = std::clamp((kelvin10 - kCold) * 255 / (kWarm - kCold), 0, 255);
      to[0] = static_cast<std::uint8_t>(255 - warmth);
      to[1] = static_cast<std::uint8_t>(std::min(warmth, 255 - warmth));
      to[2] = static_cast<std::uint8_t>(warmth);
    }
    return Result::OK;
  }

 private:
  static constexpr int kCold = 2732;  // 0 degrees Celsius
  static constexpr int kWarm = 3132;  // 40 degrees
};

bool Succeeded(const Result& result, const char* what) {
  if (!result.IsOK()) std::fprintf(stderr, "%s failed with code %d\n", what, result.GetCode());
  return result.IsOK();
}

// The registry refers to converters and never lets go of them: they live as long as the program.
bool RegisterThermal() {
  static const ThermalToBGR24 sToBGR24;
  // Every other destination is a chain through one that there is.
  static const ComplexConverter sToBGR32(sToBGR24, *PixelTypeFactory::FindConverter(kBGR24, kBGR32));

  const PixelType thermal(kThermal, kBitSize, kByteSize, false);
  return Succeeded(PixelTypeFactory::RegisterPixelType(kThermal, &thermal, "Thermal, 0.1 K"), "The type") &&
         Succeeded(PixelTypeFactory::RegisterPixelConverter(sToBGR24), "The converter") &&
         Succeeded(PixelTypeFactory::RegisterPixelConverter(sToBGR32), "The chain");
}

}  // namespace

int main() {
  if (!RegisterThermal()) return EXIT_FAILURE;

  // From here on the type is used like a built-in one.
  const std::uint16_t frame[] = {2732, 2932, 3132, 2000, 4000, 2832};
  const ConstImageView source{kThermal, frame, sizeof frame, 3, 2};
  std::uint8_t picture[3 * 2 * 4] = {};
  const ImageView destination{kBGR32, picture, sizeof picture, 3, 2};
  const ConversionResult result = ConvertImage(source, destination);
  if (!result.IsOK()) {
    std::fprintf(stderr, "%s\n", result.message.c_str());
    return EXIT_FAILURE;
  }

  const std::uint8_t expected[] = {255, 0, 0, 0, 128, 127, 127, 0, 0,   0,  255, 0,
                                   255, 0, 0, 0, 0,   0,   255, 0, 192, 63, 63,  0};
  for (std::size_t i = 0; i < sizeof frame / sizeof *frame; ++i) {
    const std::uint8_t* pixel = picture + 4 * i;
    std::printf("%5.1f K  blue %3u  green %3u  red %3u\n", frame[i] / 10.0, pixel[0], pixel[1], pixel[2]);
  }
  if (!std::equal(std::begin(picture), std::end(picture), std::begin(expected))) {
    std::fprintf(stderr, "These are not the colours of the temperatures\n");
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
