#include "scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace LmTool {

namespace {

constexpr double kPi = 3.14159265358979323846;

// Channels from 0 to 1.
struct Color {
  double red, green, blue;
};

constexpr Color Gray(double value) { return {value, value, value}; }

// A pixel within one part of the scene: u and v run from 0 to 1, x and y count pixels, as do width and height.
struct Place {
  double u, v;
  double x, y;
  double width, height;
};

Color ColorBars(const Place& place) {
  constexpr Color kBars[] = {{1, 1, 1}, {1, 1, 0}, {0, 1, 1}, {0, 1, 0}, {1, 0, 1}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0}};
  return kBars[static_cast<std::size_t>(place.u * std::size(kBars))];
}

Color GrayRamp(const Place& place) { return Gray(place.u); }

Color GrayWedge(const Place& place) { return Gray(std::floor(place.u * 11) / 10); }

// Hue from left to right, saturation from full at the top to none at the bottom.
Color Hues(const Place& place) {
  const auto channel = [&](double center) {
    const double distance = std::abs(std::remainder(place.u * 6 - center, 6.0));
    const double pure = std::clamp(2 - distance, 0.0, 1.0);
    return 1 - (1 - pure) * (1 - place.v);
  };
  return {channel(0), channel(2), channel(4)};
}

// Rings that grow finer outwards, to 4 pixels a ring at the nearer edge.
Color ZonePlate(const Place& place) {
  const double dx = place.x - place.width / 2;
  const double dy = place.y - place.height / 2;
  const double radius = std::max(1.0, std::min(place.width, place.height) / 2);
  return Gray(0.5 + 0.5 * std::cos(kPi * (dx * dx + dy * dy) / (4 * radius)));
}

// A disc shaded towards its rim, a small one upon it, and behind them the two sides of a slanted edge.
Color EdgesAndDiscs(const Place& place) {
  const double unit = std::max(1.0, std::min(place.width, place.height));
  const auto distance = [&](double u, double v) {
    return std::hypot(place.x - u * place.width, place.y - v * place.height) / unit;
  };
  const double large = distance(0.5, 0.5) / 0.38;
  if (distance(0.62, 0.42) < 0.1) return {1.0, 0.9, 0.6};
  if (large < 1) return {0.9 - 0.4 * large, 0.45 - 0.3 * large, 0.1};
  const bool above = place.v + (place.u - 0.5) * 0.18 < 0.5;
  return above ? Color{0.35, 0.6, 0.85} : Color{0.12, 0.35, 0.2};
}

Color ColorRamps(const Place& place) {
  if (place.v < 1.0 / 3) return {place.u, 0, 0};
  if (place.v < 2.0 / 3) return {0, place.u, 0};
  return {0, 0, place.u};
}

// Upright lines, from 5 pixels wide on the left to 2 on the right; tilted ones below.
Color FineLines(const Place& place) {
  const double lineWidth = 5 - std::floor(place.u * 4);
  const double along = place.v < 0.5 ? place.x : place.x + place.y;
  return std::fmod(std::floor(along / lineWidth), 2) < 1 ? Gray(0.9) : Gray(0.1);
}

// The parts, in fractions of the image; each pixel belongs to the first one that ends right of and below it.
struct Part {
  double left, top, right, bottom;
  Color (*draw)(const Place&);
};
constexpr std::array<Part, 8> kParts = {{
    {0.0, 0.00, 1.0, 0.24, ColorBars},
    {0.0, 0.24, 1.0, 0.32, GrayRamp},
    {0.0, 0.32, 1.0, 0.40, GrayWedge},
    {0.0, 0.40, 0.36, 0.80, Hues},
    {0.36, 0.40, 0.64, 0.80, ZonePlate},
    {0.64, 0.40, 1.0, 0.80, EdgesAndDiscs},
    {0.0, 0.80, 0.5, 1.00, ColorRamps},
    {0.5, 0.80, 1.0, 1.00, FineLines},
}};

std::uint16_t To16(double channel) {
  return static_cast<std::uint16_t>(std::lround(std::clamp(channel, 0.0, 1.0) * 65535));
}

}  // namespace

Color16 SceneColor(const ImageSize& size, std::size_t x, std::size_t y) {
  const auto width = static_cast<double>(size.width);
  const auto height = static_cast<double>(size.height);
  const double u = (static_cast<double>(x) + 0.5) / width;
  const double v = (static_cast<double>(y) + 0.5) / height;
  const auto* const part =
      std::find_if(kParts.begin(), kParts.end(), [&](const Part& p) { return u < p.right && v < p.bottom; });
  Place place{};
  place.u = (u - part->left) / (part->right - part->left);
  place.v = (v - part->top) / (part->bottom - part->top);
  place.width = (part->right - part->left) * width;
  place.height = (part->bottom - part->top) * height;
  place.x = place.u * place.width;
  place.y = place.v * place.height;
  const Color color = part->draw(place);
  return {To16(color.red), To16(color.green), To16(color.blue)};
}

std::uint16_t GrayOf(const Color16& color) {
  return static_cast<std::uint16_t>((77U * color.red + 150U * color.green + 29U * color.blue) >> 8);
}

Picture ScenePicture(const ImageSize& size, bool gray) {
  Picture picture{size, false, 8, {}};
  picture.pixels.reserve(size.Pixels() * 3);
  for (std::size_t y = 0; y < size.height; ++y) {
    for (std::size_t x = 0; x < size.width; ++x) {
      const Color16 color = SceneColor(size, x, y);
      const std::uint16_t luminance = GrayOf(color);
      for (const std::uint16_t channel : {color.blue, color.green, color.red}) {
        picture.pixels.push_back(Top8(gray ? luminance : channel));
      }
    }
  }
  return picture;
}

}  // namespace LmTool
