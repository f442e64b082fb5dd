#pragma once

#include <optional>

#include "simd/strip.h"

namespace LmImagingLib {

/// The gain that equals a table of 256 entries in each of them, or nothing if there is none.
std::optional<Gain> FindGain(const unsigned char (&table)[256]);

}  // namespace LmImagingLib
