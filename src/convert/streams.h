#pragma once

#include <cstddef>
#include <cstdint>

namespace LmImagingLib {

/// Whether storing past the caches is quicker for an image of so many bytes, source and destination together: more than
/// two thirds of the last-level cache. Smaller ones find room there, and take up to twice as long past it.
bool StreamsPay(std::size_t bytes);

/// How far ahead to fetch the source of such an image: about a strip. 1 KiB gains half of what 4 KiB do.
inline constexpr std::uint32_t kFetchAhead = 4096;

/// Makes what was stored past the caches visible to other threads before what is stored next.
void FenceStreams();

}  // namespace LmImagingLib
