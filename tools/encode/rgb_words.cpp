// RGB of 16-bit words, low byte first: R G B or B G R, and an unused fourth one.
#include "encode/layout.h"

namespace LmTool {

namespace {

void EncodePixels(const Line& line, const SampleFormat& format, std::size_t pixelWords, std::size_t red,
                  std::size_t blue, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    PutWord(out + 2 * red, format.Word(color.red));
    PutWord(out + 2, format.Word(color.green));
    PutWord(out + 2 * blue, format.Word(color.blue));
    out += 2 * pixelWords;
  }
}

}  // namespace

void EncodeRGB48(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  EncodePixels(line, format, 3, 0, 2, out);
}

void EncodeBGR48(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  EncodePixels(line, format, 3, 2, 0, out);
}

void EncodeRGB64(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  EncodePixels(line, format, 4, 0, 2, out);
}

void EncodeBGR64(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  EncodePixels(line, format, 4, 2, 0, out);
}

}  // namespace LmTool
