// Two-tap readout: samples in pairs of left half and right half, either half possibly read backwards.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class Sample>
void SplitTap(const Sample* samples, std::size_t pairs, bool backwards, Sample* half) {
  for (std::size_t i = 0; i < pairs; ++i) half[backwards ? pairs - 1 - i : i] = samples[2 * i];
}

}  // namespace

SplitTapsKernel<std::uint8_t> SplitTaps;
void SplitTaps(const std::uint8_t* samples, std::size_t pairs, bool leftBackwards, bool rightBackwards,
               std::uint8_t* left, std::uint8_t* right) {
  SplitTap(samples, pairs, leftBackwards, left);
  SplitTap(samples + 1, pairs, rightBackwards, right);
}

SplitTapsKernel<std::uint16_t> SplitTaps;
void SplitTaps(const std::uint16_t* samples, std::size_t pairs, bool leftBackwards, bool rightBackwards,
               std::uint16_t* left, std::uint16_t* right) {
  SplitTap(samples, pairs, leftBackwards, left);
  SplitTap(samples + 1, pairs, rightBackwards, right);
}

}  // namespace LmImagingLib::LM_ISA
