#include <cstring>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {

using LmBaseLib::Result;

IdentityConverter::IdentityConverter(const PixelTypeID& id, unsigned long pixelByteSize)
    : PixelConverter(id, id, pixelByteSize, pixelByteSize, 1, 1) {}

IdentityConverter::~IdentityConverter() = default;

unsigned long IdentityConverter::GetSourceLineSize(unsigned long pixelCount) const {
  // Asked for every line, so the registry, where all threads meet, is asked only until it knows the type. Types are
  // never removed.
  const PixelType* type = mType.load(std::memory_order_acquire);
  if (type == nullptr) {
    type = PixelTypeFactory::FindPixelType(GetSourceTypeID());
    if (type == nullptr) return PixelConverter::GetSourceLineSize(pixelCount);
    mType.store(type, std::memory_order_release);
  }
  return type->GetBufferSizeFor(pixelCount, 1);
}

unsigned long IdentityConverter::GetDestinationLineSize(unsigned long pixelCount) const {
  return GetSourceLineSize(pixelCount);
}

Result IdentityConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  const std::size_t bytes = GetSourceLineSize(pixelCount);
  if (bytes != 0) std::memmove(destination, source, bytes);
  return Result::OK;
}

Result IdentityConverter::ConvertPixel(const void* source, void* destination) const {
  return IdentityConverter::ConvertLine(source, destination, 1);
}

}  // namespace LmImagingLib
