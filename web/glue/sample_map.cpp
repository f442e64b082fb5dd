#include "sample_map.h"

#include <algorithm>

#include "encode/layout_bits.h"

namespace LmPage {

using LmTool::LayoutBits;
using LmTool::StoredBit;

namespace {

constexpr LmImagingLib::PixelTypeID kFormat = LmImagingLib::kColorSpaceMask | LmImagingLib::kFormatNumberMask;
constexpr LmImagingLib::PixelTypeID kSigned = 0x10401;

template <class Value, class Matches>
Value& FindOrAdd(std::vector<Value>& values, const Value& added, const Matches& matches) {
  const auto found = std::find_if(values.begin(), values.end(), matches);
  if (found != values.end()) return *found;
  return values.emplace_back(added);
}

// Bits come from the lowest one of a byte on, so a bit that continues the last piece is its next higher one.
void Add(MappedSample& sample, const StoredBit& bit, std::uint32_t byte, unsigned at) {
  if (sample.count != 0) {
    Piece& last = sample.pieces[sample.count - 1];
    const bool continues =
        last.byte == byte && (last.mask >> (at - last.down)) == 0 && bit.bit == last.up + at - last.down;
    if (continues) {
      last.mask = static_cast<std::uint8_t>(last.mask | 1U << (at - last.down));
      return;
    }
  }
  sample.pieces[sample.count++] = {byte, static_cast<std::uint8_t>(at), 1, static_cast<std::uint8_t>(bit.bit)};
}

// Samples of a group are as many as its pixels, or fewer where pixels share them.
void Sort(const SampleMap& map, Channel& channel) {
  std::sort(channel.samples.begin(), channel.samples.end(),
            [](const MappedSample& a, const MappedSample& b) { return a.pixel < b.pixel; });
  channel.step = map.pixels / channel.samples.size();
}

}  // namespace

SampleMap MapOf(const LmImagingLib::PixelTypeID& type) {
  const LayoutBits layout = LmTool::BitsOf(type);
  const bool isSigned = (type & kFormat) == kSigned;
  SampleMap map{layout.pixels, layout.planes[0].size(), layout.planes.size(), {}, {}};
  for (std::uint32_t plane = 0; plane < layout.planes.size(); ++plane) {
    for (std::uint32_t byte = 0; byte < map.bytes; ++byte) {
      unsigned unused = 0;
      for (unsigned at = 0; at < 8; ++at) {
        const StoredBit& bit = layout.planes[plane][byte][at];
        if (bit.sample == 0) {
          unused |= 1U << at;
          continue;
        }
        Channel& channel =
            FindOrAdd(map.channels, {bit.sample, plane}, [&](const Channel& c) { return c.name == bit.sample; });
        channel.bits = std::max(channel.bits, bit.bit + 1);
        MappedSample& sample =
            FindOrAdd(channel.samples, {bit.pixel}, [&](const MappedSample& s) { return s.pixel == bit.pixel; });
        sample.invert = isSigned ? 0x80 : 0;
        Add(sample, bit, byte, at);
      }
      map.unused.push_back(static_cast<std::uint8_t>(unused));
    }
  }
  for (Channel& channel : map.channels) Sort(map, channel);
  return map;
}

}  // namespace LmPage
