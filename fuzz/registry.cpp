// Calls the registry in random order, with ids of its own, and compares each answer with a plain model.
#include <cstdlib>
#include <deque>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "LmImagingLib/PixelTypeFactory.h"
#include "choices.h"
#include "factory/factory_internal.h"

namespace LmImagingLib {

// The registry forgets nothing. Here it does, after each input, so that inputs do not depend on each other: an explicit
// instantiation may name what is private.
PixelTypeFactoryInternal& Registry();
template <PixelTypeFactoryInternal* (*kInternal)()>
struct Reveal {
  friend PixelTypeFactoryInternal& Registry() { return *kInternal(); }
};
template struct Reveal<&PixelTypeFactory::Internal>;

namespace {

using LmBaseLib::Result;
using Pair = PixelTypeFactoryInternal::Pair;

constexpr PixelTypeID kOwn = PixelTypeID{1} << 48;  // above all built-in ids
constexpr PixelTypeID kIds[] = {kOwn | 0x10001,  kOwn | 0x20002,  kOwn | 0x210001,
                                kOwn | 0x410003, kOwn | 0x820002, kOwn | 0x1010001};

struct Type {
  unsigned short bits;
  std::string name;  // empty if the registry composes it
};

struct Model {
  std::map<PixelTypeID, Type> types;
  std::map<Pair, const PixelConverter*> converters;

  const PixelConverter* Find(const Pair& pair) const {
    const auto found = converters.find(pair);
    return found == converters.end() ? nullptr : found->second;
  }
};

void Check(bool holds, const char* fault) {
  if (holds) return;
  std::cerr << fault << '\n';
  std::abort();
}

void CheckResult(const Result& result, bool accepted) {
  Check(result.GetCode() == (accepted ? Result::OK : Result::INVALID_PARAMETER), "accepted or refused wrongly");
}

PixelTypeID AnyId(Choices& choices) { return kIds[choices.Below(std::size(kIds))]; }

// One of two for each pair.
const PixelConverter& AnyConverter(Choices& choices) {
  static std::deque<PixelConverter> sConverters;
  for (std::size_t i = sConverters.size(); i < 2 * std::size(kIds) * std::size(kIds); ++i) {
    sConverters.emplace_back(kIds[i / 2 % std::size(kIds)], kIds[i / 2 / std::size(kIds)], 1, 1, 1, 1);
  }
  return sConverters[choices.Below(sConverters.size())];
}

void RegisterType(Model& model, Choices& choices) {
  const PixelTypeID id = AnyId(choices);
  const Type type{static_cast<unsigned short>(choices.Number(1)), choices.OneIn(2) ? "own" : ""};
  const PixelType described(id, type.bits, 1, false);
  const Result result = PixelTypeFactory::RegisterPixelType(id, &described, type.name.empty() ? nullptr : "own");
  CheckResult(result, model.types.emplace(id, type).second);
  if (!result.IsOK() || model.Find({id, id}) != nullptr) return;
  const PixelConverter* const identity = PixelTypeFactory::FindConverter(id, id);
  Check(identity != nullptr && identity->GetSourceTypeID() == id && identity->GetDestinationTypeID() == id,
        "a type without its identity");
  model.converters[{id, id}] = identity;
}

void RegisterConverter(Model& model, Choices& choices) {
  const PixelConverter& converter = AnyConverter(choices);
  const bool own = choices.OneIn(2);
  const Pair pair =
      own ? Pair(converter.GetSourceTypeID(), converter.GetDestinationTypeID()) : Pair(AnyId(choices), AnyId(choices));
  const Result result = own ? PixelTypeFactory::RegisterPixelConverter(converter)
                            : PixelTypeFactory::RegisterPixelConverter(pair.first, pair.second, &converter);
  CheckResult(result, model.converters.emplace(pair, &converter).second);
}

void ReplaceConverter(Model& model, Choices& choices) {
  const PixelConverter& converter = AnyConverter(choices);
  const auto found = model.converters.find({converter.GetSourceTypeID(), converter.GetDestinationTypeID()});
  const bool known = found != model.converters.end();
  const PixelConverter* previous = &converter;
  const bool asked = choices.OneIn(2);
  CheckResult(PixelTypeFactory::ReplacePixelConverter(converter, asked ? &previous : nullptr), known);
  if (asked) Check(previous == (known ? found->second : nullptr), "another converter was displaced");
  if (known) found->second = &converter;
}

void CloneConverters(Model& model, Choices& choices) {
  const PixelTypeID from = AnyId(choices);
  const PixelTypeID to = AnyId(choices);
  bool known = false;
  std::vector<std::pair<Pair, const PixelConverter*>> clones;
  for (const auto& [pair, converter] : model.converters) {
    known = known || pair.first == from || pair.second == from;
    if (pair == Pair(from, from)) continue;
    if (pair.first == from) clones.push_back({{to, pair.second}, converter});
    if (pair.second == from) clones.push_back({{pair.first, to}, converter});
  }
  CheckResult(PixelTypeFactory::ClonePixelConverters(from, to), known);
  model.converters.insert(clones.begin(), clones.end());
}

void FindType(Model& model, Choices& choices) {
  const PixelTypeID id = AnyId(choices);
  const auto found = model.types.find(id);
  const bool known = found != model.types.end();
  const PixelType* const type = PixelTypeFactory::FindPixelType(id);
  const std::unique_ptr<const PixelType> clone(PixelTypeFactory::CreatePixelType(id));
  const std::string name = PixelTypeFactory::GetPixelTypeName(id);
  Check(PixelTypeFactory::HasPixelType(id) == known && (type != nullptr) == known && (clone != nullptr) == known,
        "another type is there");
  Check((name == "Unregistered pixel type") == !known, "named wrongly");
  if (!known) return;
  Check(type->GetPixelBitSize() == found->second.bits && clone->GetPixelBitSize() == found->second.bits,
        "another type is found");
  Check(found->second.name.empty() || name == found->second.name, "another name");
}

void FindConverter(Model& model, Choices& choices) {
  const Pair pair(AnyId(choices), AnyId(choices));
  const PixelConverter* const expected = model.Find(pair);
  Check(PixelTypeFactory::FindConverter(pair.first, pair.second) == expected, "another converter is found");
  Check(PixelTypeFactory::HasConverter(pair.first, pair.second) == (expected != nullptr), "another converter is there");
}

void EnumTypes(Model& model, Choices& choices) {
  PixelTypeAttributes attributes;
  if (choices.OneIn(2)) attributes.interlaced = choices.OneIn(2);
  if (choices.OneIn(2)) attributes.bitCount = static_cast<unsigned short>(choices.Number(1));
  if (choices.OneIn(2)) attributes.colorSpace = AnyId(choices) & kColorSpaceMask;
  std::vector<PixelTypeID> expected;
  for (const auto& [id, type] : model.types) {
    if (attributes.interlaced && *attributes.interlaced != ((id & kInterlacedFlag) != 0)) continue;
    if (attributes.bitCount && *attributes.bitCount != type.bits) continue;
    if (attributes.colorSpace && *attributes.colorSpace != (id & kColorSpaceMask)) continue;
    expected.push_back(id);
  }
  const unsigned long count = PixelTypeFactory::CountPixelTypes(attributes);
  Check(count >= expected.size(), "too few types");
  const std::size_t i = choices.Below(expected.size() + 1);  // of our own, which come last
  const std::unique_ptr<const PixelType> type(
      PixelTypeFactory::CreatePixelType(count - expected.size() + i, attributes));
  Check(type == nullptr ? i == expected.size() : i < expected.size() && type->GetTypeID() == expected[i],
        "types in another order");
}

void EnumPairs(Model& model, Choices& choices) {
  const PixelTypeID id = AnyId(choices);
  const bool bySource = choices.OneIn(2);
  std::vector<PixelTypeID> expected;
  for (const auto& entry : model.converters) {
    const auto& [from, to] = entry.first;
    if ((bySource ? from : to) == id) expected.push_back(bySource ? to : from);
  }
  const std::size_t i = choices.Below(expected.size() + 1);
  PixelTypeID found = -1;
  const bool any =
      bySource ? PixelTypeFactory::EnumConverterTo(i, id, found) : PixelTypeFactory::EnumConverterFrom(i, id, found);
  Check(any == (i < expected.size()) && found == (any ? expected[i] : -1), "pairs of a type in another order");
}

// The built-in pairs, and our own behind them.
void EnumAllPairs(Model& model, Choices& choices) {
  static const std::size_t sBuiltin = Registry().Pairs().size() - model.converters.size();
  const std::size_t i = choices.Below(model.converters.size() + 1);
  Pair pair(-1, -1);
  const bool any = PixelTypeFactory::EnumConverters(sBuiltin + i, pair.first, pair.second);
  Check(any == (i < model.converters.size()), "another number of pairs");
  Check(pair == (any ? std::next(model.converters.begin(), static_cast<std::ptrdiff_t>(i))->first : Pair(-1, -1)),
        "pairs in another order");
}

constexpr void (*kCalls[])(Model&, Choices&) = {RegisterType,    RegisterConverter, ReplaceConverter,
                                                CloneConverters, FindType,          FindConverter,
                                                EnumTypes,       EnumPairs,         EnumAllPairs};

}  // namespace
}  // namespace LmImagingLib

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace LmImagingLib;
  Model model;
  for (Choices choices(data, size); !choices.Exhausted();) {
    kCalls[choices.Below(std::size(kCalls))](model, choices);
  }
  Registry() = {};
  return 0;
}
