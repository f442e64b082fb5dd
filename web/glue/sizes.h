#pragma once

#include <cstddef>
#include <vector>

#include "guess.h"

namespace LmPage {

/// A width and a height in pixels, and how rare cameras of that size are, in bits a byte as `Candidate::rarity`.
struct Size {
  std::size_t width, height;
  double rarity;
};

/// The sizes that so many pixels may have.
std::vector<Size> SizesOf(std::size_t pixels, const GuessOptions& options);

}  // namespace LmPage
