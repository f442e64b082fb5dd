#pragma once

#include "formats/formats.h"
#include "simd/loops.h"

/// Exports the decoder of a layout as the kernel `Name`, which has a row in formats.inc.
#define LM_EXPORT_DECODER(Name, ...)                                      \
  namespace LmImagingLib::LM_ISA {                                        \
  static_assert(HasRow(#Name, __VA_ARGS__::kPixels, __VA_ARGS__::kBytes), \
                "the row says another group than the kernel");            \
  }                                                                       \
  LM_DEFINE_DECODER(std::uint8_t, Name, __VA_ARGS__)

/// The same for a layout of samples of more than 8 bits: into bytes and into words.
#define LM_EXPORT_WIDE_DECODER(Name, ...) \
  LM_EXPORT_DECODER(Name, __VA_ARGS__)    \
  LM_DEFINE_DECODER(std::uint16_t, Name, __VA_ARGS__)
