#pragma once

#include <string>

#include "LmImagingLib/PixelType.h"

namespace LmImagingLib {

/// The name of a type that is registered under `id` without one: colour space, bits a pixel, flags, dual-output mode.
std::string ComposeTypeName(const PixelTypeID& id, const PixelType& type);

}  // namespace LmImagingLib
