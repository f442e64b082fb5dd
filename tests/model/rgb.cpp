#include "model/groups.h"
#include "model/kernels.h"

namespace model {
namespace {

using Group = const std::uint8_t*;

/// Pixels of whole bytes, whose channels are fields of so many bits at these places.
void ConvertFields(Line& line, std::size_t bits, std::size_t red, std::size_t green, std::size_t blue) {
  ConvertGroups(line, line.pixels, 1, line.stage.sourceBits / 8, [&](Group g, std::size_t) {
    const auto sample = [&](std::size_t at) { return line.Sample(Bits(g, at, bits)); };
    return Color{sample(red), sample(green), sample(blue)};
  });
}

/// Fields that go to the top of the byte; nothing is replicated below them.
void ConvertFiveSixFive(Line& line, std::size_t red, std::size_t blue) {
  ConvertGroups(line, line.pixels, 1, 2, [&](Group g, std::size_t) {
    return Color{Bits(g, red, 5) * 8, Bits(g, 5, 6) * 4, Bits(g, blue, 5) * 8};
  });
}

/// A byte of two low bits each, and the upper bytes.
void ConvertV1(Line& line, unsigned red, unsigned blue) {
  ConvertGroups(line, line.pixels, 1, 4, [&](Group g, std::size_t) {
    const auto sample = [&](unsigned k) { return line.Sample(g[k + 1] * 4u + Bits(g, 2 * k, 2)); };
    return Color{sample(red), sample(1), sample(blue)};
  });
}

void ConvertPlanes(Line& line, std::size_t sampleBytes) {
  const std::size_t plane = line.sourceLineSize * line.call.sourceHeight;
  for (std::size_t i = 0; i < line.pixels; ++i) {
    const auto sample = [&](std::size_t k) {
      const auto at = static_cast<std::ptrdiff_t>(k * plane + i * sampleBytes);
      return line.Sample(sampleBytes == 1 ? line.Read8(at) : line.Read16(at));
    };
    line.StoreFiltered(i, {sample(0), sample(1), sample(2)});
  }
}

// Samples that follow each other without a gap: sample i is bits i * depth and on of the line.
void ConvertStream(Line& line, std::size_t red, std::size_t blue) {
  const std::size_t depth = line.stage.depth;
  ForEachGroup(line, depth == 12 ? 2 : 4, [&](Group g, std::size_t first, std::size_t count, std::size_t) {
    for (std::size_t p = 0; p < count; ++p) {
      const auto sample = [&](std::size_t channel) { return line.Sample(Bits(g, (3 * p + channel) * depth, depth)); };
      line.StoreFiltered(first + p, {sample(red), sample(1), sample(blue)});
    }
  });
}

}  // namespace

void RGB24(Line& line) { ConvertFields(line, 8, 0, 8, 16); }
void BGR24(Line& line) { ConvertFields(line, 8, 16, 8, 0); }
void RGB32(Line& line) { ConvertFields(line, 8, 0, 8, 16); }
void BGR32(Line& line) { ConvertFields(line, 8, 16, 8, 0); }
void RGB48(Line& line) { ConvertFields(line, 16, 0, 16, 32); }
void BGR48(Line& line) { ConvertFields(line, 16, 32, 16, 0); }
void RGB64(Line& line) { ConvertFields(line, 16, 0, 16, 32); }
void BGR64(Line& line) { ConvertFields(line, 16, 32, 16, 0); }
void RGB10p32(Line& line) { ConvertFields(line, 10, 0, 10, 20); }
void BGR10PackedV2(Line& line) { ConvertFields(line, 10, 20, 10, 0); }
void RGB16(Line& line) { ConvertFiveSixFive(line, 11, 0); }
void RGB565p(Line& line) { ConvertFiveSixFive(line, 0, 11); }
void RGB10V1(Line& line) { ConvertV1(line, 0, 2); }
void BGR10PackedV1(Line& line) { ConvertV1(line, 2, 0); }
void RGBPlanar8(Line& line) { ConvertPlanes(line, 1); }
void RGBPlanar16(Line& line) { ConvertPlanes(line, 2); }
void RGBStream(Line& line) { ConvertStream(line, 0, 2); }
void BGRStream(Line& line) { ConvertStream(line, 2, 0); }

// An odd last pixel has a whole group, of which the second pixel lands past the end of the line.
void RGB12PackedV1(Line& line) {
  ConvertGroups(line, line.pixels, 2, 9, [&](Group g, std::size_t p) {
    const auto sample = [&](std::size_t k) {
      const Group pair = g + k / 2 * 3;
      return line.Sample(k % 2 == 0 ? FirstGEV(pair, 12) : SecondGEV(pair, 12));
    };
    return Color{sample(3 * p), sample(3 * p + 1), sample(3 * p + 2)};
  });
}

}  // namespace model
