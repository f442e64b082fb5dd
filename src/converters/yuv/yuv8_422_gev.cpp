// YUV 8-bit 4:2:2 GEV, two pixels in the bytes U Y0 V Y1.
#include "convert/writers/interleaved.h"
#include "converters/yuv/shared_chroma.h"
#include "simd/direct.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Group {
  static constexpr std::size_t kPixels = 2, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{1, 3}, {0, 0}, {2, 2}};  // Y, U, V
};

using Line = SingleLine<SharedChroma<Group, 1>>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV8_422_GEV, SharedChroma<Group, 1>)
LM_EXPORT_DIRECT(YUV8_422_GEVToRGB24, Line, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(YUV8_422_GEVToBGR24, Line, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(YUV8_422_GEVToRGB32, Line, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(YUV8_422_GEVToBGR32, Line, Interleaved<First::kBlue, 4>)
