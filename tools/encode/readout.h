#pragma once

#include <cstdint>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// Puts the samples of a line into the order in which the taps of a sensor deliver them, as the type's id says.
std::vector<std::uint16_t> InReadoutOrder(const LmImagingLib::PixelTypeID& type, std::vector<std::uint16_t> samples);

}  // namespace LmTool
