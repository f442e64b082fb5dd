#pragma once

#include "simd/lanes.h"

// A filter's tables of bytes as multiplications.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Whether a product is faster than a table of bytes, which takes sixteen shuffles where they are narrow.
inline constexpr bool kGainsAreFaster = LM_BYTE_SHUFFLE < 64;

/// A table of bytes that is a gain.
class GainLanes {
 public:
  explicit GainLanes(const ChannelTable<std::uint8_t>& table)
      : mFactor(table.gain.factor), mDown(static_cast<std::uint16_t>(8 - table.gain.shift)) {}

  U8 operator[](U8 index) const {
    return ClampJoin(I16(MultiplyHigh(LowWords(index) >> mDown, mFactor)),
                     I16(MultiplyHigh(HighWords(index) >> mDown, mFactor)));
  }

 private:
  std::uint16_t mFactor, mDown;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
