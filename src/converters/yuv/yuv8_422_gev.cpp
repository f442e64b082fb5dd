// YUV 8-bit 4:2:2 GEV, two pixels in the bytes U Y0 V Y1.
#include "converters/yuv/shared_chroma.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Group {
  static constexpr std::size_t kPixels = 2, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{1, 3}, {0, 0}, {2, 2}};  // Y, U, V
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV8_422_GEV, SharedChroma<Group, 1>)
