// PixelTypeFactory's registry of converters between pairs of types.
#include <atomic>
#include <new>

#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/factory_internal.h"
#include "factory/null_reference.h"
#include "factory/replacements.h"

namespace LmImagingLib {

using LmBaseLib::LockScope;
using LmBaseLib::Result;

namespace {

std::atomic<unsigned> sReplacements{0};

}  // namespace

unsigned Replacements() { return sReplacements.load(std::memory_order_acquire); }

Result PixelTypeFactory::RegisterPixelConverter(const PixelTypeID& from, const PixelTypeID& to,
                                                const PixelConverter* converter) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return Result::NOT_ENOUGH_MEMORY;
  if (converter == nullptr || state->HasConverter({from, to})) return Result::INVALID_PARAMETER;
  try {
    std::map<PixelTypeFactoryInternal::Pair, const PixelConverter*> added;
    added.emplace(std::make_pair(from, to), converter);
    state->AddConverters(std::move(added));
  } catch (const std::bad_alloc&) {
    return Result::NOT_ENOUGH_MEMORY;
  }
  return Result::OK;
}

Result PixelTypeFactory::RegisterPixelConverter(const PixelConverter& converter) {
  return RegisterPixelConverter(converter.GetSourceTypeID(), converter.GetDestinationTypeID(), &converter);
}

const PixelConverter& PixelTypeFactory::GetConverter(const PixelTypeID& from, const PixelTypeID& to) {
  return MaybeNull(FindConverter(from, to));
}

const PixelConverter* PixelTypeFactory::FindConverter(const PixelTypeID& from, const PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  return state == nullptr ? nullptr : state->FindConverter({from, to});
}

bool PixelTypeFactory::HasConverter(const PixelTypeID& from, const PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  const PixelTypeFactoryInternal* const state = Internal();
  return state != nullptr && state->HasConverter({from, to});
}

Result PixelTypeFactory::ReplacePixelConverter(const PixelConverter& converter, const PixelConverter** previous) {
  const LockScope lock(FactoryGate());
  if (previous != nullptr) *previous = nullptr;
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return Result::NOT_ENOUGH_MEMORY;
  const PixelTypeFactoryInternal::Pair pair(converter.GetSourceTypeID(), converter.GetDestinationTypeID());
  try {
    const PixelConverter* const found = state->FindConverter(pair);
    if (found == nullptr) return Result::INVALID_PARAMETER;
    if (previous != nullptr) *previous = found;
  } catch (const std::bad_alloc&) {
    return Result::NOT_ENOUGH_MEMORY;
  }
  state->ReplaceConverter(pair, converter);
  sReplacements.fetch_add(1, std::memory_order_release);
  return Result::OK;
}

Result PixelTypeFactory::ClonePixelConverters(const PixelTypeID& from, const PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return Result::NOT_ENOUGH_MEMORY;
  try {
    bool known = false;
    std::map<PixelTypeFactoryInternal::Pair, const PixelConverter*> clones;
    for (const PixelTypeFactoryInternal::Pair& pair : state->Pairs()) {
      const bool source = pair.first == from;
      const bool destination = pair.second == from;
      known = known || source || destination;
      if (source == destination) continue;
      const auto clone = source ? std::make_pair(to, pair.second) : std::make_pair(pair.first, to);
      if (!state->HasConverter(clone)) clones.emplace(clone, state->FindConverter(pair));
    }
    if (!known) return Result::INVALID_PARAMETER;
    state->AddConverters(std::move(clones));
  } catch (const std::bad_alloc&) {
    return Result::NOT_ENOUGH_MEMORY;
  }
  return Result::OK;
}

bool PixelTypeFactory::EnumConverters(unsigned long index, PixelTypeID& from, PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr || index >= state->Pairs().size()) return false;
  from = state->Pairs()[index].first;
  to = state->Pairs()[index].second;
  return true;
}

bool PixelTypeFactory::EnumConverterTo(unsigned long index, const PixelTypeID& from, PixelTypeID& to) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return false;
  for (const PixelTypeFactoryInternal::Pair& pair : state->Pairs()) {
    if (pair.first == from && index-- == 0) {
      to = pair.second;
      return true;
    }
  }
  return false;
}

bool PixelTypeFactory::EnumConverterFrom(unsigned long index, const PixelTypeID& to, PixelTypeID& from) {
  const LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = Internal();
  if (state == nullptr) return false;
  for (const PixelTypeFactoryInternal::Pair& pair : state->Pairs()) {
    if (pair.second == to && index-- == 0) {
      from = pair.first;
      return true;
    }
  }
  return false;
}

}  // namespace LmImagingLib
