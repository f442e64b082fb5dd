#pragma once

#include "image/plan.h"

// The checks of both images and of options together. Each returns what to refuse the conversion with, or OK.
namespace LmImagingLib {

/// Checks the size of the destination, and finds how many pixels become one.
ConversionResult CheckSize(const ConstImageView& source, const ImageView& destination, const ConvertOptions& options,
                           ConversionPlan& plan);

/// Checks the range of lines and takes it over.
ConversionResult CheckRange(const ConvertOptions& options, ConversionPlan& plan);

/// Checks what the converter cannot do, by a plan that is complete otherwise.
ConversionResult CheckAbilities(const ConstImageView& source, const ConversionPlan& plan);

}  // namespace LmImagingLib
