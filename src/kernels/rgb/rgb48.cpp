// RGB48: the 16-bit little-endian words red, green, blue.
#include "kernels/decoder.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB48Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(RGB48, ColorSamples<RGB48Group, 2>)
