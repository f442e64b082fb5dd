// BGR48: the 16-bit little-endian words blue, green, red.
#include "kernels/decoder.h"
#include "kernels/rgb/packed_luma.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR48Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{2}, {1}, {0}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(BGR48, ColorSamples<BGR48Group, 2>)
LM_DEFINE_DIRECT(BGR48ToLuma8, WideThreesToLuma<BGR48Group>)
LM_EXPORT_DIRECT(BGR48ToLuma16, LumaOfThrees<BGR48Group, std::uint16_t>, LumaToWords<std::uint16_t, false>)
