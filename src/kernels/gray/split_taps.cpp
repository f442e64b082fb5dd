// Two-tap readout: samples in pairs of left half and right half, either half possibly read backwards.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

void SplitTap(const std::uint8_t* samples, std::size_t pairs, bool backwards, std::uint8_t* half) {
  for (std::size_t i = 0; i < pairs; ++i) half[backwards ? pairs - 1 - i : i] = samples[2 * i];
}

}  // namespace

SplitTapsKernel SplitTaps;
void SplitTaps(const std::uint8_t* samples, std::size_t pairs, bool leftBackwards, bool rightBackwards,
               std::uint8_t* left, std::uint8_t* right) {
  SplitTap(samples, pairs, leftBackwards, left);
  SplitTap(samples + 1, pairs, rightBackwards, right);
}

}  // namespace LmImagingLib::LM_ISA
