// Bayer mosaic of bytes, bilinear method: each pixel of a line from its own sample and the eight around it. The lines
// are the one above, the pixels' own, and the one below, all beginning one sample left of the first pixel.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  // A pixel has three columns: it overlaps its neighbours by a sample on either side.
  static constexpr std::size_t kPixels = 1, kBytes = 1, kLines = 3, kBeyond = 2;
  static constexpr bool kGray = false;

  static void Group(const SourceLines& in, Rgb* out) {
    const auto sample = [&in](std::size_t line, std::size_t column) -> unsigned { return in.line[line][column]; };
    const unsigned own = sample(1, 1);
    const unsigned horizontal = sample(1, 0) + sample(1, 2);
    const unsigned vertical = sample(0, 1) + sample(2, 1);
    const unsigned diagonal = sample(0, 0) + sample(0, 2) + sample(2, 0) + sample(2, 2);
    const unsigned cross = (horizontal + vertical) >> 2;
    // At a green site all four diagonal neighbours are green too; the mean of the five evens out the two greens.
    const unsigned green = (own + diagonal) / 5;
    switch (in.cell) {
      case 0:
        *out = MakeRgb(horizontal >> 1, green, vertical >> 1);
        break;  // green between reds
      case 1:
        *out = MakeRgb(vertical >> 1, green, horizontal >> 1);
        break;  // green between blues
      case 2:
        *out = MakeRgb(own, cross, diagonal >> 2);
        break;  // red
      default:
        *out = MakeRgb(diagonal >> 2, cross, own);  // blue
    }
  }

  static Rgb MakeRgb(unsigned r, unsigned g, unsigned b) {
    return {static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g), static_cast<std::uint8_t>(b)};
  }

#if LM_LANES
  // The samples at, left of and right of the pixels in the even or in the odd lanes.
  struct Sites {
    U16 own, left, right;
  };

  struct Line {
    Sites even, odd;
  };

  // The first pixel lies at column 1, so pixels in even lanes lie at odd columns. Two loads give all three neighbours.
  template <class Reader>
  static Line LoadLine(const Reader& read, std::size_t line) {
    const U16 first = U16(Pinned(read(line, 0)));
    const U16 third = U16(Pinned(read(line, 2)));
    const U16 even0 = first & 0xFF, odd1 = first >> 8, even2 = third & 0xFF, odd3 = third >> 8;
    return {{odd1, even0, even2}, {even2, odd1, odd3}};
  }

  // The channel of the colour that shares the line with green, and that of the lines around it.
  struct Words {
    U16 line, green, other;
  };

  static Words AtGreen(const Sites& above, const Sites& own, const Sites& below) {
    const U16 sum = own.own + (above.left + below.left) + (above.right + below.right);
    return {(own.left + own.right) >> 1, MultiplyHigh(sum, 13108),  // a fifth, as the sum is at most 1275
            (above.own + below.own) >> 1};
  }

  static Words AtColor(const Sites& above, const Sites& own, const Sites& below) {
    return {own.own, ((own.left + own.right) + (above.own + below.own)) >> 2,
            ((above.left + below.left) + (above.right + below.right)) >> 2};
  }

  static RgbLanes Zip(const Words& even, const Words& odd, bool redInLine) {
    const U8 line = U8(even.line | odd.line << 8);
    const U8 other = U8(even.other | odd.other << 8);
    return {redInLine ? line : other, U8(even.green | odd.green << 8), redInLine ? other : line};
  }

  template <class Reader>
  static RgbLanes Block(const Reader& read) {
    const Line above = LoadLine(read, 0);
    const Line own = LoadLine(read, 1);
    const Line below = LoadLine(read, 2);
    const bool redInLine = read.in.cell % 2 == 0;  // cells 0 and 2 lie on a line of greens and reds
    if (read.in.cell < 2) {
      return Zip(AtGreen(above.even, own.even, below.even), AtColor(above.odd, own.odd, below.odd), redInLine);
    }
    return Zip(AtColor(above.even, own.even, below.even), AtGreen(above.odd, own.odd, below.odd), redInLine);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BayerBilinear, Layout)
