// Grayscale of 10 to 16 bits in 16-bit little-endian words.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Group {
  static constexpr std::size_t kPixels = 1, kSamples = 1;
  static constexpr std::size_t kAt[][kPixels] = {{0}};
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale16, GraySamples<Group, 2>)
