#pragma once

#include <string>
#include <vector>

#include "../frame.h"
#include "case.h"
#include "peer.h"

namespace LmImagingLib::Bench {

/// One library in one case.
struct Contestant {
  std::string library;
  std::function<void(const Image&)> convert;
  double best = 0;   ///< the least nanoseconds a frame of any round
  double ratio = 0;  ///< of its time and that of the first contestant in the same round, the median of all rounds
};

/// The middle of the values, or the greater one of two.
double Median(std::vector<double> values);

/// The current frame of a ring.
Image ImageOf(const FrameRing& frames, const ImageSize& size);

/// Times the contestants in turns, each round elsewhere in the buffers and with another one first. A machine that is
/// shared changes its speed for seconds, which hardly changes the ratios of turns that follow each other. Of the
/// others, whoever is far from being the fastest leaves after one turn.
void Race(std::vector<Contestant>& contestants, FrameRing& frames, const ImageSize& size, int rounds);

}  // namespace LmImagingLib::Bench
