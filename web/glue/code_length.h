#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frame_samples.h"

namespace LmPage {

/// A rectangle of pixels.
struct Tile {
  std::size_t x, y, width, height;
};

/// How many bits an encoder would need for a byte of the frame, if it predicted each sample from the one on its left
/// and from the one above. It is lowest for the reading under which neighbours are alike: any wrong width, order of
/// bits or mosaic makes neighbours of samples that are none.
/// @param isMosaic  whether neighbours of the same colour are two samples apart
double CodeLength(const FrameSamples& frame, bool isMosaic, const std::vector<Tile>& tiles);

/// `count` tiles of at most `width` x `height` pixels, spread over the frame; they begin with a group.
std::vector<Tile> SpreadTiles(const FrameSamples& frame, std::size_t count, std::size_t width, std::size_t height);

}  // namespace LmPage
