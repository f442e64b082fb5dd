#include "model/line.h"

#include <algorithm>
#include <cmath>

namespace model {

std::size_t Stage::SourceLineSize(std::size_t pixels) const {
  if (copiesPairs) pixels += pixels % 2;
  return (pixels * sourceBits + (wholeBytes ? 7 : 0)) / 8;
}

std::size_t Stage::DestinationLineSize(std::size_t pixels) const {
  return to.pixelBytes == 0 || copiesPairs ? SourceLineSize(pixels) : pixels * to.pixelBytes;
}

bool Line::IsInPicture(std::size_t offset) const {
  const std::size_t plane = stride * call.destinationHeight;
  const std::size_t planes = stage.to.writer == Writer::PLANAR ? 3 : 1;
  for (std::size_t k = 0; k < planes; ++k) {
    if (offset < k * plane || offset - k * plane >= stride * call.lines) continue;
    if ((offset - k * plane) % stride < pixels * stage.to.pixelBytes) return true;
  }
  return false;
}

void Line::Store(std::size_t i, Color color, unsigned depth, std::size_t row) {
  const Destination& to = stage.to;
  const auto fit = [&](unsigned value) {
    if (!full) return value << to.eightBitShift;
    return to.depth >= depth ? value << (to.depth - depth) : value >> (depth - to.depth);
  };
  const unsigned luma = fit((77 * color.red + 150 * color.green + 29 * color.blue + 128) / 256);
  const unsigned r = fit(color.red), g = fit(color.green), b = fit(color.blue);
  const unsigned fourth = (call.flags & 0x2000) != 0 ? 0xFFFF : 0;
  const std::size_t line = row * stride;
  const auto write = [&](std::size_t offset, unsigned value) {
    if (i < pixels || !IsInPicture(mDestinationOffset + offset)) WriteByte(offset, value & 0xFF);
  };
  const auto samples = [&](std::size_t begin, std::size_t bytes, std::initializer_list<unsigned> values) {
    std::size_t at = begin + i * bytes * values.size();
    for (const unsigned value : values) {
      for (std::size_t byte = 0; byte < bytes; ++byte) write(at++, value >> 8 * byte);
    }
  };
  const std::size_t plane = stride * call.destinationHeight;
  switch (to.writer) {
    case Writer::RGB16:
      return samples(line, 2, {r / 8 * 2048 + g / 4 * 32 + b / 8});
    case Writer::RGB24:
      return samples(line, 1, {r, g, b});
    case Writer::BGR24:
      return samples(line, 1, {b, g, r});
    case Writer::RGB32:
      return samples(line, 1, {r, g, b, fourth});
    case Writer::BGR32:
      return samples(line, 1, {b, g, r, fourth});
    case Writer::RGB48:
      return samples(line, 2, {r, g, b});
    case Writer::BGR48:
      return samples(line, 2, {b, g, r});
    case Writer::RGB64:
      return samples(line, 2, {r, g, b, fourth});
    case Writer::BGR64:
      return samples(line, 2, {b, g, r, fourth});
    case Writer::PLANAR:
      samples(line, to.pixelBytes, {r});
      samples(line + plane, to.pixelBytes, {g});
      return samples(line + 2 * plane, to.pixelBytes, {b});
    case Writer::GRAY:
      return samples(line, to.pixelBytes, {r});
    case Writer::LUMA:
      return samples(line, to.pixelBytes, {luma});
  }
}

void Line::StoreFiltered(std::size_t i, Color color, std::size_t row) {
  const Filter* filter = call.filter;
  if (filter == nullptr) return Store(i, color, Depth(), row);
  if (!full) {
    return Store(i, {filter->red.bytes[color.red], filter->green.bytes[color.green], filter->blue.bytes[color.blue]}, 8,
                 row);
  }
  const auto at = [&](const FilterChannel& channel, unsigned value) {
    return channel.At(value, Depth(), filter->byMultipliers);
  };
  Store(i, {at(filter->red, color.red), at(filter->green, color.green), at(filter->blue, color.blue)}, Depth(), row);
}

unsigned Line::MosaicSample(unsigned word, char color) const {
  if (!FiltersFirst(call)) return Sample(word);
  const Filter& filter = *call.filter;
  const FilterChannel& channel = color == 'R' ? filter.red : color == 'G' ? filter.green : filter.blue;
  const unsigned sample = word >> stage.shift & ((1u << stage.depth) - 1);
  return channel.At(sample, stage.depth, filter.byMultipliers) >> (stage.depth - Depth());
}

void Line::StoreDemosaiced(std::size_t i, Color color, std::size_t row) {
  FiltersFirst(call) ? Store(i, color, Depth(), row) : StoreFiltered(i, color, row);
}

// An entry i of b bits is multiplier * i + offset, up to white. Other tables are lines between entries, black and white
// of sample and table at the same places.
unsigned FilterChannel::At(unsigned sample, unsigned depth, bool byMultiplier) const {
  const double white = (1u << depth) - 1;
  const double last = static_cast<double>(entries.size() - 1);
  if (byMultiplier) {
    const double scaled = std::floor(offset * (white + 1) / (last + 1));
    return static_cast<unsigned>(std::min(std::floor(multiplier * sample + scaled), white));
  }
  const double place = sample * last / white;
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, entries.size() - 1);
  const double part = place - static_cast<double>(below);
  return static_cast<unsigned>(std::lround((entries[below] * (1 - part) + entries[above] * part) * white / last));
}

}  // namespace model
