// BGR of 10 bits packed in four bytes: low bits (ignored), then the top 8 bits of blue, green, red.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR10PackedV1Group {
  static constexpr std::size_t kPixels = 1, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{3}, {2}, {1}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BGR10PackedV1Bytes, ColorSamples<BGR10PackedV1Group, 1>)
