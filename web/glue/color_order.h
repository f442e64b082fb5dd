#pragma once

#include <vector>

#include "frame_samples.h"

namespace LmPage {

/// The four layouts of a mosaic as bits of `ConversionFlags`, likeliest first. The two greens of a cell are alike,
/// so the diagonal of green is sure. Red and blue follow a rule of thumb: without white balance a sensor sees less red
/// than blue in white light; with it, the world is more red than blue.
std::vector<unsigned long> MosaicOrders(const FrameSamples& frame);

/// Bits a byte that colours make unlikely: chroma far from its middle, and more blue than red in balanced colours.
double ChromaRarity(const FrameSamples& frame);

}  // namespace LmPage
