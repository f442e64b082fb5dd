// PixelTypeFactory's registry of converters between pairs of types.
#include <iterator>

#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/factory_internal.h"
#include "factory/null_reference.h"

namespace LmImagingLib {

using LmBaseLib::LockScope;
using LmBaseLib::Result;

Result PixelTypeFactory::RegisterPixelConverter(const PixelTypeID& from, const PixelTypeID& to,
                                                const PixelConverter* converter) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return Result::NOT_ENOUGH_MEMORY;
  const bool added = state->converters.emplace(std::make_pair(from, to), converter).second;
  return added ? Result::OK : Result::INVALID_PARAMETER;
}

Result PixelTypeFactory::RegisterPixelConverter(const PixelConverter& converter) {
  return RegisterPixelConverter(converter.GetSourceTypeID(), converter.GetDestinationTypeID(), &converter);
}

const PixelConverter& PixelTypeFactory::GetConverter(const PixelTypeID& from, const PixelTypeID& to) {
  return MaybeNull(FindConverter(from, to));
}

const PixelConverter* PixelTypeFactory::FindConverter(const PixelTypeID& from, const PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return nullptr;
  const auto found = state->converters.find({from, to});
  return found == state->converters.end() ? nullptr : found->second;
}

bool PixelTypeFactory::HasConverter(const PixelTypeID& from, const PixelTypeID& to) {
  return FindConverter(from, to) != nullptr;
}

Result PixelTypeFactory::ReplacePixelConverter(const PixelConverter& converter, const PixelConverter** previous) {
  const LockScope lock(FactoryGate());
  if (previous != nullptr) *previous = nullptr;
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return Result::NOT_ENOUGH_MEMORY;
  const auto found = state->converters.find({converter.GetSourceTypeID(), converter.GetDestinationTypeID()});
  if (found == state->converters.end()) return Result::INVALID_PARAMETER;
  if (previous != nullptr) *previous = found->second;
  found->second = &converter;
  return Result::OK;
}

Result PixelTypeFactory::ClonePixelConverters(const PixelTypeID& from, const PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return Result::NOT_ENOUGH_MEMORY;
  bool known = false;
  decltype(state->converters) clones;
  for (const auto& [pair, converter] : state->converters) {
    const bool source = pair.first == from;
    const bool destination = pair.second == from;
    known = known || source || destination;
    if (source != destination) {
      clones.emplace(source ? std::make_pair(to, pair.second) : std::make_pair(pair.first, to), converter);
    }
  }
  if (!known) return Result::INVALID_PARAMETER;
  state->converters.merge(clones);  // pairs that exist stay
  return Result::OK;
}

bool PixelTypeFactory::EnumConverters(unsigned long index, PixelTypeID& from, PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr || index >= state->converters.size()) return false;
  const auto& pair = std::next(state->converters.begin(), static_cast<std::ptrdiff_t>(index))->first;
  from = pair.first;
  to = pair.second;
  return true;
}

bool PixelTypeFactory::EnumConverterTo(unsigned long index, const PixelTypeID& from, PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return false;
  for (const auto& entry : state->converters) {
    if (entry.first.first == from && index-- == 0) {
      to = entry.first.second;
      return true;
    }
  }
  return false;
}

bool PixelTypeFactory::EnumConverterFrom(unsigned long index, const PixelTypeID& to, PixelTypeID& from) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return false;
  for (const auto& entry : state->converters) {
    if (entry.first.second == to && index-- == 0) {
      from = entry.first.first;
      return true;
    }
  }
  return false;
}

}  // namespace LmImagingLib
