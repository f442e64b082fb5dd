// YUV 10-bit 4:2:2, two pixels in the 16-bit little-endian words Y0 U Y1 V.
#include "kernels/yuv/shared_chroma.h"
#include "kernels/yuv/yuv_decoder.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct YUV10Group {
  static constexpr std::size_t kPixels = 2, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{0, 2}, {1, 1}, {3, 3}};  // Y, U, V
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_YUV_DECODER(YUV10, SharedChroma, YUV10Group, 2)
