// A plane each of R, G and B, of bytes or of 16-bit words.
#include "encode/layout.h"

namespace LmTool {

namespace {

constexpr std::uint16_t Color16::*kPlanes[] = {&Color16::red, &Color16::green, &Color16::blue};

}  // namespace

void EncodeRGBPlanar8(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const auto channel : kPlanes) {
    for (const Color16& color : line.pixels) *out++ = static_cast<std::uint8_t>(format.Top(color.*channel));
  }
}

void EncodeRGBPlanar16(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const auto channel : kPlanes) {
    for (const Color16& color : line.pixels) {
      PutWord(out, format.Word(color.*channel));
      out += 2;
    }
  }
}

}  // namespace LmTool
