// RGB of 8 bits a channel or less: the bytes R G B or B G R, an unused fourth one, or a 5-6-5 word.
#include "encode/layout.h"

namespace LmTool {

namespace {

void EncodePixels(const Line& line, std::size_t pixelBytes, std::size_t red, std::size_t blue, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    out[red] = Top8(color.red);
    out[1] = Top8(color.green);
    out[blue] = Top8(color.blue);
    out += pixelBytes;
  }
}

}  // namespace

void EncodeRGB24(const Line& line, const SampleFormat&, std::uint8_t* out) { EncodePixels(line, 3, 0, 2, out); }
void EncodeBGR24(const Line& line, const SampleFormat&, std::uint8_t* out) { EncodePixels(line, 3, 2, 0, out); }
void EncodeRGB32(const Line& line, const SampleFormat&, std::uint8_t* out) { EncodePixels(line, 4, 0, 2, out); }
void EncodeBGR32(const Line& line, const SampleFormat&, std::uint8_t* out) { EncodePixels(line, 4, 2, 0, out); }

void EncodeRGB16(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    const std::uint32_t red = color.red, green = color.green, blue = color.blue;
    PutWord(out, (red & 0xF800) | green >> 10 << 5 | blue >> 11);
    out += 2;
  }
}

void EncodeRGB565p(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    const std::uint32_t red = color.red, green = color.green, blue = color.blue;
    PutWord(out, (blue & 0xF800) | green >> 10 << 5 | red >> 11);
    out += 2;
  }
}

}  // namespace LmTool
