#include "race.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "../machine.h"

namespace LmImagingLib::Bench {

namespace {

constexpr double kTurn = 3e6;  // nanoseconds

Image ImageOf(const FrameRing& frames, const ImageSize& size) {
  return {frames.Source(), frames.Destination(), static_cast<int>(size.width), static_cast<int>(size.height)};
}

// Keeps the noise to values that cameras deliver: words of 12 bits, and a luma of 16 or more; OpenCV clamps less.
void LimitSamples(const PeerCase& job, FrameRing& frames, const ImageSize& size) {
  const bool words = job.source == 0x10003, yuv = job.source == 0x40001 || job.source == 0x40008;
  if (!words && !yuv) return;
  std::uint8_t* const bytes = frames.Source();
  for (std::size_t i = 0; i < 2 * size.Pixels(); i += 2) {
    bytes[i] |= yuv ? 0x10 : 0;
    bytes[i + 1] = static_cast<std::uint8_t>(yuv ? bytes[i + 1] | 0x10 : bytes[i + 1] & 0x0F);
  }
}

bool Compared(const PeerCase& job, std::size_t at, const ImageSize& size, std::size_t bytes) {
  if (bytes == 4 * size.Pixels()) return at % 4 != 3;
  if (job.source != 0x20010) return true;
  const std::size_t x = at / 3 % size.width, y = at / 3 / size.width;
  return at % 3 != 1 && x >= 2 && y >= 2 && x + 2 < size.width && y + 2 < size.height;
}

// Times calls after one that is not timed: whoever follows a slow one finds less of the frames in the caches.
double Turn(const Contestant& contestant, FrameRing& frames, const ImageSize& size, int calls) {
  contestant.convert(ImageOf(frames, size));
  frames.Advance();
  const std::clock_t begin = std::clock();
  for (int i = 0; i < calls; ++i) {
    contestant.convert(ImageOf(frames, size));
    frames.Advance();
  }
  return NanosecondsSince(begin) / calls;
}

}  // namespace

bool SamePixels(const PeerCase& job, const std::vector<Contestant>& contestants, FrameRing& frames,
                const FrameSize& size) {
  LimitSamples(job, frames, size);
  const Image image = ImageOf(frames, size);
  const std::size_t bytes = frames.DestinationBytes();
  contestants[0].convert(image);
  const std::vector<std::uint8_t> ours(image.destination, image.destination + bytes);
  bool same = true;
  for (std::size_t i = 1; i < contestants.size(); ++i) {
    std::memset(image.destination, 0x55, bytes);
    contestants[i].convert(image);
    for (std::size_t at = 0; at < bytes; ++at) {
      if (std::abs(image.destination[at] - ours[at]) <= job.tolerance || !Compared(job, at, size, bytes)) continue;
      std::fprintf(stderr, "%s, %s: byte %zu is %d, and ours is %d\n", job.name, contestants[i].library.c_str(), at,
                   image.destination[at], ours[at]);
      same = false;
      break;
    }
  }
  return same;
}

void Race(std::vector<Contestant>& contestants, FrameRing& frames, const ImageSize& size, int rounds) {
  std::vector<int> calls;
  for (Contestant& contestant : contestants) {
    contestant.best = Turn(contestant, frames, size, 1);
    calls.push_back(std::clamp(static_cast<int>(kTurn / std::max(contestant.best, 1.0)), 1, 100));
  }
  std::vector<std::vector<double>> ratios(contestants.size());
  for (int round = 0; round < rounds; ++round) {
    double ours = 0;
    for (std::size_t i = 0; i < contestants.size(); ++i) {
      const double time = Turn(contestants[i], frames, size, calls[i]);
      if (i == 0) ours = time;
      contestants[i].best = std::min(contestants[i].best, time);
      ratios[i].push_back(time / ours);
    }
  }
  for (std::size_t i = 0; i < contestants.size(); ++i) {
    std::nth_element(ratios[i].begin(), ratios[i].begin() + rounds / 2, ratios[i].end());
    contestants[i].ratio = ratios[i][static_cast<std::size_t>(rounds) / 2];
  }
}

}  // namespace LmImagingLib::Bench
