// YUV 8-bit 4:2:2, two pixels in the bytes Y0 U Y1 V.
#include "kernels/writers/interleaved.h"
#include "kernels/yuv/shared_chroma.h"
#include "kernels/yuv/yuv_decoder.h"
#include "simd/direct.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct YUV8_422Group {
  static constexpr std::size_t kPixels = 2, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{0, 2}, {1, 1}, {3, 3}};  // Y, U, V
};

using YUV8_422Line = SingleLine<SharedChroma<YUV8_422Group, 1, Yuv>>;
using YUV8_422Dealt = DealtChroma<YUV8_422Group, Yuv>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_YUV_DECODER(YUV8_422, SharedChroma, YUV8_422Group, 1)
LM_EXPORT_DIRECT(YUV8_422ToRGB24, YUV8_422Line, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(YUV8_422ToBGR24, YUV8_422Line, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(YUV8_422ToRGB32, YUV8_422Dealt, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(YUV8_422ToBGR32, YUV8_422Dealt, Interleaved<First::kBlue, 4>)
