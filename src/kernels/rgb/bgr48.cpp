// BGR48: the 16-bit little-endian words blue, green, red.
#include "kernels/decoder.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR48Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{2}, {1}, {0}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(BGR48, ColorSamples<BGR48Group, 2>)
