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

/// Looks the samples of a row up, even and odd columns in tables of their own. The address of the row may be any.
/// @param In  a sample of the row: a byte or a word
template <class In, class Out>
void LookUpRow(const std::uint8_t* row, std::size_t width, const RowTables& tables, Out* out) {
  if constexpr (sizeof(In) == 1) {
    kLookUpBytes.Active()(row, width, tables, out);
  } else if constexpr (sizeof(Out) == 1) {
    kLookUpToBytes.Active()(row, width, tables, out);
  } else {
    kLookUpWords.Active()(row, width, tables, out);
  }
}

template <class In, class Out>
void LookUpSamples(const In* row, std::size_t width, const RowTables& tables, Out* out) {
  LookUpRow<In>(reinterpret_cast<const std::uint8_t*>(row), width, tables, out);
}

}  // namespace LmImagingLib
