// YUV 8-bit 4:2:2, two pixels in the bytes Y0 U Y1 V.
#include "converters/yuv/shared_chroma.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Group {
  static constexpr std::size_t kPixels = 2, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{0, 2}, {1, 1}, {3, 3}};  // Y, U, V
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV8_422, SharedChroma<Group, 1>)
