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
  double best = 0;  ///< nanoseconds a frame
};

/// Whether all have the pixels of the first one, which is ours. Reports the first byte that differs.
bool SamePixels(const PeerCase& job, const std::vector<Contestant>& contestants, FrameRing& frames,
                const FrameSize& size);

/// Finds the least time of each contestant in many short turns.
void Race(std::vector<Contestant>& contestants, FrameRing& frames, const ImageSize& size, int rounds);

}  // namespace LmImagingLib::Bench
