#include "factory/factory_internal.h"

#include <algorithm>

#include "factory/builtin_converters.h"
#include "formats/catalogue.h"
#include "types/type_name.h"

namespace LmImagingLib {

void PixelTypeFactoryInternal::Extend() {
  mExtent = Extent::kExtended;
  mPairs.clear();
}

bool PixelTypeFactoryInternal::HasBuiltinPair(const Pair& pair) const {
  return RouteOf(pair.first, pair.second, mExtent).kind != Route::Kind::kNone;
}

const TypeRow* PixelTypeFactoryInternal::FindBuiltinType(const PixelTypeID& id) const {
  return IsExtended(id) && mExtent == Extent::kStandard ? nullptr : FindTypeRow(id);
}

const PixelType* PixelTypeFactoryInternal::FindType(const PixelTypeID& id) {
  const auto found = mTypes.find(id);
  if (found != mTypes.end()) return found->second.get();
  const TypeRow* const row = FindBuiltinType(id);
  if (row == nullptr) return nullptr;
  std::unique_ptr<const PixelType> made(row->types->make(id));
  return mTypes.emplace(id, std::move(made)).first->second.get();
}

bool PixelTypeFactoryInternal::HasType(const PixelTypeID& id) const {
  return FindBuiltinType(id) != nullptr || mTypes.count(id) != 0;
}

const char* PixelTypeFactoryInternal::FindName(const PixelTypeID& id) {
  const auto found = mNames.find(id);
  if (found != mNames.end()) return found->second.c_str();
  const TypeRow* const row = FindBuiltinType(id);
  if (row == nullptr) return nullptr;
  if (row->name != nullptr) return row->name;
  return mNames.emplace(id, ComposeTypeName(id, *FindType(id))).first->second.c_str();
}

// All that takes memory is made before the first entry is added.
void PixelTypeFactoryInternal::AddType(const PixelTypeID& id, std::unique_ptr<const PixelType> type, std::string name) {
  const bool needsIdentity = !HasConverter({id, id});
  decltype(mConverters) identity;
  if (needsIdentity) {
    auto made = std::make_unique<IdentityConverter>(id, type->GetPixelByteSize());
    identity.emplace(Pair{id, id}, made.get());
    mOwned.push_back(std::move(made));
  }
  try {
    decltype(mTypes) types;
    types.emplace(id, std::move(type));
    decltype(mNames) names;
    names.emplace(id, std::move(name));
    mTypes.merge(types);
    mNames.merge(names);
  } catch (...) {
    if (needsIdentity) mOwned.pop_back();
    throw;
  }
  AddConverters(std::move(identity));
}

std::vector<PixelTypeID> PixelTypeFactoryInternal::TypeIds() const {
  std::vector<PixelTypeID> ids;
  for (const TypeRow& row : AllTypeRows()) {
    if (FindBuiltinType(row.id) != nullptr) ids.push_back(row.id);
  }
  for (const auto& [id, type] : mTypes) {
    if (FindBuiltinType(id) == nullptr) ids.push_back(id);
  }
  std::sort(ids.begin(), ids.end());
  return ids;
}

const PixelConverter* PixelTypeFactoryInternal::FindConverter(const Pair& pair) {
  const auto found = mConverters.find(pair);
  if (found != mConverters.end()) return found->second;
  std::unique_ptr<const PixelConverter> made = MakeBuiltinConverter(pair.first, pair.second, mExtent);
  if (made == nullptr) return nullptr;
  mOwned.push_back(std::move(made));
  const PixelConverter* const converter = mOwned.back().get();
  try {
    mConverters.emplace(pair, converter);
  } catch (...) {
    mOwned.pop_back();
    throw;
  }
  return converter;
}

bool PixelTypeFactoryInternal::HasConverter(const Pair& pair) const {
  return HasBuiltinPair(pair) || mConverters.count(pair) != 0;
}

void PixelTypeFactoryInternal::AddConverters(std::map<Pair, const PixelConverter*> added) {
  mConverters.merge(added);
  mPairs.clear();
}

void PixelTypeFactoryInternal::ReplaceConverter(const Pair& pair, const PixelConverter& converter) {
  mConverters.find(pair)->second = &converter;
}

const std::vector<PixelTypeFactoryInternal::Pair>& PixelTypeFactoryInternal::Pairs() {
  if (!mPairs.empty()) return mPairs;
  std::vector<Pair> pairs;
  std::vector<PixelTypeID> reached;
  for (const TypeRow& row : AllTypeRows()) {
    FindDestinations(row.id, mExtent, reached);
    for (const PixelTypeID to : reached) pairs.emplace_back(row.id, to);
  }
  for (const auto& [pair, converter] : mConverters) {
    if (!HasBuiltinPair(pair)) pairs.push_back(pair);
  }
  std::sort(pairs.begin(), pairs.end());
  mPairs = std::move(pairs);
  return mPairs;
}

}  // namespace LmImagingLib
