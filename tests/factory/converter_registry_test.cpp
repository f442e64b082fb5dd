#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/own_entries.h"
#include "model/registered.h"

// Registering, replacing, cloning and enumerating equals a plain model: that is what random_calls.cpp tests. Here is
// the rest.

namespace LmImagingLib {
namespace {

using LmBaseLib::Result;
using Pair = std::pair<PixelTypeID, PixelTypeID>;

TEST(ConverterRegistry, RefusesNullAndHasNothingForAnUnknownPair) {
  const OwnIds ids;
  EXPECT_EQ(PixelTypeFactory::RegisterPixelConverter(ids(1), ids(2), nullptr).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_FALSE(PixelTypeFactory::HasConverter(ids(1), ids(2)));
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
  const PixelConverter& converter = NewConverter(gray.GetTypeID(), colour.GetTypeID());
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelConverter(converter).IsOK());
  EXPECT_TRUE(gray.HasConverterTo(colour));
  EXPECT_TRUE(colour.HasConverterFrom(gray));
  EXPECT_FALSE(gray.HasConverterFrom(colour));
  EXPECT_FALSE(colour.HasConverterTo(gray));
  EXPECT_EQ(&gray.GetConverterTo(colour), &converter);
  EXPECT_EQ(&colour.GetConverterFrom(gray), &converter);
  EXPECT_EQ(&PixelTypeFactory::GetConverter(gray.GetTypeID(), colour.GetTypeID()), &converter);
}

TEST(ConverterRegistry, EnumeratesSignedIds) {
  constexpr PixelTypeID kNegative = -1;
  PixelTypeFactory::RegisterPixelConverter(kNegative, kNegative, &NewConverter(1, 2));
  Pair pair;
  EXPECT_FALSE(PixelTypeFactory::EnumConverters(~0UL, pair.first, pair.second));
  ASSERT_TRUE(PixelTypeFactory::EnumConverters(0, pair.first, pair.second));
  EXPECT_EQ(pair, Pair(kNegative, kNegative));
}

}  // namespace
}  // namespace LmImagingLib
