// BGR32: the bytes blue, green, red and one that is ignored.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
#include "kernels/rgb/planes.h"
#include "kernels/rgb/whole_pixels.h"
#include "kernels/writers/rgb16.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR32Group {
  static constexpr std::size_t kPixels = 1, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{2}, {1}, {0}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BGR32, ColorSamples<BGR32Group, 1>)
LM_EXPORT_LUMA_DECODER(BGR32, LumaOfFourBytes<BGR32Group>)
LM_DEFINE_DIRECT(BGR32ToPlanar24, StorePlanes<ColorSamples<BGR32Group, 1>>)
LM_EXPORT_DIRECT(BGR32ToRGB16, WholePixels<BGR32Group>, RGB16Writer)
