#pragma once

#include <functional>
#include <vector>

#include "model/line.h"

namespace model {

/// Numbers for the pixels of an image and for some around it.
class Plane {
 public:
  Plane(int height, int width)
      : mWidth(width + 2 * kAround),
        mValues(static_cast<std::size_t>(mWidth) * static_cast<std::size_t>(height + 2 * kAround)) {}

  int& operator()(int y, int x) { return mValues.at(static_cast<unsigned>((y + kAround) * mWidth + x + kAround)); }

  static constexpr int kAround = 8;

 private:
  int mWidth;
  std::vector<int> mValues;
};

/// A mosaic of which `sample` gives the samples inside, and `color` the letters of the colours.
struct Neighbourhood {
  int height, width;
  int lines;  ///< to make
  unsigned bits;
  std::function<int(int y, int x)> sample;
  std::function<char(int y, int x)> color;
};

/// The colours of the lines, from left to right and from top to bottom.
std::vector<Color> GradientCorrected(const Neighbourhood& in);
std::vector<Color> Adaptive(const Neighbourhood& in);

}  // namespace model
