#pragma once

#include "simd/lanes.h"

// Moves the samples of a window of registers to places that are known when a kernel is compiled.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

template <class Index, std::size_t kStep, class Vector, std::size_t... kLane>
inline Vector PickStep(Vector before, Vector next, std::index_sequence<kLane...>) {
  // Lanes that are in the vectors before stay where an earlier step put them.
  constexpr std::size_t kCount = sizeof...(kLane);
  return __builtin_shufflevector(before, next,
                                 (Index::At(kLane) / kCount == kStep ? kCount + Index::At(kLane) % kCount
                                  : kStep == 1                       ? Index::At(kLane) % kCount
                                                                     : kLane)...);
}

template <class Index, std::size_t kStep, class Vector, std::size_t kVectors>
inline Vector PickFrom(Vector before, const Vector (&window)[kVectors]) {
  if constexpr (kStep == kVectors) {
    return before;
  } else {
    constexpr std::size_t kCount = sizeof(Vector) / sizeof(window[0][0]);
    return PickFrom<Index, kStep + 1>(PickStep<Index, kStep>(before, window[kStep], std::make_index_sequence<kCount>{}),
                                      window);
  }
}

/// Lane i of the result is sample `Index::At(i)` of the window.
template <class Index, class Vector, std::size_t kVectors>
inline Vector Pick(const Vector (&window)[kVectors]) {
  if constexpr (kVectors == 1) {
    constexpr std::size_t kCount = sizeof(Vector) / sizeof(window[0][0]);
    return PickStep<Index, 1>(window[0], window[0], std::make_index_sequence<kCount>{});
  } else {
    return PickFrom<Index, 1>(window[0], window);
  }
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
