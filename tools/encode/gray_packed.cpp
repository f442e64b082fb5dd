// Two samples p0 and p1 of 10 or 12 bits in three bytes: p0 bits 7-0 | p1 bits 3-0, p0 bits 11-8 | p1 bits 11-4.
#include "encode/layout.h"

namespace LmTool {

void EncodeGrayPacked(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (std::size_t i = 0; i < line.samples.size(); i += 2, out += 3) {
    const unsigned p0 = format.Top(line.samples[i]);
    const unsigned p1 = format.Top(line.samples[i + 1]);
    PutWord(out, p0 | p1 << 12);
    out[2] = static_cast<std::uint8_t>(p1 >> 4);
  }
}

}  // namespace LmTool
