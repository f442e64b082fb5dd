// RGB48: the 16-bit little-endian words red, green, blue.
#include "kernels/decoder.h"
#include "kernels/rgb/packed_luma.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB48Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(RGB48, ColorSamples<RGB48Group, 2>)
LM_DEFINE_DIRECT(RGB48ToLuma8, WideThreesToLuma<RGB48Group>)
LM_EXPORT_DIRECT(RGB48ToLuma16, LumaOfThrees<RGB48Group, std::uint16_t>, LumaToWords<std::uint16_t, false>)
