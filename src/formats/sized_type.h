#pragma once

#include <cstdint>

#include "LmImagingLib/PixelType.h"

namespace LmImagingLib {

/// A pixel type without a class of its own in the interface.
template <unsigned short kBits, unsigned short kBytes, bool kIsMosaic = false>
class Sized : public PixelType {
 public:
  explicit Sized(const PixelTypeID& id) : PixelType(id, kBits, kBytes, kIsMosaic) {}
};

/// The same of one whose lines begin with a byte and take the bits of their pixels, up to the next byte.
template <unsigned short kBits, bool kIsMosaic = false>
class Packed : public PixelType {
 public:
  explicit Packed(const PixelTypeID& id) : PixelType(id, kBits, (kBits + 7) / 8, kIsMosaic) {}

  PixelType* Clone() const override { return new Packed(*this); }
  unsigned long GetBufferSizeFor(unsigned long width, unsigned long height) const override {
    return static_cast<unsigned long>((std::uint64_t{width} * kBits + 7) / 8 * height);
  }
};

}  // namespace LmImagingLib
