// Four-tap readout: samples in groups of four, one of each zone of the line, left to right; the two zones of the left
// half are read forwards, those of the right half backwards.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <std::size_t kSampleBytes>
void JoinZones(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels) {
  const std::size_t zone = pixels / 4;
  for (std::size_t k = 0; k < zone; ++k) {
    const std::size_t targets[4] = {k, zone + k, 3 * zone - 1 - k, 4 * zone - 1 - k};
    for (const std::size_t target : targets) {
      std::memcpy(destination + target * kSampleBytes, source, kSampleBytes);
      source += kSampleBytes;
    }
  }
}

}  // namespace

ReorderKernel JoinQuadTaps8, JoinQuadTaps16;

void JoinQuadTaps8(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels) {
  JoinZones<1>(source, destination, pixels);
}

void JoinQuadTaps16(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels) {
  JoinZones<2>(source, destination, pixels);
}

}  // namespace LmImagingLib::LM_ISA
