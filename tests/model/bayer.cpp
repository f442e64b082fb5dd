#include "model/bayer_neighbours.h"
#include "model/kernels.h"

namespace model {
namespace {

/// Two lines of a mosaic: `top` is the upper one's line in the image, and `base` the one that source bytes are counted
/// from.
class TwoLines {
 public:
  TwoLines(Line& line, std::size_t sampleBytes, std::size_t top, std::size_t base)
      : mLine(line),
        mSampleBytes(static_cast<std::ptrdiff_t>(sampleBytes)),
        mTop(static_cast<std::ptrdiff_t>(top)),
        mBase(static_cast<std::ptrdiff_t>(base)) {
    const unsigned flags = line.call.flags;
    mPattern = flags & 0x80 ? "BGGR" : flags & 0x40 ? "RGGB" : flags & 0x20 ? "GBRG" : "GRBG";
  }

  char ColorAt(std::ptrdiff_t y, std::ptrdiff_t x) const { return mPattern[y % 2 * 2 + x % 2]; }

  int Sample(std::ptrdiff_t y, std::ptrdiff_t x) const {
    const auto lineSize = static_cast<std::ptrdiff_t>(mLine.sourceLineSize);
    const std::ptrdiff_t at = (y - mBase) * lineSize + x * mSampleBytes;
    return static_cast<int>(mLine.MosaicSample(mSampleBytes == 1 ? mLine.Read8(at) : mLine.Read16(at), ColorAt(y, x)));
  }

  /// The colour of the 2 x 2 cell whose left column is x.
  Color Cell(std::ptrdiff_t x, int roundUp = 0) const {
    int red = 0, green = 0, blue = 0;
    for (std::ptrdiff_t row = mTop; row < mTop + 2; ++row) {
      for (std::ptrdiff_t column = x; column < x + 2; ++column) {
        const char color = ColorAt(row, column);
        (color == 'R' ? red : color == 'G' ? green : blue) += Sample(row, column);
      }
    }
    return Make(red, (green + roundUp) / 2, blue);
  }

  /// The colour of a pixel from its 3 x 3 neighbourhood.
  Color Interpolated(std::ptrdiff_t y, std::ptrdiff_t x) const {
    const int own = Sample(y, x);
    const int sides = Sample(y, x - 1) + Sample(y, x + 1);
    const int poles = Sample(y - 1, x) + Sample(y + 1, x);
    const int corners = Sample(y - 1, x - 1) + Sample(y - 1, x + 1) + Sample(y + 1, x - 1) + Sample(y + 1, x + 1);
    if (ColorAt(y, x) == 'R') return Make(own, (sides + poles) / 4, corners / 4);
    if (ColorAt(y, x) == 'B') return Make(corners / 4, (sides + poles) / 4, own);
    const int green = (own + corners) / 5;
    return ColorAt(y, x + 1) == 'R' ? Make(sides / 2, green, poles / 2) : Make(poles / 2, green, sides / 2);
  }

 private:
  static Color Make(int red, int green, int blue) {
    return {static_cast<unsigned>(red), static_cast<unsigned>(green), static_cast<unsigned>(blue)};
  }

  Line& mLine;
  std::ptrdiff_t mSampleBytes;
  std::ptrdiff_t mTop, mBase;
  const char* mPattern;
};

// All lines at the first one, which the others then read.
void DemosaicByNeighbours(Line& line, std::size_t sampleBytes) {
  const Call& call = line.call;
  if (line.pixels < 2 || call.sourceHeight < 2) return;
  if (line.index == 0) {
    const TwoLines rows(line, sampleBytes, 0, 0);
    const auto height = static_cast<int>(call.sourceHeight), width = static_cast<int>(line.pixels);
    const Neighbourhood mosaic{height,
                               width,
                               static_cast<int>(call.lines),
                               line.Depth(),
                               [&](int y, int x) { return rows.Sample(y, x); },
                               [&](int y, int x) { return rows.ColorAt(y, x); }};
    line.demosaiced = (call.flags & 0x400) != 0 ? Adaptive(mosaic) : GradientCorrected(mosaic);
  }
  for (std::size_t row = 0; row < (line.last ? 1u : 2u); ++row) {
    for (std::size_t x = 0; x < line.pixels; ++x) {
      line.StoreDemosaiced(x, line.demosaiced[(line.index + row) * line.pixels + x], row);
    }
  }
}

void DemosaicToHalf(Line& line, std::size_t sampleBytes) {
  const TwoLines cells(line, sampleBytes, 2 * line.index, 2 * line.index);
  for (std::size_t x = 0; x < line.pixels; ++x) {
    line.StoreDemosaiced(x, cells.Cell(2 * static_cast<std::ptrdiff_t>(x), 1));
  }
}

void Demosaic(Line& line, std::size_t sampleBytes) {
  if (IsHalfSize(line.call)) return DemosaicToHalf(line, sampleBytes);
  if ((line.call.flags & 0x700) == 0x200 || (line.call.flags & 0x500) == 0x400) {
    return DemosaicByNeighbours(line, sampleBytes);
  }
  const auto pixels = static_cast<std::ptrdiff_t>(line.pixels);
  const std::size_t height = line.call.sourceHeight;
  // No cell can be made of one column, or of a single line without one above it.
  if (pixels < 2 || (line.last && (line.index == 0 || height < 2))) return;

  const std::size_t top = line.last ? line.index - 1 : line.index;
  const TwoLines mosaic(line, sampleBytes, top, line.index);
  const bool border = line.index == 0 || line.index + 2 == height || line.index + 1 == height;
  const bool bilinear = (line.call.flags & 0x100) != 0 && !line.last && !border;
  const std::ptrdiff_t lastInterior = bilinear ? (pixels - 2) / 2 * 2 : 0;
  if (bilinear) mosaic.Sample(static_cast<std::ptrdiff_t>(line.index) + 2, pixels - 1);  // all of four lines is fair

  for (std::size_t row = 0; row < (line.last ? 1u : 2u); ++row) {
    for (std::ptrdiff_t x = 0; x < pixels; ++x) {
      Color color{};
      if (!bilinear) {
        color = mosaic.Cell(x == pixels - 1 ? x - 1 : x / 2 * 2);
      } else if (x == 0) {
        color = mosaic.Cell(0);
      } else if (x <= lastInterior) {
        color = mosaic.Interpolated(static_cast<std::ptrdiff_t>(top + row), x);
      } else {
        color = mosaic.Cell(x - 1);
      }
      line.StoreDemosaiced(static_cast<std::size_t>(x), color, row);
    }
  }
}

}  // namespace

void Bayer8(Line& line) { Demosaic(line, 1); }

void Bayer16(Line& line) { Demosaic(line, 2); }

}  // namespace model
