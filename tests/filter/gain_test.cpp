#include "filter/gain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/RGBFilter.h"
#include "simd/each_set.h"

namespace LmImagingLib {
namespace {

unsigned EntryOf(const Gain& gain, unsigned index) {
  return std::min<unsigned>((index << gain.shift) * gain.factor >> 16, 255);
}

void FillWithGain(double gain, unsigned char (&table)[256]) {
  for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<unsigned char>(std::min(gain * i, 255.0));
}

// Gains of white balance are found nearly always, and what is found is the table.
TEST(Gain, EqualsTheTableWhereItIsFound) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> gains(0.25, 4.0);
  unsigned char table[256];
  int found = 0;
  for (int round = 0; round < 2000; ++round) {
    FillWithGain(gains(random), table);
    const std::optional<Gain> gain = FindGain(table);
    if (!gain) continue;
    ++found;
    ASSERT_LE(gain->shift, 7);
    for (unsigned i = 0; i < 256; ++i) ASSERT_EQ(EntryOf(*gain, i), table[i]) << i;
    table[random() % 255 + 1] ^= 1;
    const std::optional<Gain> bent = FindGain(table);
    for (unsigned i = 0; bent && i < 256; ++i) ASSERT_EQ(EntryOf(*bent, i), table[i]) << i;
  }
  EXPECT_GT(found, 1500);
}

TEST(Gain, CoversWhatCamerasUse) {
  unsigned char table[256];
  for (const double gain : {0.0, 0.5, 1.0, 1.09, 1.6, 2.0, 3.75, 16.0, 127.0}) {
    FillWithGain(gain, table);
    EXPECT_TRUE(FindGain(table)) << gain;
    std::vector<std::uint16_t> wide(4096);
    for (unsigned i = 0; i < 4096; ++i) wide[i] = static_cast<std::uint16_t>(std::min(gain * i, 4095.0));
    EXPECT_EQ(FindWideGain(wide, 12).has_value(), gain < 16) << gain;
  }
}

// The multiplications of gains, and the tables that were derived of them, are given up when an entry is set.
TEST(Gain, AnEntryThatIsSetLaterCounts) {
  RegisterExtendedFormats();
  ForEachInstructionSet([] {
    RGBFilter filter(8);
    ASSERT_TRUE(filter.SetMultipliers(2, 2, 2).IsOK());
    ConvertOptions options;
    options.filter = &filter;
    const std::vector<std::uint8_t> bytes(300, 7);
    const std::vector<std::uint16_t> words(300, 7 * 257);
    const auto green = [&] {
      std::vector<std::uint8_t> narrow(300);
      std::vector<std::uint16_t> wide(300);
      EXPECT_TRUE(
          ConvertImage({0x20002, bytes.data(), 300, 100, 1}, {0x20006, narrow.data(), 300, 100, 1}, options).IsOK());
      EXPECT_TRUE(
          ConvertImage({0x20004, words.data(), 600, 100, 1}, {0x20A40, wide.data(), 600, 100, 1}, options).IsOK());
      EXPECT_EQ(narrow[0], narrow[297]);
      return std::pair<unsigned, unsigned>(narrow[148], wide[148]);
    };
    EXPECT_EQ(green(), std::make_pair(14U, 14U * 257));
    ASSERT_TRUE(filter.SetGreenValue(7, 99, true).IsOK());
    EXPECT_EQ(green(), std::make_pair(99U, 99U * 257));
  });
}

}  // namespace
}  // namespace LmImagingLib
