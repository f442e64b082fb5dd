// YCrCb 8-bit 4:4:4, the bytes Y Cr Cb: Cr is V, Cb is U.
#include "kernels/yuv/shared_chroma.h"
#include "kernels/yuv/yuv_decoder.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct YCrCbGroup {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {2}, {1}};  // Y, U, V
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_YUV_DECODER(YCrCb, OwnChroma, YCrCbGroup, 1)
