#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace LmTool {

using Bytes = std::vector<std::uint8_t>;

/// Width and height in pixels.
struct ImageSize {
  std::size_t width = 0;
  std::size_t height = 0;

  std::size_t Pixels() const { return width * height; }
  std::string Text() const { return std::to_string(width) + "x" + std::to_string(height); }
};

inline constexpr std::size_t kMostLines = 65535;  ///< pixels of a width or a height
/// Of an image. The library counts bytes in 32 bits; at 8 bytes a pixel this stays below.
inline constexpr std::size_t kMostPixels = std::size_t{1} << 28;

/// Whether an image of that size is small enough, and not empty.
inline bool IsAllowed(const ImageSize& size) {
  return size.width - 1 < kMostLines && size.height - 1 < kMostLines && size.Pixels() <= kMostPixels;
}

/// The sizes that `IsAllowed` accepts, in words.
inline std::string AllowedSizes() {
  return "each 1 to " + std::to_string(kMostLines) + ", at most " + std::to_string(kMostPixels) + " pixels";
}

/// A picture for people: rows without padding.
struct Picture {
  ImageSize size;
  bool gray;
  unsigned bits;  ///< of a sample: 8, or 16 in words with the low byte first
  Bytes pixels;   ///< the samples blue, green, red of each pixel, or one if it is gray

  std::size_t SampleBytes() const { return bits / 8; }
  std::size_t Channels() const { return gray ? 1 : 3; }
  std::size_t RowBytes() const { return size.width * Channels() * SampleBytes(); }
};

}  // namespace LmTool
