#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "simd/color_matrix.h"

namespace LmImagingLib {

/// The lines that equal a table by `ToneIndex` in each entry, or nothing if it rises too fast or too slowly for them,
/// or falls.
std::optional<ToneLines> FindToneLines(const std::vector<std::uint8_t>& table);

}  // namespace LmImagingLib
