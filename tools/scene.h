#pragma once

#include <cstddef>
#include <cstdint>

#include "image.h"

namespace LmTool {

/// A colour of 16 bits a channel; formats of fewer bits keep the upper ones.
struct Color16 {
  std::uint16_t red, green, blue;
};

/// The upper bits of a sample.
constexpr std::uint8_t Top8(std::uint16_t sample) { return static_cast<std::uint8_t>(sample >> 8); }

/// The test scene at a pixel: colour bars, gray ramp and wedge, a field of hues and saturations, a zone plate, slanted
/// edges and discs, colour ramps and fine lines. Any size shows all of it.
Color16 SceneColor(const ImageSize& size, std::size_t x, std::size_t y);

/// The luminance of a colour, as gray types hold it.
std::uint16_t GrayOf(const Color16& color);

/// The scene in colours, or in grays, at 8 bits a channel.
Picture ScenePicture(const ImageSize& size, bool gray);

}  // namespace LmTool
