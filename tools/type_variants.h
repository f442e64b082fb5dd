#pragma once

#include <vector>

#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// What variants of a format differ in: the end of the word that has the bits, fields, and taps of the sensor.
constexpr LmImagingLib::PixelTypeID kVariantFlags =
    LmImagingLib::kNormalizedFlag | LmImagingLib::kInterlacedFlag | LmImagingLib::kDualOutputMask;

/// A type, and those that are variants of it.
struct TypeWithVariants {
  LmImagingLib::PixelTypeID type;
  std::vector<LmImagingLib::PixelTypeID> variants;
};

/// Folds variants into the first type of their format. The order of those that remain is kept.
std::vector<TypeWithVariants> Folded(const std::vector<LmImagingLib::PixelTypeID>& types);

}  // namespace LmTool
