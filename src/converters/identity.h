#pragma once

#include <typeinfo>

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib {

/// Whether a converter copies an image to its own type. A class of an application that derives from `IdentityConverter`
/// may do anything.
inline bool IsIdentity(const PixelConverter& converter) { return typeid(converter) == typeid(IdentityConverter); }

}  // namespace LmImagingLib
