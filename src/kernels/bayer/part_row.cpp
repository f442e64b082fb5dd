// Parts a row of a mosaic into its even and its odd columns.
#include "kernels/bayer/numbers.h"
#include "simd/fetch.h"
#include "simd/mosaic.h"

namespace LmImagingLib::LM_ISA {
namespace {

// The first `width` of pairs of samples; returns how many were parted.
template <class Sample>
std::size_t PartPairs(const std::uint8_t* row, std::size_t width, std::uint32_t ahead, Number<Sample>* even,
                      Number<Sample>* odd) {
  std::size_t at = 0;
#if LM_LANES
  constexpr std::size_t kStep = kLanes / sizeof(Sample);
  using Pairs = std::conditional_t<sizeof(Sample) == 1, U16, U32>;
  constexpr int kBits = 8 * sizeof(Sample);
  for (; at + kStep <= width; at += kStep) {
    FetchSource(row + at * sizeof(Sample), kLanes, ahead);
    const auto pairs = Pairs(Load(row + at * sizeof(Sample)));
    Write(pairs & static_cast<Sample>(~Sample{0}), even + at / 2);
    Write(pairs >> kBits, odd + at / 2);
  }
#else
  (void)row, (void)width, (void)ahead, (void)even, (void)odd;
#endif
  return at;
}

template <class Sample>
void PartSamples(const std::uint8_t* row, std::size_t width, std::uint32_t ahead, Number<Sample>* even,
                 Number<Sample>* odd) {
  for (std::size_t at = PartPairs<Sample>(row, width, ahead, even, odd); at < width; ++at) {
    Sample sample;
    std::memcpy(&sample, row + at * sizeof sample, sizeof sample);
    (at % 2 == 0 ? even : odd)[at / 2] = sample;
  }
}

}  // namespace

PartRowKernel<std::uint8_t> PartRow;
PartRowKernel<std::uint16_t> PartRow;
void PartRow(const std::uint8_t* row, std::size_t width, std::uint32_t ahead, std::int16_t* even, std::int16_t* odd) {
  PartSamples<std::uint8_t>(row, width, ahead, even, odd);
}
void PartRow(const std::uint8_t* row, std::size_t width, std::uint32_t ahead, std::int32_t* even, std::int32_t* odd) {
  PartSamples<std::uint16_t>(row, width, ahead, even, odd);
}

CoarsenKernel Coarsen;
void Coarsen(const std::int32_t* __restrict numbers, std::size_t count, std::uint32_t shift,
             std::int16_t* __restrict coarse) {
  for (std::size_t i = 0; i < count; ++i) coarse[i] = static_cast<std::int16_t>(numbers[i] >> shift);
}

}  // namespace LmImagingLib::LM_ISA
