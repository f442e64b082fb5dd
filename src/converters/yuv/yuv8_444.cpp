// YUV 8-bit 4:4:4, the bytes Y U V.
#include "converters/yuv/yuv_to_rgb.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // Y, U, V
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV8_444, ColorSamples<Group, 1, Yuv>)
