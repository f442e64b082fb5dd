#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/catalogue.h"
#include "model/line.h"

namespace model {

/// How an image is stored: its lines in `line` bytes each, 0 for lines without padding.
struct View {
  View(Id theType, std::size_t theWidth, std::size_t theHeight, std::size_t lineSize);

  std::size_t Lines() const { return planes * height; }
  /// From the first byte to the last one of the last line.
  std::size_t Bytes() const { return Lines() == 0 ? 0 : (Lines() - 1) * line + lineBytes; }
  /// The bytes of a line, counted through all planes, that are not the next one's.
  std::size_t OwnBytes(std::size_t index) const { return index + 1 == Lines() || lineBytes < line ? lineBytes : line; }

  /// The bytes from a line to the next one where no padding separates them: half bytes are rounded down.
  static std::size_t DenseLine(Id type, std::size_t width);

  Id type;
  unsigned long width, height;
  std::size_t planes = 1;
  std::size_t lineBytes;  ///< that hold the samples of a line
  std::size_t line;
};

/// The lines to convert and how.
struct Options {
  std::uint32_t flags = 0;
  const Filter* filter = nullptr;
  unsigned long firstLine = 0;
  unsigned long lines = 0;
};

/// The destination's bytes after a checked conversion: only pixels change, those of the lines asked for.
/// @param before  the destination's bytes before
std::vector<std::uint8_t> ConvertImage(const View& source, const View& destination, const Options& options,
                                       const std::vector<std::uint8_t>& from, const std::vector<std::uint8_t>& before);

}  // namespace model
