#include <cmath>

#include "LmImagingLib/ToneCurve.h"

namespace LmImagingLib {

bool ToneCurve::IsValid() const {
  switch (kind) {
    case kLinear:
    case kSRGB:
    case kBT709:
      return true;
    case kGamma:
      return gamma > 0 && std::isfinite(gamma);
  }
  return false;
}

double ToneCurve::At(double light) const {
  if (!(light > 0)) return 0;
  if (light >= 1) return 1;
  switch (kind) {
    case kSRGB:
      return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    case kBT709:
      return light < 0.018 ? 4.5 * light : 1.099 * std::pow(light, 0.45) - 0.099;
    case kGamma:
      return std::pow(light, 1 / gamma);
    default:
      return light;
  }
}

}  // namespace LmImagingLib
