// PixelType's ways to its converters.
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {

const PixelConverter& PixelType::GetConverterTo(const PixelType& other) const {
  return PixelTypeFactory::GetConverter(GetTypeID(), other.GetTypeID());
}

const PixelConverter& PixelType::GetConverterFrom(const PixelType& other) const {
  return PixelTypeFactory::GetConverter(other.GetTypeID(), GetTypeID());
}

bool PixelType::HasConverterTo(const PixelType& other) const {
  return PixelTypeFactory::HasConverter(GetTypeID(), other.GetTypeID());
}

bool PixelType::HasConverterFrom(const PixelType& other) const {
  return PixelTypeFactory::HasConverter(other.GetTypeID(), GetTypeID());
}

}  // namespace LmImagingLib
