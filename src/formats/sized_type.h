#pragma once

#include "LmImagingLib/PixelType.h"

namespace LmImagingLib {

/// A pixel type without a class of its own in the interface.
template <unsigned short kBits, unsigned short kBytes, bool kIsMosaic = false>
class Sized : public PixelType {
 public:
  explicit Sized(const PixelTypeID& id) : PixelType(id, kBits, kBytes, kIsMosaic) {}
};

}  // namespace LmImagingLib
