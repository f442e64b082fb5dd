#pragma once

#include "simd/direct.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Colours of four bytes as whole pixels, for writers that part their channels by sums.
/// @tparam Group_  the places of red, green and blue
template <class Group_>
struct WholePixels : SingleLine<ColorSamples<Group_, 1>> {
#if LM_LANES
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    FourBytePixels<Group_::kAt[0][0] == 0> pixels;
    for (std::size_t k = 0; k < 4; ++k) pixels.part[k] = U32(read(0, k * kLanes));
    store(0, pixels);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
