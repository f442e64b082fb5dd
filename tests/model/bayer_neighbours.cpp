#include "model/bayer_neighbours.h"

#include <algorithm>
#include <cstdlib>

namespace model {
namespace {

int Mirror(int i, int count) {
  while (i < 0 || i >= count) i = i < 0 ? -i : 2 * (count - 1) - i;
  return i;
}

/// The mosaic with what the edges mirror.
struct Mosaic {
  explicit Mosaic(const Neighbourhood& from) : in(from), samples(in.lines, in.width), white((1 << in.bits) - 1) {
    constexpr int kAround = Plane::kAround;
    Plane inside(in.height + kAround, in.width);
    for (int y = 0; y < std::min(in.height, in.lines + kAround); ++y) {
      for (int x = 0; x < in.width; ++x) inside(y, x) = in.sample(y, x);
    }
    ForEach(kAround, [&](int y, int x) {
      const int row = Mirror(y, in.height);
      if (row < in.lines + kAround) samples(y, x) = inside(row, Mirror(x, in.width));
    });
  }

  /// Calls with every pixel, and with those that are at most so many away.
  template <class Use>
  void ForEach(int around, const Use& use) const {
    for (int y = -around; y < in.lines + around; ++y) {
      for (int x = -around; x < in.width + around; ++x) use(y, x);
    }
  }

  char ColorAt(int y, int x) const { return in.color(y & 1, x & 1); }
  unsigned Clamp(int value) const { return static_cast<unsigned>(std::clamp(value, 0, white)); }

  /// A pixel of which `line` is the colour that shares the line with green.
  Color Make(int y, unsigned line, unsigned green, unsigned column) const {
    const bool redInLine = ColorAt(y, 0) == 'R' || ColorAt(y, 1) == 'R';
    return redInLine ? Color{line, green, column} : Color{column, green, line};
  }

  const Neighbourhood& in;
  Plane samples;
  int white;
};

using Filter5x5 = int[5][5];
constexpr Filter5x5 kGreen = {{0, 0, -2, 0, 0}, {0, 0, 4, 0, 0}, {-2, 4, 8, 4, -2}, {0, 0, 4, 0, 0}, {0, 0, -2, 0, 0}};
constexpr Filter5x5 kAlong = {
    {0, 0, 1, 0, 0}, {0, -2, 0, -2, 0}, {-2, 8, 10, 8, -2}, {0, -2, 0, -2, 0}, {0, 0, 1, 0, 0}};
constexpr Filter5x5 kAcross = {
    {0, 0, -2, 0, 0}, {0, -2, 8, -2, 0}, {1, 0, 10, 0, 1}, {0, -2, 8, -2, 0}, {0, 0, -2, 0, 0}};
constexpr Filter5x5 kOpposite = {
    {0, 0, -3, 0, 0}, {0, 4, 0, 4, 0}, {-3, 0, 12, 0, -3}, {0, 4, 0, 4, 0}, {0, 0, -3, 0, 0}};

}  // namespace

std::vector<Color> GradientCorrected(const Neighbourhood& in) {
  Mosaic mosaic(in);
  std::vector<Color> colors;
  mosaic.ForEach(0, [&](int y, int x) {
    const auto filtered = [&](const Filter5x5& filter) {
      int sum = 8;
      for (int i = 0; i < 25; ++i) sum += filter[i / 5][i % 5] * mosaic.samples(y + i / 5 - 2, x + i % 5 - 2);
      return mosaic.Clamp(sum >> 4);
    };
    const auto own = static_cast<unsigned>(mosaic.samples(y, x));
    const bool isGreen = mosaic.ColorAt(y, x) == 'G';
    colors.push_back(isGreen ? mosaic.Make(y, filtered(kAlong), own, filtered(kAcross))
                             : mosaic.Make(y, own, filtered(kGreen), filtered(kOpposite)));
  });
  return colors;
}

std::vector<Color> Adaptive(const Neighbourhood& in) {
  Mosaic mosaic(in);
  Plane& s = mosaic.samples;
  const auto bits = static_cast<int>(in.bits);
  Plane h(in.lines, in.width), v = h, dh = h, dv = h, difference = h;
  const auto curvatures = [&](int down) {
    const auto c = [&](int y, int x) { return s(y, x) >> down; };
    mosaic.ForEach(6, [&](int y, int x) {
      h(y, x) = 2 * (c(y, x - 1) + c(y, x + 1) - c(y, x)) - c(y, x - 2) - c(y, x + 2);
      v(y, x) = 2 * (c(y - 1, x) + c(y + 1, x) - c(y, x)) - c(y - 2, x) - c(y + 2, x);
    });
  };
  curvatures(std::max(bits - 12, 0));
  mosaic.ForEach(5, [&](int y, int x) {
    const int down = std::min(bits, 12) - 8;
    dh(y, x) = std::abs(h(y, x - 1) - h(y, x + 1)) >> down;
    dv(y, x) = std::abs(v(y - 1, x) - v(y + 1, x)) >> down;
  });
  curvatures(0);
  mosaic.ForEach(3, [&](int y, int x) {
    if (mosaic.ColorAt(y, x) == 'G') return;
    int a = 0, b = 0;
    for (int i = -2; i <= 2; ++i) {
      for (int k = -2; k <= 2; ++k) {
        a += dh(y + i, x + k);
        b += dv(y + i, x + k);
      }
    }
    const int p = 2 * h(y, x) - h(y, x - 1) - h(y, x + 1), q = 2 * v(y, x) - v(y - 1, x) - v(y + 1, x);
    const int better = a < b ? p : q, worse = a < b ? q : p;
    const int low = std::min(a, b), high = std::max(a, b);
    const int quarters = (low >= high - high / 4 ? 1 : 0) + (low >= high / 2 ? 1 : 0);
    int green = s(y, x) + ((4 * better + quarters * (worse - better) + 32) >> 6);
    const auto [least, most] = std::minmax({s(y - 1, x), s(y + 1, x), s(y, x - 1), s(y, x + 1)});
    if (green < least) {
      green += (least - green + 1) / 2;
    } else if (green > most) {
      green -= (green - most + 1) / 2;
    }
    difference(y, x) = s(y, x) - std::clamp(green, 0, mosaic.white);
  });
  Plane& d = difference;
  std::vector<Color> colors;
  mosaic.ForEach(0, [&](int y, int x) {
    const auto own = static_cast<unsigned>(s(y, x));
    if (mosaic.ColorAt(y, x) == 'G') {
      colors.push_back(mosaic.Make(y, mosaic.Clamp(s(y, x) + ((d(y, x - 1) + d(y, x + 1) + 1) >> 1)), own,
                                   mosaic.Clamp(s(y, x) + ((d(y - 1, x) + d(y + 1, x) + 1) >> 1))));
      return;
    }
    int corners = 0, knights = 0;
    for (const int i : {-1, 1}) {
      for (const int k : {-1, 1}) {
        corners += d(y + i, x + k);
        knights += d(y + i, x + 3 * k) + d(y + 3 * i, x + k);
      }
    }
    const int green = s(y, x) - d(y, x);
    colors.push_back(
        mosaic.Make(y, own, mosaic.Clamp(green), mosaic.Clamp(green + ((10 * corners - knights + 16) >> 5))));
  });
  return colors;
}

}  // namespace model
