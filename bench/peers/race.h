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

/// Whether all have the pixels of the first one, which is ours. Reports the first byte that differs.
bool SamePixels(const PeerCase& job, const std::vector<Contestant>& contestants, FrameRing& frames,
                const FrameSize& size);

/// Times the contestants in turns. A machine that is shared changes its speed for seconds, which hardly changes the
/// ratios of turns that follow each other.
void Race(std::vector<Contestant>& contestants, FrameRing& frames, const ImageSize& size, int rounds);

}  // namespace LmImagingLib::Bench
