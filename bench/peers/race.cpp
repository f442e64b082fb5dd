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
  for (int round = 0; round < rounds; ++round) {
    frames.Move();
    double ours = 0;
    for (std::size_t i = 0; i < contestants.size(); ++i) {
      if (calls[i] == 0) continue;
      const double time = Turn(contestants[i], frames, size, calls[i]);
      if (i == 0) ours = time;
      contestants[i].best = std::min(contestants[i].best, time);
      ratios[i].push_back(time / ours);
    }
  }
  for (std::size_t i = 0; i < contestants.size(); ++i) {
    if (calls[i] != 0) contestants[i].ratio = Median(std::move(ratios[i]));
  }
}

}  // namespace LmImagingLib::Bench
