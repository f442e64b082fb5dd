#pragma once

#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

/// The order in which a sensor delivers the samples of a line, by the fields of an id.
struct Readout {
  enum class Taps {
    kOne,
    kTwo,       ///< pairs of samples, one of the left half of the line and one of the right
    kFour,      ///< fours of samples, one of each quarter of the line
    kTwoLines,  ///< pairs of samples of two lines
  };

  Taps taps = Taps::kOne;
  bool leftBackwards = false;   ///< of two taps, whether the left half is read from its end
  bool rightBackwards = false;  ///< the same of the right half
};

constexpr Readout ReadoutOf(PixelTypeID id) {
  using Taps = Readout::Taps;
  constexpr PixelTypeID kFormat = kColorSpaceMask | kFormatNumberMask;
  if ((id & kFormat) == 0x10006 || (id & kFormat) == 0x10007) return {Taps::kFour};
  switch (id & kDualOutputMask) {
    case kDualLeftRight:
      return {Taps::kTwo, false, false};
    case kDualLeftRightInverted:
      return {Taps::kTwo, false, true};
    case kDualLeftInvertedRight:
      return {Taps::kTwo, true, false};
    case kDualLeftInvertedRightInverted:
      return {Taps::kTwo, true, true};
    case kDualLines:
      return {Taps::kTwoLines};
    default:
      return {};
  }
}

}  // namespace LmImagingLib
