#pragma once

#include <optional>
#include <vector>

#include "simd/mosaic.h"

namespace LmImagingLib {

/// The parts that equal a table for samples of 9 to 12 bits in each entry, or nothing if it rises too fast for them, or
/// falls.
std::optional<SampleParts> FindSampleParts(const std::vector<std::uint8_t>& table);

}  // namespace LmImagingLib
