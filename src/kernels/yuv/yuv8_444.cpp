// YUV 8-bit 4:4:4, the bytes Y U V.
#include "kernels/yuv/shared_chroma.h"
#include "kernels/yuv/yuv_decoder.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct YUV8_444Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // Y, U, V
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_YUV_DECODER(YUV8_444, OwnChroma, YUV8_444Group, 1)
