// YUV 8-bit 4:1:1, four pixels in the bytes U Y0 Y1 V Y2 Y3.
#include "kernels/yuv/shared_chroma.h"
#include "kernels/yuv/yuv_decoder.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct YUV8_411Group {
  static constexpr std::size_t kPixels = 4, kSamples = 6;
  static constexpr std::size_t kAt[][kPixels] = {{1, 2, 4, 5}, {0, 0, 0, 0}, {3, 3, 3, 3}};  // Y, U, V
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_YUV_DECODER(YUV8_411, SharedChroma, YUV8_411Group, 1)
