#pragma once

#include <cstddef>

#include "LmImagingLib/ToneCurve.h"

namespace LmImagingLib {

/// The arguments of `RGBFilter::SetCurve`.
struct FilterCurve {
  ChannelCurve channels[3];  ///< black levels and offsets in steps of the filter
  ToneCurve tone;

  bool IsValid() const;

  /// The result of a sample of `depth` bits, with `more` bits after the binary point of a result of `depth` bits: white
  /// is (2^depth - 1) << more. `depth` + `more` is at most 16.
  /// @param filterBits  of the filter
  unsigned short Entry(std::size_t channel, std::size_t sample, unsigned filterBits, unsigned depth,
                       unsigned more) const;
};

}  // namespace LmImagingLib
