#include "model/kernels.h"

namespace model {
namespace {

/// Four zones a line: the left half is read left to right, the right half from its far ends inwards.
void CopyQuadTaps(Line& line, std::size_t sampleBytes) {
  const std::size_t zone = line.pixels / 4;
  for (std::size_t k = 0; k < zone; ++k) {
    const std::size_t places[] = {k, zone + k, 3 * zone - 1 - k, 4 * zone - 1 - k};
    for (std::size_t tap = 0; tap < 4; ++tap) {
      for (std::size_t byte = 0; byte < sampleBytes; ++byte) {
        const std::size_t from = (4 * k + tap) * sampleBytes + byte;
        line.WriteByte(places[tap] * sampleBytes + byte, line.Read8(static_cast<std::ptrdiff_t>(from)));
      }
    }
  }
}

}  // namespace

void CopyLine(Line& line) {
  const std::size_t size = line.stage.SourceLineSize(line.pixels);
  for (std::size_t i = 0; i < size; ++i) line.WriteByte(i, line.Read8(static_cast<std::ptrdiff_t>(i)));
}

void QuadTaps8(Line& line) { CopyQuadTaps(line, 1); }

void QuadTaps16(Line& line) { CopyQuadTaps(line, 2); }

// The bytes of two source lines belong in turn to the upper and the lower line.
void DualLines(Line& line) {
  const bool lower = line.index % 2 == 1;
  const bool alone = !lower && line.index + 1 >= line.call.sourceHeight;
  const std::ptrdiff_t pair = lower ? -static_cast<std::ptrdiff_t>(line.sourceLineSize) : 0;
  for (std::size_t i = 0; i < line.pixels; ++i) {
    const auto at = static_cast<std::ptrdiff_t>(i);
    line.WriteByte(i, line.Read8(alone ? at : pair + 2 * at + (lower ? 1 : 0)));
  }
}

}  // namespace model
