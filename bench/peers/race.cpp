#include "race.h"

#include <algorithm>

#include "../machine.h"

namespace LmImagingLib::Bench {

namespace {

constexpr double kTurn = 3e6;  // nanoseconds
constexpr double kHopeless = 3;

// Times calls after one that is not timed: whoever follows a slow one finds less of the frames in the caches.
double Turn(const Contestant& contestant, FrameRing& frames, const ImageSize& size, int calls) {
  contestant.convert(ImageOf(frames, size));
  frames.Advance();
  const std::clock_t begin = std::clock();
  for (int i = 0; i < calls; ++i) {
    contestant.convert(ImageOf(frames, size));
    frames.Advance();
  }
  return std::max(NanosecondsSince(begin), 1.0) / calls;
}

bool IsFaster(const Contestant& one, const Contestant& other) { return one.best < other.best; }

}  // namespace

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Image ImageOf(const FrameRing& frames, const ImageSize& size) {
  return {frames.Source(), frames.Destination(), static_cast<int>(size.width), static_cast<int>(size.height)};
}

void Race(std::vector<Contestant>& contestants, FrameRing& frames, const ImageSize& size, int rounds) {
  for (Contestant& contestant : contestants) {
    contestant.best = std::min(Turn(contestant, frames, size, 1), Turn(contestant, frames, size, 1));
    contestant.ratio = contestant.best / contestants[0].best;
  }
  const auto fastest = std::min_element(contestants.begin() + 1, contestants.end(), IsFaster)->best;
  std::vector<int> calls;
  for (std::size_t i = 0; i < contestants.size(); ++i) {
    const bool hopeless = i > 0 && contestants[i].best > kHopeless * fastest;
    calls.push_back(hopeless ? 0 : std::clamp(static_cast<int>(kTurn / contestants[i].best), 1, 100));
  }
  std::vector<std::vector<double>> ratios(contestants.size());
  std::vector<double> times(contestants.size());
  for (int round = 0; round < rounds; ++round) {
    frames.Move();
    // A frame that just fits the last-level cache needs several calls to get there. Nobody is timed meanwhile.
    Turn(contestants[0], frames, size, calls[0]);
    const std::size_t first = static_cast<std::size_t>(round) % contestants.size();
    for (std::size_t k = 0; k < contestants.size(); ++k) {
      const std::size_t i = (first + k) % contestants.size();
      if (calls[i] == 0) continue;
      times[i] = Turn(contestants[i], frames, size, calls[i]);
      contestants[i].best = std::min(contestants[i].best, times[i]);
    }
    for (std::size_t i = 0; i < contestants.size(); ++i) ratios[i].push_back(times[i] / times[0]);
  }
  for (std::size_t i = 0; i < contestants.size(); ++i) {
    if (calls[i] != 0) contestants[i].ratio = Median(std::move(ratios[i]));
  }
}

}  // namespace LmImagingLib::Bench
