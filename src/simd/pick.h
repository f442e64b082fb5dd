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

/// The two bytes of words, each as the upper half of a word; the lower half is 0.
struct WordBytes {
  U16 low, high;
};

#if LM_BYTE_SHUFFLE == 64
template <class Index, std::size_t... kLane>
inline WordBytes PickWords(const U8 (&window)[2], std::index_sequence<kLane...>) {
  // A shuffle that leaves lanes out costs as much as one that does not.
  constexpr __mmask64 kUpper = 0xAAAAAAAAAAAAAAAA;
  const U8 low{static_cast<std::uint8_t>(Index::At(kLane / 2 * 2))...};
  const U8 high{static_cast<std::uint8_t>(Index::At(kLane))...};
  return {U16(_mm512_maskz_permutex2var_epi8(kUpper, __m512i(window[0]), __m512i(low), __m512i(window[1]))),
          U16(_mm512_maskz_permutex2var_epi8(kUpper, __m512i(window[0]), __m512i(high), __m512i(window[1])))};
}
#endif

/// The words whose byte i is byte `Index::At(i)` of the window.
template <class Index>
inline WordBytes PickWords(const U8 (&window)[2]) {
#if LM_BYTE_SHUFFLE == 64
  return PickWords<Index>(window, std::make_index_sequence<kLanes>{});
#else
  const U16 words = U16(Pick<Index>(window));
  return {words << 8, words & 0xFF00};
#endif
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
