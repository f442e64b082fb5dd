// Two samples p0 and p1 in three bytes: p0 top 8 bits | p1 low bits, p0 low bits | p1 top 8 bits.
#include "encode/layout.h"

namespace LmTool {

void EncodeGrayPackedGEV(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  const unsigned lowBits = format.bits - 8;
  const unsigned lowMask = (1U << lowBits) - 1;
  for (std::size_t i = 0; i < line.samples.size(); i += 2, out += 3) {
    const unsigned p0 = format.Top(line.samples[i]);
    const unsigned p1 = format.Top(line.samples[i + 1]);
    out[0] = static_cast<std::uint8_t>(p0 >> lowBits);
    out[1] = static_cast<std::uint8_t>((p0 & lowMask) | (p1 & lowMask) << 4);
    out[2] = static_cast<std::uint8_t>(p1 >> lowBits);
  }
}

}  // namespace LmTool
