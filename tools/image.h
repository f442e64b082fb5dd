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

/// A picture for people: the bytes blue, green, red of each pixel, rows without padding.
struct Picture {
  ImageSize size;
  Bytes bgr;
};

}  // namespace LmTool
