// One sample a pixel, in a byte or in a 16-bit word with its low byte first.
#include "encode/layout.h"

namespace LmTool {

void EncodeGray8(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const std::uint16_t sample : line.samples) *out++ = static_cast<std::uint8_t>(format.Top(sample));
}

void EncodeGray8Signed(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const std::uint16_t sample : line.samples) *out++ = static_cast<std::uint8_t>(format.Top(sample) ^ 0x80);
}

void EncodeGray16(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (std::size_t i = 0; i < line.samples.size(); ++i) PutWord(out + 2 * i, format.Word(line.samples[i]));
}

}  // namespace LmTool
