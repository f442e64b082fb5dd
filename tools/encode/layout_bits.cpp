#include "encode/layout_bits.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "encode/layout.h"
#include "encode/readout.h"
#include "frame.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr std::size_t kProbed = 8;  // pixels: whole groups of every layout

Line BlackLine(std::size_t chromaPixels) {
  Line line{kProbed, std::vector<Color16>(kProbed), {}, std::vector<std::uint16_t>(kProbed)};
  if (chromaPixels != 0) line.yuv.resize(kProbed / chromaPixels);
  return line;
}

struct Sample {
  char name;
  unsigned pixel;
  std::uint16_t* value;
};

// Everything that an encoder may look at. Those that it does not use leave no trace.
std::vector<Sample> SamplesOf(Line& line, std::size_t chromaPixels) {
  std::vector<Sample> samples;
  for (unsigned i = 0; i < kProbed; ++i) {
    samples.push_back({'p', i, &line.samples[i]});
    samples.push_back({'R', i, &line.pixels[i].red});
    samples.push_back({'G', i, &line.pixels[i].green});
    samples.push_back({'B', i, &line.pixels[i].blue});
    if (chromaPixels == 0) continue;
    YuvGroup& group = line.yuv[i / chromaPixels];
    samples.push_back({'Y', i, &group.luma[i % chromaPixels]});
    if (i % chromaPixels != 0) continue;
    samples.push_back({'U', i, &group.u});
    samples.push_back({'V', i, &group.v});
  }
  return samples;
}

// What the bits of some pixels hold. Formats that keep fewer bits of a channel than of others keep the upper ones.
std::vector<LayoutBits::Byte> Probe(const Layout& layout, const SampleFormat& format, std::size_t size) {
  Line line = BlackLine(layout.chromaPixels);
  const auto encode = [&] {
    std::vector<std::uint8_t> bytes(kProbed * kMostPixelBytes);
    layout.encode(line, format, bytes.data());
    return bytes;
  };
  const std::vector<std::uint8_t> black = encode();

  std::vector<LayoutBits::Byte> map(size);
  for (const Sample& sample : SamplesOf(line, layout.chromaPixels)) {
    unsigned number = 0;
    for (unsigned bit = 16 - format.bits; bit < 16; ++bit) {
      *sample.value = static_cast<std::uint16_t>(1U << bit);
      const std::vector<std::uint8_t> lit = encode();
      *sample.value = 0;
      bool stored = false;
      for (std::size_t i = 0; i < size; ++i) {
        for (unsigned k = 0; k < 8; ++k) {
          if (((black[i] ^ lit[i]) >> k & 1) == 0) continue;
          map[i][k] = {sample.name, sample.pixel, number};
          stored = true;
        }
      }
      if (stored) ++number;
    }
  }
  return map;
}

// Whether the bytes hold nothing but the first pixels.
bool HoldOnly(const LayoutBits::Byte* begin, const LayoutBits::Byte* end, std::size_t pixels) {
  return std::all_of(begin, end, [&](const LayoutBits::Byte& byte) {
    return std::all_of(byte.begin(), byte.end(), [&](const StoredBit& bit) { return bit.pixel < pixels; });
  });
}

}  // namespace

LayoutBits BitsOf(const PixelTypeID& type) {
  const Layout& layout = LayoutOf(type);
  const SampleFormat format{layout.bits, (type & kNormalizedFlag) != 0};
  const FrameLayout frame = SourceLayout(type, {kProbed, 1});
  const std::size_t planes = std::min<std::size_t>(frame.lines, 3);  // a fourth one is unused
  const std::vector<LayoutBits::Byte> map = Probe(layout, format, frame.lineBytes * planes);

  LayoutBits bits{kProbed, {}};
  for (const std::size_t pixels : {std::size_t{4}, std::size_t{2}, std::size_t{1}}) {
    const bool whole = frame.lineBytes * pixels % kProbed == 0 && pixels >= layout.chromaPixels;
    if (whole && HoldOnly(map.data(), map.data() + frame.lineBytes * pixels / kProbed, pixels)) bits.pixels = pixels;
  }
  const std::size_t groupBytes = frame.lineBytes * bits.pixels / kProbed;
  for (std::size_t plane = 0; plane < planes; ++plane) {
    const auto begin = map.begin() + static_cast<std::ptrdiff_t>(plane * frame.lineBytes);
    bits.planes.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(groupBytes));
  }
  return bits;
}

unsigned BitsOfSample(const LayoutBits& layout, char sample) {
  unsigned bits = 0;
  for (const auto& plane : layout.planes) {
    for (const LayoutBits::Byte& byte : plane) {
      for (const StoredBit& bit : byte) {
        if (bit.sample == sample) bits = std::max(bits, bit.bit + 1);
      }
    }
  }
  return bits;
}

std::vector<std::size_t> ReadoutOf(const PixelTypeID& type) {
  std::vector<std::uint16_t> pixels(8);
  std::iota(pixels.begin(), pixels.end(), std::uint16_t{0});
  pixels = InReadoutOrder(type, std::move(pixels));
  return {pixels.begin(), pixels.end()};
}

}  // namespace LmTool
