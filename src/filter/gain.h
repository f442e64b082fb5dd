#pragma once

#include <optional>
#include <vector>

#include "simd/strip.h"

namespace LmImagingLib {

/// The gain that equals a table of 256 entries in each of them, or nothing if there is none.
std::optional<Gain> FindGain(const unsigned char* table);

/// The same of a table of 1 << `depth` entries of that many bits.
std::optional<WideGain> FindWideGain(const std::vector<std::uint16_t>& table, unsigned depth);

}  // namespace LmImagingLib
