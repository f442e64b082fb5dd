// YUV in studio range: 4:4:4, 4:2:2 and 4:1:1, in bytes, and 4:2:2 in 16-bit words.
#include <initializer_list>

#include "encode/layout.h"

namespace LmTool {

namespace {

std::uint8_t* Put(std::uint8_t* out, std::initializer_list<std::uint16_t> samples) {
  for (const std::uint16_t sample : samples) *out++ = static_cast<std::uint8_t>(sample >> 8);
  return out;
}

}  // namespace

void EncodeYUV8(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const YuvGroup& g : line.yuv) out = Put(out, {g.luma[0], g.u, g.luma[1], g.v});
}

void EncodeYUV8_422_GEV(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const YuvGroup& g : line.yuv) out = Put(out, {g.u, g.luma[0], g.v, g.luma[1]});
}

void EncodeYUV10(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  for (const YuvGroup& g : line.yuv) {
    for (const std::uint16_t sample : {g.luma[0], g.u, g.luma[1], g.v}) {
      PutWord(out, format.Word(sample));
      out += 2;
    }
  }
}

void EncodeYUV8_444(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const YuvGroup& g : line.yuv) out = Put(out, {g.luma[0], g.u, g.v});
}

void EncodeYUV8_444_GEV(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const YuvGroup& g : line.yuv) out = Put(out, {g.u, g.luma[0], g.v});
}

void EncodeYCrCb(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const YuvGroup& g : line.yuv) out = Put(out, {g.luma[0], g.v, g.u});
}

void EncodeYUV8_411(const Line& line, const SampleFormat&, std::uint8_t* out) {
  for (const YuvGroup& g : line.yuv) out = Put(out, {g.u, g.luma[0], g.luma[1], g.v, g.luma[2], g.luma[3]});
}

}  // namespace LmTool
