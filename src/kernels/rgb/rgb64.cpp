// RGB64: the 16-bit little-endian words red, green, blue and one that is ignored.
#include "kernels/decoder.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB64Group {
  static constexpr std::size_t kPixels = 1, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(RGB64, ColorSamples<RGB64Group, 2>)
