#pragma once

#include "LmImagingLib/Image.h"

namespace LmImagingLib {

/// Checks the flags and the depth of a conversion. The types are registered.
/// @param converter  of the two types
ConversionResult CheckFlags(const ConstImageView& source, const PixelConverter& converter,
                            const ConvertOptions& options);

/// Checks flags that describe a frame: of a mosaic exactly one layout, and none that means nothing for the source.
/// @param allowed  other bits that may be set
ConversionResult CheckFrameFlags(const ConstImageView& source, unsigned long flags, unsigned long allowed);

/// Whether the last stage of a conversion makes colours of a mosaic.
bool Demosaics(const PixelConverter& converter);

/// The flags of a conversion, with the depth that is asked for.
unsigned long FlagsOf(const ConvertOptions& options);

}  // namespace LmImagingLib
