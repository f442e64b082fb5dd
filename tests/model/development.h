#pragma once

#include <cstdint>
#include <vector>

#include "LmImagingLib/Development.h"

namespace model {

using Words = std::vector<std::uint16_t>;

/// A development in plain words. Samples are those of a mosaic, or of pixels one after the other.
struct PlainDevelopment {
  const LmImagingLib::DevelopmentSettings& settings;
  unsigned depth, bits;  ///< of samples and of results

  /// The result of the lookup of a sample.
  unsigned LookUp(unsigned sample, unsigned channel) const;
  /// Makes colours of the picture of colours that were looked up.
  void Finish(unsigned (&color)[3]) const;
};

/// The samples of a mosaic, limited to the range of the eight around of the same colour, and `threshold` beyond.
Words WithoutDefects(const Words& in, int width, int height, unsigned threshold);

}  // namespace model
