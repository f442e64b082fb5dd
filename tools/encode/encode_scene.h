#pragma once

#include "conversion.h"

namespace LmTool {

/// The test scene as a camera of the given type would deliver it.
/// @param flags  bits of `ConversionFlags`: the mosaic's layout, the range and matrix of YUV, and which field comes
/// first
RawFrame EncodeScene(const LmImagingLib::PixelTypeID& type, const ImageSize& size, unsigned long flags);

}  // namespace LmTool
