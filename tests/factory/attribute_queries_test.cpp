#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/own_entries.h"
#include "model/registered.h"

namespace LmImagingLib {
namespace {

/// The types that a walk visits, without those of other tests. Each is described as in the model.
std::vector<PixelTypeID> BuiltinTypes(const PixelTypeAttributes& attributes) {
  std::vector<PixelTypeID> ids;
  const unsigned long count = PixelTypeFactory::CountPixelTypes(attributes);
  for (unsigned long i = 0; i < count; ++i) {
    const std::unique_ptr<PixelType> type(PixelTypeFactory::CreatePixelType(i, attributes));
    if (type == nullptr) {
      ADD_FAILURE() << "type " << i << " of " << count << " is missing";
      break;
    }
    const PixelTypeID id = type->GetTypeID();
    if (id >> 32 != 0) continue;
    ids.push_back(id);
    const model::Source& expected = model::SourceOf(id);
    EXPECT_EQ(type->GetPixelBitSize(), expected.bits) << std::hex << id;
    EXPECT_EQ(type->GetPixelByteSize(), expected.bytes) << std::hex << id;
    EXPECT_EQ(type->IsBayerPattern(), expected.family == model::Family::BAYER) << std::hex << id;
  }
  for (const unsigned long past : {count, ~0UL}) {
    EXPECT_EQ(PixelTypeFactory::CreatePixelType(past, attributes), nullptr);
  }
  return ids;
}

TEST(AttributeQueries, AskForEachAttributeAloneAndTogether) {
  RegisterExtendedFormats();
  const auto matches = [](const PixelTypeAttributes& a) {
    std::vector<PixelTypeID> ids;
    const auto flag = [](const std::optional<bool>& wanted, bool set) { return !wanted || *wanted == set; };
    for (const PixelTypeID id : model::AllTypes(model::RegisteredNow())) {
      if ((!a.colorSpace || id / 0x10000 % 8 == *a.colorSpace / 0x10000) &&
          (!a.bitCount || model::SourceOf(id).bits == *a.bitCount) && flag(a.normalized, id / 0x100000 % 2 == 1) &&
          flag(a.interlaced, id / 0x200000 % 2 == 1) && flag(a.packed, id / 0x400000 % 2 == 1) &&
          flag(a.planar, id / 0x800000 % 2 == 1) && (!a.dualOutputMode || id / 0x1000000 == *a.dualOutputMode >> 24)) {
        ids.push_back(id);
      }
    }
    return ids;
  };
  std::vector<PixelTypeAttributes> queries(1);
  for (const PixelTypeID space : {kColorSpaceGrayscale, kColorSpaceRGB, kColorSpaceYUV, PixelTypeID{0}}) {
    queries.emplace_back().colorSpace = space;
  }
  for (const unsigned short bits : std::initializer_list<unsigned short>{8, 10, 12, 14, 16, 24, 36, 9})
    queries.emplace_back().bitCount = bits;
  for (const bool set : {false, true}) {
    queries.emplace_back().normalized = set;
    queries.emplace_back().interlaced = set;
    queries.emplace_back().packed = set;
    queries.emplace_back().planar = set;
  }
  for (const PixelTypeID mode : {PixelTypeID{0}, kDualLeftRight, kDualLeftInvertedRightInverted, kDualLines}) {
    queries.emplace_back().dualOutputMode = mode;
  }
  queries.push_back({kColorSpaceGrayscale, static_cast<unsigned short>(10), {}, {}, true, {}, {}});
  queries.push_back({kColorSpaceGrayscale, static_cast<unsigned short>(10), {}, false, true, {}, PixelTypeID{0}});
  for (std::size_t i = 0; i < queries.size(); ++i) EXPECT_EQ(BuiltinTypes(queries[i]), matches(queries[i])) << i;
}

TEST(AttributeQueries, ReadTheIdOfTheRegistration) {
  PixelTypeAttributes attributes;
  attributes.bitCount = static_cast<unsigned short>(999);
  attributes.planar = true;
  const unsigned long before = PixelTypeFactory::CountPixelTypes(attributes);
  const OwnIds ids;
  const PixelType type(ids(0x10001), 999, 1, false);
  ASSERT_TRUE(PixelTypeFactory::RegisterPixelType(ids(0x810001), &type, nullptr).IsOK());
  EXPECT_EQ(PixelTypeFactory::CountPixelTypes(attributes), before + 1);
}

}  // namespace
}  // namespace LmImagingLib
