// Planar RGB of 8 bits: a plane of red, one of green, one of blue.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

Channels PlanesAt(const SourceLines& in, std::size_t first, std::size_t /*count*/, Strip& /*strip*/) {
  return {in.line[0] + first, in.line[1] + first, in.line[2] + first};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGBPlanar8, PlanesAt)
