// Samples in streams of bits, the lowest first, and those of MIPI CSI-2, whose top 8 bits come before their low bits.
#include <algorithm>

#include "encode/layout.h"

namespace LmTool {

namespace {

// Writes bits one after the other, into bytes that they fill from bit 0 on.
class BitWriter {
 public:
  explicit BitWriter(std::uint8_t* out) : mOut(out) {}

  void Put(unsigned value, unsigned bits) {
    for (unsigned k = 0; k < bits; ++k, ++mBit) {
      std::uint8_t& byte = mOut[mBit / 8];
      if (mBit % 8 == 0) byte = 0;
      byte = static_cast<std::uint8_t>(byte | (value >> k & 1) << mBit % 8);
    }
  }

 private:
  std::uint8_t* mOut;
  std::size_t mBit = 0;
};

void EncodePixels(const Line& line, unsigned bits, bool blueFirst, std::uint8_t* out) {
  BitWriter writer(out);
  for (std::size_t i = 0; i < line.width; ++i) {
    const Color16& color = line.pixels[i];
    writer.Put((blueFirst ? color.blue : color.red) >> (16 - bits), bits);
    writer.Put(color.green >> (16 - bits), bits);
    writer.Put((blueFirst ? color.red : color.blue) >> (16 - bits), bits);
  }
}

}  // namespace

void EncodeGrayStream(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  BitWriter writer(out);
  for (std::size_t i = 0; i < line.width; ++i) writer.Put(format.Top(line.samples[i]), format.bits);
}

void EncodeRGBStream(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  EncodePixels(line, format.bits, false, out);
}

void EncodeBGRStream(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  EncodePixels(line, format.bits, true, out);
}

void EncodeCSI2Raw(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  const std::size_t together = format.bits == 12 ? 2 : 4;
  BitWriter writer(out);
  for (std::size_t first = 0; first < line.width; first += together) {
    const std::size_t end = std::min(first + together, line.width);
    for (std::size_t i = first; i < end; ++i) writer.Put(line.samples[i] >> 8, 8);
    for (std::size_t i = first; i < end; ++i) writer.Put(format.Top(line.samples[i]), format.bits - 8);
  }
}

}  // namespace LmTool
