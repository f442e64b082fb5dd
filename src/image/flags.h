#pragma once

#include "LmImagingLib/Image.h"

namespace LmImagingLib {

/// Checks the flags and the depth of a conversion. The types are registered.
/// @param converter  of the two types
ConversionResult CheckFlags(const ConstImageView& source, const PixelConverter& converter,
                            const ConvertOptions& options);

/// Whether the last stage of a conversion makes colours of a mosaic.
bool Demosaics(const PixelConverter& converter);

/// The flags of a conversion, with the depth that is asked for.
unsigned long FlagsOf(const ConvertOptions& options);

}  // namespace LmImagingLib
