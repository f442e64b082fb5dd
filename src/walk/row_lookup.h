#pragma once

#include "simd/kernel.h"
#include "simd/mosaic.h"

namespace LmImagingLib {

using LookUpBytesKernel = LookUpRowKernel<std::uint8_t, std::uint8_t>;
using LookUpToBytesKernel = LookUpRowKernel<std::uint16_t, std::uint8_t>;
using LookUpWordsKernel = LookUpRowKernel<std::uint16_t, std::uint16_t>;
LM_DECLARE_KERNEL(LookUpBytesKernel, LookUpBytes)
LM_DECLARE_KERNEL(LookUpToBytesKernel, LookUpToBytes)
LM_DECLARE_KERNEL(LookUpWordsKernel, LookUpWords)

/// Looks the samples of a row up, even and odd columns in tables of their own.
template <class In, class Out>
void LookUpSamples(const In* row, std::size_t width, const std::uint16_t* even, const std::uint16_t* odd, Out* out) {
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(row);
  if constexpr (sizeof(In) == 1) {
    kLookUpBytes.Active()(bytes, width, even, odd, out);
  } else if constexpr (sizeof(Out) == 1) {
    kLookUpToBytes.Active()(bytes, width, even, odd, out);
  } else {
    kLookUpWords.Active()(bytes, width, even, odd, out);
  }
}

}  // namespace LmImagingLib
