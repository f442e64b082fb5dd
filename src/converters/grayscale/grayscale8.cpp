// Grayscale of 8 bits, one byte a pixel.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

Channels LineAt(const SourceLines& in, std::size_t first, std::size_t /*count*/, Strip& /*strip*/) {
  const std::uint8_t* line = in.line[0] + first;
  return {line, line, line};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale8Bytes, LineAt)
