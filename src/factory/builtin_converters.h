#pragma once

#include <memory>

#include "LmImagingLib/PixelConverter.h"
#include "formats/catalogue.h"

namespace LmImagingLib {

/// Makes the converter of a built-in pair. The registry asks for it when the pair is first looked up; converters of a
/// chain it looks up in turn. Null for any other pair. Throws `std::bad_alloc`.
std::unique_ptr<const PixelConverter> MakeBuiltinConverter(const PixelTypeID& from, const PixelTypeID& to,
                                                           Extent extent);

}  // namespace LmImagingLib
