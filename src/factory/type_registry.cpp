// PixelTypeFactory's registry of pixel types.
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
  if (HasPixelType(id)) return Result::INVALID_PARAMETER;
  state->types.emplace(id, std::unique_ptr<const PixelType>(type->Clone()));
  state->names.emplace(id, name != nullptr ? name : ComposeTypeName(id, *type));
  if (!HasConverter(id, id)) {
    state->ownedConverters.push_back(std::make_unique<IdentityConverter>(id, type->GetPixelByteSize()));
    RegisterPixelConverter(id, id, state->ownedConverters.back().get());
  }
  return Result::OK;
}

const PixelType& PixelTypeFactory::GetPixelType(const PixelTypeID& id) { return MaybeNull(FindPixelType(id)); }

const PixelType* PixelTypeFactory::FindPixelType(const PixelTypeID& id) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return nullptr;
  const auto found = state->types.find(id);
  return found == state->types.end() ? nullptr : found->second.get();
}

bool PixelTypeFactory::HasPixelType(const PixelTypeID& id) { return FindPixelType(id) != nullptr; }

PixelType* PixelTypeFactory::CreatePixelType(const PixelTypeID& id) {
  const LockScope lock(FactoryGate());
  const PixelType* const type = FindPixelType(id);
  return type == nullptr ? nullptr : type->Clone();
}

const char* PixelTypeFactory::GetPixelTypeName(const PixelTypeID& id) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  if (state != nullptr) {
    const auto found = state->names.find(id);
    if (found != state->names.end()) return found->second.c_str();
  }
  return "Unregistered pixel type";
}

}  // namespace LmImagingLib
