#pragma once

#include <cstdint>
#include <functional>

#include "LmImagingLib/Image.h"

namespace LmImagingLib {

/// Divides lines `first` to `end` into bands of an even number of lines, and calls `convert` once for each of them,
/// side by side. Rethrows `std::bad_alloc` of a band after all have ended.
/// @param lineBytes  of a line of the source and of the destination together
void ConvertInBands(const ConvertOptions& options, std::uint32_t first, std::uint32_t end, std::uint64_t lineBytes,
                    const std::function<void(std::uint32_t first, std::uint32_t end)>& convert);

}  // namespace LmImagingLib
