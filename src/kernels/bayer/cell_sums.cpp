// Sums of the cells of 2 x 2 samples of a mosaic, those whose samples all lie in a range.
#include "simd/interleave.h"
#include "simd/lanes.h"
#include "simd/mosaic.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class Sample>
void AddCell(const Sample (&top)[2], const Sample (&bottom)[2], std::uint32_t least, std::uint32_t range,
             CellSums& sums) {
  // One comparison a sample: those below the least one wrap.
  for (const std::uint32_t sample : {top[0], top[1], bottom[0], bottom[1]}) {
    if (sample - least > range) return;
  }
  ++sums.cells;
  sums.top[0] += top[0];
  sums.top[1] += top[1];
  sums.bottom[0] += bottom[0];
  sums.bottom[1] += bottom[1];
}

#if LM_LANES

/// The sum of all lanes.
template <class Vector>
std::uint64_t Total(Vector v) {
  std::uint64_t total = 0;
  for (std::size_t lane = 0; lane < kLanes / sizeof(v[0]); ++lane) total += v[lane];
  return total;
}

/// Adds whole registers of cells, and returns how many cells these are. A cell is a lane of two samples of each row.
template <class Sample>
std::size_t AddBlocks(const std::uint8_t* top, const std::uint8_t* bottom, std::size_t cells, std::size_t step,
                      std::uint32_t leastSample, std::uint32_t rangeOfSamples, CellSums& sums) {
  using Pairs = typename PairsOf<Sample>::Type;
  constexpr std::size_t kCells = kLanes / (2 * sizeof(Sample));
  constexpr int kBits = 8 * sizeof(Sample);
  // So many of the greatest sample fit a lane.
  constexpr std::size_t kMost = std::size_t{1} << kBits;
  const auto least = static_cast<Sample>(leastSample), range = static_cast<Sample>(rangeOfSamples);
  Pairs looked{};
  for (std::size_t cell = 0; cell < kCells; cell += step) looked[cell] -= 1;
  const auto load = [](const std::uint8_t* from) { return Lanes<Sample>(Load(from)); };
  std::size_t done = 0;
  while (done + kCells <= cells) {
    Pairs count{}, topEven{}, topOdd{}, bottomEven{}, bottomOdd{};
    for (std::size_t k = 0; k < kMost && done + kCells <= cells; ++k, done += kCells, top += kLanes, bottom += kLanes) {
      const Lanes<Sample> upper = load(top), lower = load(bottom);
      const auto areInside = Lanes<Sample>(upper - least <= range) & Lanes<Sample>(lower - least <= range);
      const Pairs isUsable = Pairs(Pairs(areInside) == static_cast<decltype(Pairs{}[0])>(~Pairs{}[0])) & looked;
      count -= isUsable;
      const Pairs usableUpper = Pairs(upper) & isUsable, usableLower = Pairs(lower) & isUsable;
      topEven += usableUpper & static_cast<Sample>(~Sample{0});
      topOdd += usableUpper >> kBits;
      bottomEven += usableLower & static_cast<Sample>(~Sample{0});
      bottomOdd += usableLower >> kBits;
    }
    sums.cells += Total(count);
    sums.top[0] += Total(topEven);
    sums.top[1] += Total(topOdd);
    sums.bottom[0] += Total(bottomEven);
    sums.bottom[1] += Total(bottomOdd);
  }
  return done;
}

#else

template <class Sample>
std::size_t AddBlocks(const std::uint8_t* /*top*/, const std::uint8_t* /*bottom*/, std::size_t /*cells*/,
                      std::size_t /*step*/, std::uint32_t /*least*/, std::uint32_t /*range*/, CellSums& /*sums*/) {
  return 0;
}

#endif

template <class Sample>
void Add(const std::uint8_t* top, const std::uint8_t* bottom, std::size_t cells, std::size_t step, std::uint32_t least,
         std::uint32_t range, CellSums& sums) {
  for (std::size_t i = AddBlocks<Sample>(top, bottom, cells, step, least, range, sums); i < cells; i += step) {
    Sample upper[2], lower[2];
    std::memcpy(upper, top + i * sizeof upper, sizeof upper);
    std::memcpy(lower, bottom + i * sizeof lower, sizeof lower);
    AddCell(upper, lower, least, range, sums);
  }
}

}  // namespace

CellSumsKernel AddByteCells;
CellSumsKernel AddWordCells;
void AddByteCells(const std::uint8_t* top, const std::uint8_t* bottom, std::size_t cells, std::size_t step,
                  std::uint32_t least, std::uint32_t range, CellSums& sums) {
  Add<std::uint8_t>(top, bottom, cells, step, least, range, sums);
}
void AddWordCells(const std::uint8_t* top, const std::uint8_t* bottom, std::size_t cells, std::size_t step,
                  std::uint32_t least, std::uint32_t range, CellSums& sums) {
  Add<std::uint16_t>(top, bottom, cells, step, least, range, sums);
}

}  // namespace LmImagingLib::LM_ISA
