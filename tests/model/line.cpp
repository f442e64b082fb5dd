#include "model/line.h"

namespace model {

std::size_t Stage::SourceLineSize(std::size_t pixels) const {
  if (copiesPairs) pixels += pixels % 2;
  return pixels * sourceHalfBytes / 2;
}

std::size_t Stage::DestinationLineSize(std::size_t pixels) const {
  return copiesPairs ? SourceLineSize(pixels) : pixels * destinationPixelBytes;
}

bool Line::IsInPicture(std::size_t offset) const {
  const std::size_t plane = stride * call.destinationHeight;
  const std::size_t planes = stage.writer == Writer::PLANAR24 ? 3 : 1;
  for (std::size_t k = 0; k < planes; ++k) {
    if (offset < k * plane || offset - k * plane >= stride * call.lines) continue;
    if ((offset - k * plane) % stride < pixels * stage.destinationPixelBytes) return true;
  }
  return false;
}

void Line::Store(std::size_t i, Color color, std::size_t row) {
  const auto [r, g, b] = color;
  const std::size_t line = row * stride;
  const auto write = [&](std::size_t offset, unsigned value) {
    if (i < pixels || !IsInPicture(mDestinationOffset + offset)) WriteByte(offset, value);
  };
  const auto words16 = [&](unsigned word) {
    write(line + 2 * i, word & 0xFF);
    write(line + 2 * i + 1, word >> 8);
  };
  const auto bytes = [&](std::initializer_list<unsigned> pixel) {
    std::size_t at = line + i * pixel.size();
    for (const unsigned byte : pixel) write(at++, byte);
  };
  const std::size_t plane = stride * call.destinationHeight;
  switch (stage.writer) {
    case Writer::RGB16:
      return words16(r / 8 * 2048 + g / 4 * 32 + b / 8);
    case Writer::RGB24:
      return bytes({r, g, b});
    case Writer::BGR24:
      return bytes({b, g, r});
    case Writer::RGB32:
      return bytes({r, g, b, 0});
    case Writer::BGR32:
      return bytes({b, g, r, 0});
    case Writer::PLANAR24:
      write(line + i, r);
      write(line + plane + i, g);
      write(line + 2 * plane + i, b);
      return;
    case Writer::GRAY8:
      return bytes({r});
    case Writer::GRAY10:
      return words16(r * 4);
    case Writer::GRAY12:
      return words16(r * 16);
    case Writer::GRAY14:
      return words16(r * 64);
    case Writer::GRAY16:
      return words16(r);
  }
}

void Line::StoreFiltered(std::size_t i, Color color, std::size_t row) {
  if (const Filter* filter = call.filter) {
    color = {filter->red[color.red], filter->green[color.green], filter->blue[color.blue]};
  }
  Store(i, color, row);
}

}  // namespace model
