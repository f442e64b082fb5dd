#pragma once

#include "LmBaseLib/Export.h"

namespace LmImagingLib {

/// A value for each colour channel.
struct RGBValues {
  double red = 0;    ///< the value of red
  double green = 0;  ///< the value of green
  double blue = 0;   ///< the value of blue
};

/// The curve from light to the values of a picture. Black and white stay black and white.
struct LM_EXPORT ToneCurve {
  /// The curves that there are.
  enum Kind {
    kLinear,  ///< values are proportional to light
    kSRGB,    ///< IEC 61966-2-1, for computer screens and most picture files
    kBT709,   ///< ITU-R BT.709, for video
    kGamma,   ///< light to the power of 1 / `gamma`
  };

  Kind kind = kLinear;  ///< which of them
  double gamma = 2.2;   ///< of `kGamma`, more than 0

  /// Whether it is a curve: its kind is known, and its gamma is a finite number above 0.
  bool IsValid() const;
  /// The value for an amount of light. Both are 0 (black) to 1 (white); light beyond is limited to that.
  double At(double light) const;
};

/// The steps of a channel from samples to light: max(sample - black, 0) * gain + offset.
struct ChannelCurve {
  double black = 0;   ///< the level of black, 0 or more; what is below becomes black
  double gain = 1;    ///< 0 or more
  double offset = 0;  ///< may be negative
};

}  // namespace LmImagingLib
