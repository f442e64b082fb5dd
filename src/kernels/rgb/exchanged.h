#pragma once

#include <utility>

#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// A layout that has red where `Layout` has blue, and blue where it has red.
template <class Layout>
struct RedBlueExchanged : Layout {
  template <class Sample>
  static auto Group(const SourceLines& in, Rgb<Sample>* out) -> decltype(Layout::Group(in, out)) {
    Layout::Group(in, out);
    for (std::size_t k = 0; k < Layout::kPixels; ++k) std::swap(out[k].r, out[k].b);
  }

#if LM_LANES
  template <class Reader, class Sample>
  static auto Block(const Reader& read, Of<Sample> samples) -> decltype(Layout::Block(read, samples)) {
    const RgbLanes<Sample> pixels = Layout::Block(read, samples);
    return {pixels.b, pixels.g, pixels.r};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
