#include "model/groups.h"
#include "model/kernels.h"

namespace model {
namespace {

using Group = const std::uint8_t*;

void ConvertWords(Line& line, std::size_t words, std::size_t red, std::size_t blue) {
  ConvertGroups(line, line.pixels, 1, 2 * words, [&](Group g, std::size_t) {
    const auto sample = [&](std::size_t word) { return line.Sample(Bits(g + 2 * word, 0, 16)); };
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

}  // namespace

void RGB24(Line& line) {
  ConvertGroups(line, line.pixels, 1, 3, [](Group g, std::size_t) { return Color{g[0], g[1], g[2]}; });
}

void BGR24(Line& line) {
  ConvertGroups(line, line.pixels, 1, 3, [](Group g, std::size_t) { return Color{g[2], g[1], g[0]}; });
}

void RGB32(Line& line) {
  ConvertGroups(line, line.pixels, 1, 4, [](Group g, std::size_t) { return Color{g[0], g[1], g[2]}; });
}

void BGR32(Line& line) {
  ConvertGroups(line, line.pixels, 1, 4, [](Group g, std::size_t) { return Color{g[2], g[1], g[0]}; });
}

// Fields go to the top of the byte; nothing is replicated below them.
void RGB16(Line& line) {
  ConvertGroups(line, line.pixels, 1, 2, [](Group g, std::size_t) {
    return Color{Bits(g, 11, 5) * 8, Bits(g, 5, 6) * 4, Bits(g, 0, 5) * 8};
  });
}

void RGB48(Line& line) { ConvertWords(line, 3, 0, 2); }
void BGR48(Line& line) { ConvertWords(line, 3, 2, 0); }
void RGB64(Line& line) { ConvertWords(line, 4, 0, 2); }
void BGR64(Line& line) { ConvertWords(line, 4, 2, 0); }
void RGBPlanar8(Line& line) { ConvertPlanes(line, 1); }
void RGBPlanar16(Line& line) { ConvertPlanes(line, 2); }

void BGR10PackedV1(Line& line) {
  ConvertGroups(line, line.pixels, 1, 4, [&](Group g, std::size_t) {
    const auto sample = [&](unsigned k) { return line.Sample(g[k + 1] * 4u + Bits(g, 2 * k, 2)); };
    return Color{sample(2), sample(1), sample(0)};
  });
}

void BGR10PackedV2(Line& line) {
  ConvertGroups(line, line.pixels, 1, 4, [&](Group g, std::size_t) {
    return Color{line.Sample(Bits(g, 20, 10)), line.Sample(Bits(g, 10, 10)), line.Sample(Bits(g, 0, 10))};
  });
}

namespace {

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

void RGBStream(Line& line) { ConvertStream(line, 0, 2); }
void BGRStream(Line& line) { ConvertStream(line, 2, 0); }

void RGB10V1(Line& line) {
  ConvertGroups(line, line.pixels, 1, 4, [&](Group g, std::size_t) {
    const auto sample = [&](unsigned k) { return line.Sample(g[k + 1] * 4u + Bits(g, 2 * k, 2)); };
    return Color{sample(0), sample(1), sample(2)};
  });
}

void RGB10p32(Line& line) {
  ConvertGroups(line, line.pixels, 1, 4, [&](Group g, std::size_t) {
    return Color{line.Sample(Bits(g, 0, 10)), line.Sample(Bits(g, 10, 10)), line.Sample(Bits(g, 20, 10))};
  });
}

void RGB565p(Line& line) {
  ConvertGroups(line, line.pixels, 1, 2, [](Group g, std::size_t) {
    return Color{Bits(g, 0, 5) * 8, Bits(g, 5, 6) * 4, Bits(g, 11, 5) * 8};
  });
}

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
