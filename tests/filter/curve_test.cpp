#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "LmImagingLib/RGBFilter.h"
#include "filter/filter_tables.h"

namespace LmImagingLib {
namespace {

double Plain(const ToneCurve& tone, double x) {
  switch (tone.kind) {
    case ToneCurve::kSRGB:
      return x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1 / 2.4) - 0.055;
    case ToneCurve::kBT709:
      return x < 0.018 ? 4.5 * x : 1.099 * std::pow(x, 0.45) - 0.099;
    case ToneCurve::kGamma:
      return std::pow(x, 1 / tone.gamma);
    default:
      return x;
  }
}

// Of a sample of `depth` bits, at the scale of `bits` bits by shifting.
unsigned Expected(const ChannelCurve& c, const ToneCurve& tone, unsigned i, unsigned filterBits, unsigned depth,
                  unsigned bits) {
  const double white = (1 << depth) - 1, step = std::pow(2.0, static_cast<int>(depth - filterBits));
  const double light = std::max(i - c.black * step, 0.0) * c.gain + c.offset * step;
  const double value = Plain(tone, std::clamp(light, 0.0, white) / white) * white;
  const double up = bits > depth ? 1 << (bits - depth) : 1;
  const auto rounded = static_cast<unsigned>(std::floor(value * up + 0.5));
  return bits < depth ? rounded >> (depth - bits) : rounded;
}

constexpr ToneCurve kTones[] = {
    {ToneCurve::kLinear}, {ToneCurve::kSRGB}, {ToneCurve::kBT709}, {ToneCurve::kGamma, 1.8}};
constexpr ChannelCurve kRed{4, 1.9, 0}, kGreen{4.25, 1.0, -3.5}, kBlue{0, 0.5, 20};

TEST(FilterCurve, TablesOfEveryDepthFollowTheFormula) {
  for (const ToneCurve& tone : kTones) {
    for (const unsigned bits : {8U, 12U}) {
      RGBFilter filter(bits);
      ASSERT_TRUE(filter.SetCurve(kRed, kGreen, kBlue, tone).IsOK());
      for (unsigned i = 0; i < filter.GetEntryCount(); ++i) {
        ASSERT_EQ(filter.GetRedValue16(i), Expected(kRed, tone, i, bits, bits, bits)) << tone.kind << ' ' << i;
        ASSERT_EQ(filter.GetGreenValue16(i), Expected(kGreen, tone, i, bits, bits, bits)) << tone.kind << ' ' << i;
      }
      constexpr unsigned kDepths[][2] = {{10, 8}, {12, 12}, {12, 16}, {16, 10}};
      for (const auto& [depth, result] : kDepths) {
        const LookupTables<std::uint16_t>* const tables = TablesOf(filter).Lookup(depth, result);
        for (unsigned i = 0; i < 1U << depth; ++i) {
          ASSERT_EQ(tables->red.entries[i], Expected(kRed, tone, i, bits, depth, result)) << depth << ' ' << i;
          ASSERT_EQ(tables->blue.entries[i], Expected(kBlue, tone, i, bits, depth, result)) << depth << ' ' << i;
        }
      }
    }
  }
}

// A table of 12 bits maps the brighter half of 12 bits to a third of its values.
TEST(FilterCurve, KeepsAllSamplesApartWhereTheResultHasRoom) {
  RGBFilter filter(8);
  ASSERT_TRUE(filter.SetCurve({}, {}, {}, {ToneCurve::kSRGB}).IsOK());
  const std::uint16_t* const entries = TablesOf(filter).Lookup(12, 16)->red.entries;
  for (unsigned i = 1; i < 4096; ++i) ASSERT_LT(entries[i - 1], entries[i]) << i;
  EXPECT_EQ(entries[4095], 65520) << "white is shifted up, as without a filter";
}

TEST(FilterCurve, IsForgottenByOtherWritesAndIdentityCostsNothing) {
  RGBFilter filter(8);
  ASSERT_TRUE(filter.SetCurve({}, {}, {}).IsOK());
  EXPECT_TRUE(filter.IsIdentity());
  EXPECT_EQ(TablesOf(filter).Lookup(), nullptr);
  EXPECT_EQ(TablesOf(filter).Lookup(12, 16), nullptr);
  ASSERT_TRUE(filter.SetCurve({}, {}, {}, {ToneCurve::kSRGB}).IsOK());
  ASSERT_TRUE(filter.SetMultipliers(1, 1, 1).IsOK());
  EXPECT_EQ(TablesOf(filter).Lookup(12, 12), nullptr);
}

TEST(FilterCurve, RefusesAndChangesNothing) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const ChannelCurve bad[] = {{-1, 1, 0}, {0, -0.5, 0}, {kInfinity, 1, 0}, {0, std::nan(""), 0}, {0, 1, -kInfinity}};
  RGBFilter filter(8);
  for (const ChannelCurve& curve : bad) EXPECT_FALSE(filter.SetCurve({}, {}, curve).IsOK());
  for (const double gamma : {0.0, -2.2, kInfinity, std::nan("")}) {
    EXPECT_FALSE(filter.SetCurve({}, {}, {}, {ToneCurve::kGamma, gamma}).IsOK()) << gamma;
  }
  EXPECT_EQ(TablesOf(filter).Lookup(), nullptr);
}

}  // namespace
}  // namespace LmImagingLib
