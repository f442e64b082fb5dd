// RGB24: the bytes red, green, blue.
#include "kernels/decoder.h"
#include "kernels/rgb/packed_luma.h"
#include "kernels/rgb/planes.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB24Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB24, ColorSamples<RGB24Group, 1>)
LM_DEFINE_DIRECT(RGB24ToPlanar24, StorePlanes<ColorSamples<RGB24Group, 1>>)
LM_EXPORT_DIRECT(RGB24ToLuma8, LumaOfThrees<RGB24Group, std::uint8_t>, LumaToBytes)
