// RGB of 10 bits a channel in four bytes, and of 12 bits in four and a half.
#include "encode/layout.h"

namespace LmTool {

// Byte 0: R bits 1-0, G bits 1-0, B bits 1-0 in its bits 5-0; bytes 1 to 3: B, G, R bits 9-2.
void EncodeBGR10PackedV1(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    const unsigned red = format.Top(color.red);
    const unsigned green = format.Top(color.green);
    const unsigned blue = format.Top(color.blue);
    out[0] = static_cast<std::uint8_t>((red & 3) << 4 | (green & 3) << 2 | (blue & 3));
    out[1] = static_cast<std::uint8_t>(blue >> 2);
    out[2] = static_cast<std::uint8_t>(green >> 2);
    out[3] = static_cast<std::uint8_t>(red >> 2);
    out += 4;
  }
}

// A 32-bit word, low byte first: B in bits 9-0, G in 19-10, R in 29-20.
void EncodeBGR10PackedV2(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    const std::uint32_t word = std::uint32_t{format.Top(color.red)} << 20 |
                               std::uint32_t{format.Top(color.green)} << 10 | format.Top(color.blue);
    PutWord(out, word);
    PutWord(out + 2, word >> 16);
    out += 4;
  }
}

// The samples R0 G0 B0 R1 G1 B1 two by two in three bytes: top 8 bits, low 4 bits of both (the first in bits 3-0),
// top 8 bits.
void EncodeRGB12PackedV1(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  std::vector<unsigned> samples;
  samples.reserve(line.pixels.size() * 3);
  for (const Color16& color : line.pixels) {
    for (const std::uint16_t channel : {color.red, color.green, color.blue}) samples.push_back(format.Top(channel));
  }
  for (std::size_t i = 0; i < samples.size(); i += 2, out += 3) {
    out[0] = static_cast<std::uint8_t>(samples[i] >> 4);
    out[1] = static_cast<std::uint8_t>((samples[i] & 0xF) | (samples[i + 1] & 0xF) << 4);
    out[2] = static_cast<std::uint8_t>(samples[i + 1] >> 4);
  }
}

}  // namespace LmTool
