#pragma once

#include "LmImagingLib/PixelTypeFactory.h"
#include "model/catalogue.h"

namespace model {

/// The formats that are registered at the moment: once a test has registered the extended ones, they stay.
inline Registered RegisteredNow() {
  return LmImagingLib::PixelTypeFactory::HasPixelType(0x20A40) ? Registered::EXTENDED : Registered::STANDARD;
}

}  // namespace model
