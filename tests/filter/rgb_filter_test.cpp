#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "LmImagingLib/RGBFilter.h"
#include "filter/filter_tables.h"

namespace LmImagingLib {
namespace {

using LmBaseLib::Result;

unsigned CountMismatches8(const RGBFilter& filter) {
  unsigned count = 0;
  for (unsigned i = 0; i < 256; ++i) {
    count += (filter.GetRedValue8(i) != i) + (filter.GetGreenValue8(i) != i) + (filter.GetBlueValue8(i) != i);
  }
  return count;
}

class RGBFilterBits : public testing::TestWithParam<unsigned long> {};
INSTANTIATE_TEST_SUITE_P(All, RGBFilterBits, testing::Values(1UL, 4UL, 8UL, 10UL, 12UL, 14UL, 16UL));

TEST_P(RGBFilterBits, StartsAsTheIdentity) {
  const RGBFilter filter(GetParam());
  const unsigned long count = 1UL << GetParam();
  EXPECT_EQ(filter.GetBitSize(), GetParam());
  ASSERT_EQ(filter.GetEntryCount(), count);
  EXPECT_TRUE(filter.IsIdentity());
  EXPECT_TRUE(TablesOf(filter).Lookup() == nullptr);
  for (unsigned long i = 0; i < count; ++i) {
    ASSERT_EQ(filter.GetRedValue16(i), i);
    ASSERT_EQ(filter.GetGreenValue16(i), i);
    ASSERT_EQ(filter.GetBlueValue16(i), i);
  }
  EXPECT_EQ(CountMismatches8(filter), 0U);
}

// Gains, offsets and the plain formula; also that the 8-bit tables are the first entries clamped, not rescaled.
TEST_P(RGBFilterBits, MultipliersFollowTheFormula) {
  RGBFilter filter(GetParam());
  const unsigned long count = filter.GetEntryCount();
  ASSERT_TRUE(filter.SetMultipliers(1.6, 0.0, 0.3337, 0, 7, 3).IsOK());
  const auto expected = [count](double gain, unsigned long i, unsigned offset) {
    return static_cast<unsigned long>(std::min(gain * static_cast<double>(i) + offset, static_cast<double>(count - 1)));
  };
  for (unsigned long i = 0; i < count; ++i) {
    const unsigned long red = expected(1.6, i, 0);
    const unsigned long green = expected(0.0, i, 7);
    const unsigned long blue = expected(0.3337, i, 3);
    ASSERT_EQ(filter.GetRedValue16(i), red) << i;
    ASSERT_EQ(filter.GetGreenValue16(i), green) << i;
    ASSERT_EQ(filter.GetBlueValue16(i), blue) << i;
    if (i < 256) {
      ASSERT_EQ(filter.GetRedValue8(i), std::min(red, 255UL)) << i;
      ASSERT_EQ(filter.GetGreenValue8(i), std::min(green, 255UL)) << i;
      ASSERT_EQ(filter.GetBlueValue8(i), std::min(blue, 255UL)) << i;
    }
  }
  EXPECT_EQ(TablesOf(filter).mismatches8, CountMismatches8(filter));
  EXPECT_FALSE(filter.IsIdentity());

  filter.SetIdentity();
  EXPECT_TRUE(filter.IsIdentity());
  EXPECT_TRUE(TablesOf(filter).Lookup() == nullptr);
  EXPECT_EQ(filter.GetRedValue16(count - 1), count - 1);
}

TEST_P(RGBFilterBits, MismatchCountFollowsEveryWrite) {
  RGBFilter filter(GetParam());
  std::mt19937 random(42);
  const unsigned long count = filter.GetEntryCount();
  std::uniform_int_distribution<unsigned long> any(0, std::min(count, 512UL) - 1);
  for (int i = 0; i < 2000; ++i) {
    const unsigned long index = any(random);
    const auto value = static_cast<unsigned short>(random() % 2 == 0 ? index : any(random));
    switch (random() % 3) {
      case 0:
        ASSERT_TRUE(filter.SetRedValue(index, value, false).IsOK());
        break;
      case 1:
        ASSERT_TRUE(filter.SetGreenValue(index, value, false).IsOK());
        break;
      default:
        ASSERT_TRUE(filter.SetBlueValue(index, value, false).IsOK());
    }
    ASSERT_EQ(TablesOf(filter).mismatches8, CountMismatches8(filter)) << i;
  }
}

TEST_P(RGBFilterBits, RejectsWhatIsOutOfRangeAndChangesNothing) {
  RGBFilter filter(GetParam());
  const unsigned long count = filter.GetEntryCount();
  const auto top = static_cast<unsigned short>(count - 1);
  EXPECT_EQ(filter.SetRedValue(count, 0, true).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(filter.SetGreenValue(~0UL, 0, true).GetCode(), Result::INVALID_PARAMETER);
  if (count < 0x10000) {
    EXPECT_EQ(filter.SetBlueValue(0, static_cast<unsigned short>(count), true).GetCode(), Result::INVALID_PARAMETER);
  }
  EXPECT_EQ(filter.SetMultipliers(-0.5, 1.0, 1.0).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(filter.SetMultipliers(1.0, -1e-300, 1.0).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(filter.SetMultipliers(2.0, 2.0, -1.0, 1, 1, 1).GetCode(), Result::INVALID_PARAMETER);
  EXPECT_TRUE(filter.IsIdentity());
  EXPECT_EQ(CountMismatches8(filter), 0U);
  EXPECT_TRUE(filter.SetBlueValue(count - 1, top, false).IsOK());
  EXPECT_EQ(filter.GetBlueValue16(top), top);
}

TEST(RGBFilter, IndicesWrapAtTheTable) {
  RGBFilter filter(10);
  EXPECT_TRUE(filter.SetRedValue(5, 1023, true).IsOK());
  EXPECT_EQ(filter.GetRedValue16(5 + 1024), 1023);
  EXPECT_EQ(filter.GetRedValue8(5 + 256), 255);
  EXPECT_EQ(filter.GetGreenValue8(300), 44);
  EXPECT_FALSE(filter.IsIdentity());
}

TEST(RGBFilter, IdentityFlagKeepsItsOddRules) {
  RGBFilter narrow(8);
  EXPECT_TRUE(narrow.SetRedValue(3, 4, false).IsOK());
  EXPECT_TRUE(narrow.IsIdentity()) << "no update was asked for";
  EXPECT_FALSE(TablesOf(narrow).Lookup() == nullptr);
  EXPECT_TRUE(narrow.SetBlueValue(9, 9, true).IsOK());
  EXPECT_FALSE(narrow.IsIdentity()) << "setting an entry to its index scans";
  EXPECT_TRUE(narrow.SetRedValue(3, 3, true).IsOK());
  EXPECT_TRUE(narrow.IsIdentity());
  EXPECT_TRUE(narrow.SetMultipliers(1.0, 1.0, 1.0).IsOK());
  EXPECT_TRUE(narrow.IsIdentity());

  RGBFilter wide(12);
  EXPECT_TRUE(wide.SetMultipliers(1.0, 1.0, 1.0).IsOK());
  EXPECT_FALSE(wide.IsIdentity()) << "the scan of a wide filter never succeeds";
  EXPECT_TRUE(TablesOf(wide).Lookup() == nullptr);
  wide.SetIdentity();
  EXPECT_TRUE(wide.IsIdentity());
  EXPECT_TRUE(wide.SetRedValue(7, 7, true).IsOK());
  EXPECT_FALSE(wide.IsIdentity());
}

TEST(RGBFilter, CopiesShareTheirTables) {
  RGBFilter copy(16);
  {
    RGBFilter source(8);
    const RGBFilter other(source);
    copy = source;
    EXPECT_TRUE(source.SetRedValue(1, 200, true).IsOK());
    EXPECT_EQ(other.GetRedValue8(1), 200);
    EXPECT_TRUE(other.IsIdentity()) << "each copy keeps its own flag";
  }
  EXPECT_EQ(copy.GetBitSize(), 8U);
  EXPECT_EQ(copy.GetRedValue8(1), 200);
  EXPECT_EQ(TablesOf(copy).mismatches8, 1U);
}

struct Recorder : RGBFilter {
  using RGBFilter::RGBFilter;
  using RGBFilter::SetMultipliers;
  Result SetMultipliers(double red, double green, double blue, unsigned short redOffset, unsigned short greenOffset,
                        unsigned short blueOffset) override {
    ++scalings;
    return RGBFilter::SetMultipliers(red, green, blue, redOffset, greenOffset, blueOffset);
  }
  Result SetRedValue(unsigned long index, unsigned short value, bool update) override {
    writes.push_back('R');
    updates += update;
    return RGBFilter::SetRedValue(index, value, update);
  }
  Result SetGreenValue(unsigned long index, unsigned short value, bool update) override {
    writes.push_back('G');
    return RGBFilter::SetGreenValue(index, value, update);
  }
  Result SetBlueValue(unsigned long index, unsigned short value, bool update) override {
    writes.push_back('B');
    return RGBFilter::SetBlueValue(index, value, update);
  }
  int scalings = 0;
  int updates = 0;
  std::string writes;
};

TEST(RGBFilter, SubclassSeesEveryWriteInOrder) {
  Recorder filter(1);
  filter.SetIdentity();
  EXPECT_EQ(filter.writes, "RGBRGB");
  filter.writes.clear();
  EXPECT_TRUE(filter.SetMultipliers(0.5, 1.0, 2.0).IsOK());
  EXPECT_EQ(filter.writes, "RGBRGB");
  EXPECT_EQ(filter.scalings, 1);
  EXPECT_EQ(filter.updates, 0);
}

}  // namespace
}  // namespace LmImagingLib
