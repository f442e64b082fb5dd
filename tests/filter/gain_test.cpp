#include "filter/gain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

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
  }
}

TEST(Gain, IsNoneOfOtherCurves) {
  unsigned char table[256];
  FillWithGain(1.5, table);
  table[0] = 1;
  EXPECT_FALSE(FindGain(table)) << "offset";
  for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<unsigned char>(255 - i);
  EXPECT_FALSE(FindGain(table)) << "negative";
  for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<unsigned char>(i * i / 255);
  EXPECT_FALSE(FindGain(table)) << "gamma";
}

}  // namespace
}  // namespace LmImagingLib
