// RGB of 10 bits a channel in four bytes, and of 12 bits in four and a half.
#include "encode/layout.h"

namespace LmTool {

namespace {

// Byte 0: the low 2 bits of the first, second and third sample from its bit 0 on; bytes 1 to 3: their bits 9-2.
void PutV1(unsigned first, unsigned second, unsigned third, std::uint8_t* out) {
  out[0] = static_cast<std::uint8_t>((third & 3) << 4 | (second & 3) << 2 | (first & 3));
  out[1] = static_cast<std::uint8_t>(first >> 2);
  out[2] = static_cast<std::uint8_t>(second >> 2);
  out[3] = static_cast<std::uint8_t>(third >> 2);
}

// A 32-bit word, low byte first: the first sample in bits 9-0, the second in 19-10, the third in 29-20.
void PutV2(std::uint32_t first, std::uint32_t second, std::uint32_t third, std::uint8_t* out) {
  const std::uint32_t word = third << 20 | second << 10 | first;
  PutWord(out, word);
  PutWord(out + 2, word >> 16);
}

}  // namespace

void EncodeBGR10PackedV1(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    PutV1(format.Top(color.blue), format.Top(color.green), format.Top(color.red), out);
    out += 4;
  }
}

void EncodeRGB10V1Packed(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    PutV1(format.Top(color.red), format.Top(color.green), format.Top(color.blue), out);
    out += 4;
  }
}

void EncodeBGR10PackedV2(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    PutV2(format.Top(color.blue), format.Top(color.green), format.Top(color.red), out);
    out += 4;
  }
}

void EncodeRGB10p32(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const Color16& color : line.pixels) {
    PutV2(format.Top(color.red), format.Top(color.green), format.Top(color.blue), out);
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
