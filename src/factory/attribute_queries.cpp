// PixelTypeFactory's queries for types of a kind.
#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/factory_internal.h"

namespace LmImagingLib {

using LmBaseLib::LockScope;

namespace {

bool HasField(const PixelTypeID& id, const PixelTypeID& mask, const std::optional<PixelTypeID>& wanted) {
  return !wanted.has_value() || (id & mask) == *wanted;
}

bool HasFlag(const PixelTypeID& id, const PixelTypeID& flag, const std::optional<bool>& wanted) {
  return !wanted.has_value() || ((id & flag) != 0) == *wanted;
}

bool HasAttributes(const PixelTypeID& id, const PixelType& type, const PixelTypeAttributes& attributes) {
  return HasField(id, kColorSpaceMask, attributes.colorSpace) &&
         (!attributes.bitCount.has_value() || type.GetPixelBitSize() == *attributes.bitCount) &&
         HasFlag(id, kNormalizedFlag, attributes.normalized) && HasFlag(id, kInterlacedFlag, attributes.interlaced) &&
         HasFlag(id, kPackedFlag, attributes.packed) && HasFlag(id, kPlanarFlag, attributes.planar) &&
         HasField(id, kDualOutputMask, attributes.dualOutputMode);
}

}  // namespace

unsigned long PixelTypeFactory::CountPixelTypes(const PixelTypeAttributes& attributes) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return 0;
  unsigned long count = 0;
  for (const PixelTypeID& id : state->TypeIds()) {
    if (HasAttributes(id, *state->FindType(id), attributes)) ++count;
  }
  return count;
}

PixelType* PixelTypeFactory::CreatePixelType(unsigned long index, const PixelTypeAttributes& attributes) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return nullptr;
  for (const PixelTypeID& id : state->TypeIds()) {
    const PixelType& type = *state->FindType(id);
    if (HasAttributes(id, type, attributes) && index-- == 0) return type.Clone();
  }
  return nullptr;
}

}  // namespace LmImagingLib
