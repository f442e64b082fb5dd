// RGB48: the 16-bit little-endian words red, green, blue.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Group {
  static constexpr std::size_t kPixels = 1, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0}, {1}, {2}};  // red, green, blue
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB48, ColorSamples<Group, 2>)

namespace LmImagingLib::LM_ISA {

// The words lie in the order of the bytes to write.
DirectKernel RGB48ToRGB24;
void RGB48ToRGB24(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                  std::size_t first) {
  WordsToBytes(in, 3 * from, 3 * count, targets->line + 3 * first);
}

}  // namespace LmImagingLib::LM_ISA
