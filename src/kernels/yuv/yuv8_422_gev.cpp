// YUV 8-bit 4:2:2 GEV, two pixels in the bytes U Y0 V Y1.
#include "kernels/writers/interleaved.h"
#include "kernels/yuv/shared_chroma.h"
#include "kernels/yuv/yuv_decoder.h"
#include "simd/direct.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct YUV8_422_GEVGroup {
  static constexpr std::size_t kPixels = 2, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{1, 3}, {0, 0}, {2, 2}};  // Y, U, V
};

using YUV8_422_GEVLine = SingleLine<SharedChroma<YUV8_422_GEVGroup, 1, Yuv>>;
using YUV8_422_GEVDealt = DealtChroma<YUV8_422_GEVGroup, Yuv>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_YUV_DECODER(YUV8_422_GEV, SharedChroma, YUV8_422_GEVGroup, 1)
LM_EXPORT_DIRECT(YUV8_422_GEVToRGB24, YUV8_422_GEVLine, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(YUV8_422_GEVToBGR24, YUV8_422_GEVLine, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(YUV8_422_GEVToRGB32, YUV8_422_GEVDealt, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(YUV8_422_GEVToBGR32, YUV8_422_GEVDealt, Interleaved<First::kBlue, 4>)
