#pragma once

#include <string>

#include "LmImagingLib/Image.h"

// The texts of refusals.
namespace LmImagingLib {

ConversionResult Refused(std::string message);

std::string Hex(std::uint64_t value);

/// A type's name and id.
std::string Label(const PixelTypeID& type);

}  // namespace LmImagingLib
