// BGR24: the bytes blue, green, red.
#include "kernels/decoder.h"
#include "kernels/rgb/packed_luma.h"
#include "kernels/rgb/planes.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR24Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{2}, {1}, {0}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BGR24, ColorSamples<BGR24Group, 1>)
LM_DEFINE_DIRECT(BGR24ToPlanar24, StorePlanes<ColorSamples<BGR24Group, 1>>)
LM_EXPORT_DIRECT(BGR24ToLuma8, LumaOfThrees<BGR24Group, std::uint8_t>, LumaToBytes)
