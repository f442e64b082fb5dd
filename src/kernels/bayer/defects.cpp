// Defect pixels of a row of a mosaic: samples far outside of the range of the eight around of the same colour.
#include "kernels/bayer/numbers.h"
#include "simd/mosaic.h"

namespace LmImagingLib::LM_ISA {
namespace {

// Plain enough for compilers to make vectors of it.
template <class Sample>
void Correct(const Sample* __restrict above, const Sample* __restrict row, const Sample* __restrict below,
             std::size_t width, std::uint32_t threshold, Sample* __restrict out) {
  const auto most = static_cast<Sample>(threshold);
  for (std::size_t i = 0; i < width; ++i) {
    // Samples at columns i - 2, i and i + 2 are at i, i + 2 and i + 4: rows begin with two that are mirrored.
    const Sample lowest = Lesser(Lesser(Lesser(above[i], above[i + 2]), Lesser(above[i + 4], row[i])),
                                 Lesser(Lesser(row[i + 4], below[i]), Lesser(below[i + 2], below[i + 4])));
    const Sample highest = Greater(Greater(Greater(above[i], above[i + 2]), Greater(above[i + 4], row[i])),
                                   Greater(Greater(row[i + 4], below[i]), Greater(below[i + 2], below[i + 4])));
    const Sample sample = row[i + 2];
    const auto over = static_cast<Sample>(Greater(sample, highest) - highest);
    const auto under = static_cast<Sample>(lowest - Lesser(sample, lowest));
    out[i] = over > most ? highest : under > most ? lowest : sample;
  }
}

}  // namespace

DefectsKernel<std::uint8_t> CorrectDefects;
DefectsKernel<std::uint16_t> CorrectDefects;
void CorrectDefects(const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below, std::size_t width,
                    std::uint32_t threshold, std::uint8_t* out) {
  Correct(above, row, below, width, threshold, out);
}
void CorrectDefects(const std::uint16_t* above, const std::uint16_t* row, const std::uint16_t* below, std::size_t width,
                    std::uint32_t threshold, std::uint16_t* out) {
  Correct(above, row, below, width, threshold, out);
}

}  // namespace LmImagingLib::LM_ISA
