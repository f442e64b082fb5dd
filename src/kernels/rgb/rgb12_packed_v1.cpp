// RGB of 12 bits packed, two pixels in nine bytes: R0, low bits of R0 and G0, G0, B0, low, R1, G1, low, B1.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB12PackedV1Group {
  static constexpr std::size_t kPixels = 2, kSamples = 9;
  static constexpr std::size_t kAt[][kPixels] = {{0, 5}, {2, 6}, {3, 8}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB12PackedV1Bytes, ColorSamples<RGB12PackedV1Group, 1>)
