// The step between a source and a writer: each channel value is replaced by its entry in the channel's table.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

LookupKernel LookUp;
Channels LookUp(const LookupTables& tables, const Channels& in, std::size_t count, Strip& strip) {
  for (std::size_t i = 0; i < count; ++i) {
    const Rgb pixel{in.red[i], in.green[i], in.blue[i]};
    strip.red[i] = tables.red[pixel.r];
    strip.green[i] = tables.green[pixel.g];
    strip.blue[i] = tables.blue[pixel.b];
  }
  return {strip.red, strip.green, strip.blue};
}

}  // namespace LmImagingLib::LM_ISA
