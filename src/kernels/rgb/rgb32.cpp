// RGB32: the bytes red, green, blue and one that is ignored.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
#include "kernels/rgb/planes.h"
#include "kernels/rgb/whole_pixels.h"
#include "kernels/writers/rgb16.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB32Group {
  static constexpr std::size_t kPixels = 1, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB32, ColorSamples<RGB32Group, 1>)
LM_EXPORT_LUMA_DECODER(RGB32, LumaOfFourBytes<RGB32Group>)
LM_DEFINE_DIRECT(RGB32ToPlanar24, StorePlanes<ColorSamples<RGB32Group, 1>>)
LM_EXPORT_DIRECT(RGB32ToRGB16, WholePixels<RGB32Group>, RGB16Writer)
