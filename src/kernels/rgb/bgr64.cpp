// BGR64: the 16-bit little-endian words blue, green, red and one that is ignored.
#include "kernels/decoder.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR64Group {
  static constexpr std::size_t kPixels = 1, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{2}, {1}, {0}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(BGR64, ColorSamples<BGR64Group, 2>)
