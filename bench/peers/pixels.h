#pragma once

#include <vector>

#include "race.h"

namespace LmImagingLib::Bench {

/// Limits the noise of all frames of the ring to what the case says.
void LimitNoise(Noise noise, FrameRing& frames);

/// Whether all have the pixels of the first one, which is ours. Reports the first value that differs.
bool SamePixels(const PeerCase& job, const std::vector<Contestant>& contestants, const FrameRing& frames,
                const ImageSize& size);

}  // namespace LmImagingLib::Bench
