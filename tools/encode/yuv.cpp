// YUV in studio range: 4:4:4, 4:2:2 and 4:1:1, in bytes, and 4:2:2 in 16-bit words.
#include <algorithm>

#include "encode/layout.h"
#include "encode/nearest_yuv.h"

namespace LmTool {

namespace {

template <std::size_t kPixels, class Store>
void ForEachGroup(const Line& line, Store store) {
  for (std::size_t i = 0; i < line.pixels.size(); i += kPixels) store(NearestYuv(&line.pixels[i], kPixels));
}

std::uint8_t* Put(std::uint8_t* out, std::initializer_list<std::uint8_t> bytes) {
  return std::copy(bytes.begin(), bytes.end(), out);
}

}  // namespace

void EncodeYUV8(const Line& line, const SampleFormat&, std::uint8_t* out) {
  ForEachGroup<2>(line, [&](const YuvGroup& g) { out = Put(out, {g.luma[0], g.u, g.luma[1], g.v}); });
}

void EncodeYUV8_422_GEV(const Line& line, const SampleFormat&, std::uint8_t* out) {
  ForEachGroup<2>(line, [&](const YuvGroup& g) { out = Put(out, {g.u, g.luma[0], g.v, g.luma[1]}); });
}

// The two lowest of the 10 bits stay 0: decoders drop them.
void EncodeYUV10(const Line& line, const SampleFormat& format, std::uint8_t* out) {
  ForEachGroup<2>(line, [&](const YuvGroup& g) {
    for (const std::uint8_t sample : {g.luma[0], g.u, g.luma[1], g.v}) {
      PutWord(out, format.Word(static_cast<std::uint16_t>(sample << 8)));
      out += 2;
    }
  });
}

void EncodeYUV8_444(const Line& line, const SampleFormat&, std::uint8_t* out) {
  ForEachGroup<1>(line, [&](const YuvGroup& g) { out = Put(out, {g.luma[0], g.u, g.v}); });
}

void EncodeYUV8_444_GEV(const Line& line, const SampleFormat&, std::uint8_t* out) {
  ForEachGroup<1>(line, [&](const YuvGroup& g) { out = Put(out, {g.u, g.luma[0], g.v}); });
}

void EncodeYCrCb(const Line& line, const SampleFormat&, std::uint8_t* out) {
  ForEachGroup<1>(line, [&](const YuvGroup& g) { out = Put(out, {g.luma[0], g.v, g.u}); });
}

void EncodeYUV8_411(const Line& line, const SampleFormat&, std::uint8_t* out) {
  ForEachGroup<4>(line, [&](const YuvGroup& g) {
    out = Put(out, {g.u, g.luma[0], g.luma[1], g.v, g.luma[2], g.luma[3]});
  });
}

}  // namespace LmTool
