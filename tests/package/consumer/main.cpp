#include <LmImagingLib/LmImagingLib.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

// Converts a frame of a camera as a program does that knows the public headers alone, and checks a pixel of it.
// Usage: consumer VERSION
int main(int argc, char** argv) {
  using namespace LmImagingLib;

  if (argc != 2 || std::strcmp(argv[1], GetVersion()) != 0) {
    std::fprintf(stderr, "consumer: the library says it is %s\n", GetVersion());
    return 1;
  }

  // 12-bit samples of a flat orange, as the camera's mosaic sees it, in 16-bit words.
  constexpr std::uint16_t kRed = 0xF00, kGreen = 0x800, kBlue = 0x100;
  constexpr unsigned long kWidth = 640, kHeight = 480;
  std::vector<std::uint16_t> frame(kWidth * kHeight);
  for (std::size_t i = 0; i < frame.size(); ++i) {
    const bool oddLine = i / kWidth % 2 != 0, oddColumn = i % 2 != 0;
    frame[i] = oddLine == oddColumn ? (oddLine ? kBlue : kRed) : kGreen;
  }

  const PFNCResult camera = FindPFNC("BayerRG12");
  if (!camera) {
    std::fprintf(stderr, "consumer: %s\n", camera.reason);
    return 1;
  }
  RGBFilter halfGreen(8);
  halfGreen.SetMultipliers(1.0, 0.5, 1.0);
  ConvertOptions options;
  options.filter = &halfGreen;
  options.flags = camera.format->flags | ConversionFlags::kBilinear;
  const PixelTypeID bgr32 = 0x20007;
  std::vector<std::uint8_t> picture(RequiredSize(bgr32, kWidth, kHeight).value());
  const ConversionResult result =
      ConvertImage({camera.format->type, frame.data(), frame.size() * sizeof frame[0], kWidth, kHeight},
                   {bgr32, picture.data(), picture.size(), kWidth, kHeight}, options);
  if (!result.IsOK()) {
    std::fprintf(stderr, "consumer: %s\n", result.message.c_str());
    return 1;
  }

  const std::uint8_t* pixel = picture.data() + 4 * (100 * kWidth + 101);
  if (pixel[0] != kBlue >> 4 || pixel[1] != kGreen >> 5 || pixel[2] != kRed >> 4) {
    std::fprintf(stderr, "consumer: a pixel is blue %d, green %d, red %d\n", pixel[0], pixel[1], pixel[2]);
    return 1;
  }
  return 0;
}
