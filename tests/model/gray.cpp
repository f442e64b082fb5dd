#include "model/groups.h"
#include "model/kernels.h"

namespace model {
namespace {

std::ptrdiff_t At(std::size_t i) { return static_cast<std::ptrdiff_t>(i); }

/// Stores sample j of the line: in its place, or where the two taps put it (even samples are the left tap's).
void StoreTapped(Line& line, std::size_t j, std::size_t evenPixels, unsigned sample) {
  const auto [left, right] = std::pair(line.stage.left, line.stage.right);
  std::size_t i = j;
  if (left != 0) {
    const std::size_t half = evenPixels / 2;
    const std::size_t step = j / 2;
    if (j % 2 == 0) {
      i = left > 0 ? step : half - 1 - step;
    } else {
      i = right > 0 ? half + step : evenPixels - 1 - step;
    }
  }
  line.StoreGray(i, line.Sample(sample));
}

template <typename ReadSample>
void ConvertSamples(Line& line, ReadSample readSample) {
  const std::size_t even = line.pixels / 2 * 2;
  const std::size_t count = line.stage.left != 0 ? even : line.pixels;
  for (std::size_t j = 0; j < count; ++j) StoreTapped(line, j, even, readSample(j));
}

}  // namespace

void Gray8(Line& line) {
  ConvertSamples(line, [&](std::size_t j) { return line.Read8(At(j)); });
}

void Gray16(Line& line) {
  ConvertSamples(line, [&](std::size_t j) { return line.Read16(At(2 * j)); });
}

void Gray8Signed(Line& line) {
  for (std::size_t i = 0; i < line.pixels; ++i) line.StoreGray(i, line.Read8(At(i)) ^ 0x80);
}

// An odd last pixel has a whole group, of which the second pixel lands past the end of the line.
void GrayPackedGEV(Line& line) {
  for (std::size_t i = 0; i < line.pixels; i += 2) {
    const bool whole = i + 1 < line.pixels || !line.stage.contained;
    const std::uint8_t* group = line.Read(At(i / 2 * 3), whole ? 3 : 2);
    line.StoreGray(i, line.Sample(FirstGEV(group, line.stage.depth)));
    if (whole) line.StoreGray(i + 1, line.Sample(SecondGEV(group, line.stage.depth)));
  }
}

// The bits are repeated up to 16: white is 65535.
void FewBits(Line& line) {
  const unsigned bits = line.stage.sourceBits;
  ForEachGroup(line, 8 / bits, [&](const std::uint8_t* group, std::size_t first, std::size_t count, std::size_t) {
    for (std::size_t p = 0; p < count; ++p) {
      line.StoreGray(first + p, line.Sample(Bits(group, p * bits, bits) * 65535 / ((1u << bits) - 1)));
    }
  });
}

void BitStream(Line& line) {
  const unsigned bits = line.stage.depth;
  ForEachGroup(line, 4, [&](const std::uint8_t* group, std::size_t first, std::size_t count, std::size_t) {
    for (std::size_t p = 0; p < count; ++p) line.StoreGray(first + p, line.Sample(Bits(group, p * bits, bits)));
  });
}

// Top bytes, then low bits: of a group that the line ends within, too.
void CSI2(Line& line) {
  const unsigned low = line.stage.depth - 8;
  const auto convert = [&](const std::uint8_t* group, std::size_t first, std::size_t count, std::size_t present) {
    for (std::size_t p = 0; p < count; ++p) {
      line.StoreGray(first + p, line.Sample((unsigned{group[p]} << low) + Bits(group + present, p * low, low)));
    }
  };
  ForEachGroup(line, line.stage.depth == 12 ? 2 : 4, convert);
}

// An odd last pixel is left alone.
void GrayPacked(Line& line) {
  const std::size_t even = line.pixels / 2 * 2;
  for (std::size_t j = 0; j < even; j += 2) {
    const std::uint8_t* group = line.Read(At(j / 2 * 3), 3);
    const unsigned bits = group[0] | unsigned{group[1]} << 8 | unsigned{group[2]} << 16;
    StoreTapped(line, j, even, bits & 0xFFF);
    StoreTapped(line, j + 1, even, bits >> 12);
  }
}

}  // namespace model
