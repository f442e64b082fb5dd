// PixelTypeFactory's registry of pixel types.
#include <new>

#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/factory_internal.h"
#include "factory/null_reference.h"
#include "types/type_name.h"

namespace LmImagingLib {

using LmBaseLib::LockScope;
using LmBaseLib::Result;

Result PixelTypeFactory::RegisterPixelType(const PixelTypeID& id, const PixelType* type, const char* name) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return Result::NOT_ENOUGH_MEMORY;
  if (type == nullptr || state->HasType(id)) return Result::INVALID_PARAMETER;
  try {
    std::unique_ptr<const PixelType> clone(type->Clone());
    if (clone == nullptr) return Result::NOT_ENOUGH_MEMORY;
    state->AddType(id, std::move(clone), name != nullptr ? name : ComposeTypeName(id, *type));
  } catch (const std::bad_alloc&) {
    return Result::NOT_ENOUGH_MEMORY;
  }
  return Result::OK;
}

const PixelType& PixelTypeFactory::GetPixelType(const PixelTypeID& id) { return MaybeNull(FindPixelType(id)); }

const PixelType* PixelTypeFactory::FindPixelType(const PixelTypeID& id) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  return state == nullptr ? nullptr : state->FindType(id);
}

bool PixelTypeFactory::HasPixelType(const PixelTypeID& id) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  return state != nullptr && state->HasType(id);
}

PixelType* PixelTypeFactory::CreatePixelType(const PixelTypeID& id) {
  const LockScope lock(FactoryGate());
  const PixelType* const type = FindPixelType(id);
  return type == nullptr ? nullptr : type->Clone();
}

const char* PixelTypeFactory::GetPixelTypeName(const PixelTypeID& id) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  const char* const name = state == nullptr ? nullptr : state->FindName(id);
  return name != nullptr ? name : "Unregistered pixel type";
}

}  // namespace LmImagingLib
