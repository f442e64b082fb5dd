#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/own_entries.h"
#include "model/registered.h"

namespace LmImagingLib {
namespace {

using LmBaseLib::Result;
using Pair = std::pair<PixelTypeID, PixelTypeID>;

std::vector<Pair> AllPairs() {
  std::vector<Pair> pairs;
  Pair pair;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, pair.first, pair.second); ++i) pairs.push_back(pair);
  return pairs;
}

std::map<Pair, const PixelConverter*> AllConverters() {
  std::map<Pair, const PixelConverter*> converters;
  for (const Pair& pair : AllPairs()) converters[pair] = PixelTypeFactory::FindConverter(pair.first, pair.second);
  return converters;
}

const PixelConverter* RegisterNew(const PixelTypeID& from, const PixelTypeID& to) {
  const PixelConverter& converter = NewConverter(from, to);
  EXPECT_TRUE(PixelTypeFactory::RegisterPixelConverter(converter).IsOK());
  return &converter;
}

TEST(ConverterRegistry, KeepsTheFirstRegistration) {
  const OwnIds ids;
  const PixelTypeID from = ids(1);
  const PixelTypeID to = ids(2);
  const PixelConverter* const first = RegisterNew(from, to);
  const PixelConverter& second = NewConverter(from, to);
  EXPECT_EQ(PixelTypeFactory::RegisterPixelConverter(second).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(PixelTypeFactory::RegisterPixelConverter(from, to, &second).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(PixelTypeFactory::FindConverter(from, to), first);
  EXPECT_EQ(&PixelTypeFactory::GetConverter(from, to), first);

  // A pair may be served by a converter of other types.
  EXPECT_FALSE(PixelTypeFactory::HasConverter(to, from));
  EXPECT_TRUE(PixelTypeFactory::RegisterPixelConverter(to, from, first).IsOK());
  EXPECT_EQ(PixelTypeFactory::FindConverter(to, from), first);
}

TEST(ConverterRegistry, HasNothingForAnUnknownPair) {
  const OwnIds ids;
  EXPECT_FALSE(PixelTypeFactory::HasConverter(ids(1), ids(2)));
  EXPECT_EQ(PixelTypeFactory::FindConverter(ids(1), ids(2)), nullptr);
  const PixelConverter* volatile address = &PixelTypeFactory::GetConverter(ids(1), ids(2));
  EXPECT_EQ(address, nullptr);

  const model::Registered registered = model::RegisteredNow();
  const std::set<Pair> pairs = model::AllPairs(registered);
  std::set<PixelTypeID> types = model::AllTypes(registered);
  types.insert(0);
  for (const PixelTypeID from : types) {
    for (const PixelTypeID to : types) {
      const bool isPair = pairs.count({from, to}) != 0;
      EXPECT_EQ(PixelTypeFactory::HasConverter(from, to), isPair) << std::hex << from << ' ' << to;
      EXPECT_EQ(PixelTypeFactory::FindConverter(from, to) != nullptr, isPair) << std::hex << from << ' ' << to;
    }
  }
}

TEST(ConverterRegistry, RefusesNull) {
  const OwnIds ids;
  EXPECT_EQ(PixelTypeFactory::RegisterPixelConverter(ids(1), ids(2), nullptr).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_FALSE(PixelTypeFactory::HasConverter(ids(1), ids(2)));
}

// A converter that was replaced can be put back by what it says of itself.
TEST(ConverterRegistry, HasConvertersThatNameTheirPair) {
  for (const auto& [from, to] : model::AllPairs(model::RegisteredNow())) {
    const PixelConverter& converter = *PixelTypeFactory::FindConverter(from, to);
    EXPECT_EQ(Pair(converter.GetSourceTypeID(), converter.GetDestinationTypeID()), Pair(from, to)) << std::hex << from;
  }
}

TEST(ConverterRegistry, IsReachedFromTypes) {
  const OwnIds ids;
  const Grayscale8 gray(ids(0x10001));
  const RGB24 colour(ids(0x20002));
  const PixelConverter* const converter = RegisterNew(gray.GetTypeID(), colour.GetTypeID());
  EXPECT_TRUE(gray.HasConverterTo(colour));
  EXPECT_TRUE(colour.HasConverterFrom(gray));
  EXPECT_FALSE(gray.HasConverterFrom(colour));
  EXPECT_FALSE(colour.HasConverterTo(gray));
  EXPECT_EQ(&gray.GetConverterTo(colour), converter);
  EXPECT_EQ(&colour.GetConverterFrom(gray), converter);
}

TEST(ConverterRegistry, ReplacesWhatIsRegistered) {
  const OwnIds ids;
  const PixelConverter& replacement = NewConverter(ids(1), ids(2));
  const PixelConverter* previous = &replacement;
  const auto before = AllConverters();
  EXPECT_EQ(PixelTypeFactory::ReplacePixelConverter(replacement, &previous).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(previous, nullptr);
  EXPECT_EQ(PixelTypeFactory::ReplacePixelConverter(replacement, nullptr).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(AllConverters(), before);

  const PixelConverter* const first = RegisterNew(ids(1), ids(2));
  EXPECT_TRUE(PixelTypeFactory::ReplacePixelConverter(replacement, &previous).IsOK());
  EXPECT_EQ(previous, first);
  EXPECT_EQ(PixelTypeFactory::FindConverter(ids(1), ids(2)), &replacement);
  EXPECT_TRUE(PixelTypeFactory::ReplacePixelConverter(*first, nullptr).IsOK());
  EXPECT_EQ(PixelTypeFactory::FindConverter(ids(1), ids(2)), first);
}

TEST(ConverterRegistry, ClonesPairsOfBothDirections) {
  const OwnIds ids;
  const PixelTypeID from = ids(5);
  const PixelTypeID to = ids(6);
  RegisterNew(from, from);
  const PixelConverter* const forth = RegisterNew(from, ids(1));
  RegisterNew(from, ids(2));
  const PixelConverter* const back = RegisterNew(ids(9), from);
  RegisterNew(ids(9), ids(1));
  RegisterNew(to, ids(2));

  auto expected = AllConverters();
  expected[{to, ids(1)}] = forth;
  expected[{ids(9), to}] = back;
  EXPECT_TRUE(PixelTypeFactory::ClonePixelConverters(from, to).IsOK());
  EXPECT_EQ(AllConverters(), expected);

  EXPECT_TRUE(PixelTypeFactory::ClonePixelConverters(from, from).IsOK());
  EXPECT_EQ(PixelTypeFactory::ClonePixelConverters(ids(7), to).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(AllConverters(), expected);

  // A type that has only its identity is known, with nothing to copy.
  RegisterNew(ids(8), ids(8));
  expected = AllConverters();
  EXPECT_TRUE(PixelTypeFactory::ClonePixelConverters(ids(8), to).IsOK());
  EXPECT_EQ(AllConverters(), expected);
}

TEST(ConverterRegistry, EnumeratesInAscendingOrder) {
  const OwnIds ids;
  constexpr PixelTypeID kNegative = -1;  // ids are signed: this one comes first
  for (const PixelTypeID n : {3, 1, 2}) {
    RegisterNew(ids(7), ids(n));
    RegisterNew(ids(n), ids(7));
  }
  const PixelConverter& any = NewConverter(ids(7), ids(7));
  if (!PixelTypeFactory::HasConverter(kNegative, kNegative)) {
    PixelTypeFactory::RegisterPixelConverter(kNegative, kNegative, &any);
  }
  PixelTypeFactory::RegisterPixelConverter(ids(7), kNegative, &any);

  const std::vector<Pair> pairs = AllPairs();
  EXPECT_EQ(pairs.front(), Pair(kNegative, kNegative));
  EXPECT_EQ(std::adjacent_find(pairs.begin(), pairs.end(), std::greater_equal<>()), pairs.end());
  EXPECT_EQ(AllPairs(), pairs);

  // The walks from a type and to a type visit the same pairs.
  for (const PixelTypeID& id : {ids(7), ids(1), kNegative, PixelTypeID{0x10001}, PixelTypeID{0x440006}, ids(99)}) {
    std::vector<Pair> walkedTo;
    std::vector<Pair> walkedFrom;
    Pair pair;
    for (unsigned long i = 0; PixelTypeFactory::EnumConverterTo(i, id, pair.second); ++i) {
      walkedTo.emplace_back(id, pair.second);
    }
    for (unsigned long i = 0; PixelTypeFactory::EnumConverterFrom(i, id, pair.first); ++i) {
      walkedFrom.emplace_back(pair.first, id);
    }
    std::vector<Pair> expectedTo;
    std::vector<Pair> expectedFrom;
    std::copy_if(pairs.begin(), pairs.end(), std::back_inserter(expectedTo),
                 [&](const Pair& p) { return p.first == id; });
    std::copy_if(pairs.begin(), pairs.end(), std::back_inserter(expectedFrom),
                 [&](const Pair& p) { return p.second == id; });
    EXPECT_EQ(walkedTo, expectedTo);
    EXPECT_EQ(walkedFrom, expectedFrom);
  }
}

TEST(ConverterRegistry, LeavesIdsAlonePastTheLast) {
  PixelTypeID from = 123;
  PixelTypeID to = 456;
  for (const unsigned long past : {static_cast<unsigned long>(AllPairs().size()), ~0UL}) {
    EXPECT_FALSE(PixelTypeFactory::EnumConverters(past, from, to));
    EXPECT_FALSE(PixelTypeFactory::EnumConverterTo(past, 0x10001, to));
    EXPECT_FALSE(PixelTypeFactory::EnumConverterFrom(past, 0x10001, from));
  }
  EXPECT_EQ(from, 123);
  EXPECT_EQ(to, 456);
}

}  // namespace
}  // namespace LmImagingLib
