#include "walk/row_lookup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "filter/gain.h"
#include "filter/sample_tables.h"
#include "simd/each_set.h"

namespace LmImagingLib {
namespace {

using Curve = std::function<double(double light)>;

/// A row of every sample there is, in even and in odd columns, and the tables of a mosaic.
template <class In, class Out>
class LookedUpRow {
 public:
  LookedUpRow(unsigned depth, unsigned resultDepth) : mDepth(depth), mResultDepth(resultDepth) {
    for (unsigned i = 0; i < 2U << depth; ++i) mSamples.push_back(static_cast<In>(i / 2 * 2053 + i % 2 * 77));
    for (In& sample : mSamples) sample = static_cast<In>(sample & ((1U << depth) - 1));
  }

  // Entries are those of the samples' depth, which are brought to the results' depth.
  void Expect(const Curve& first, const Curve& second) {
    const std::vector<std::uint16_t> entries[] = {Entries(first), Entries(second)};
    LookupTables<std::uint16_t> tables{};
    const std::optional<WideGain> gains[] = {FindWideGain(entries[0], mDepth), FindWideGain(entries[1], mDepth)};
    tables.areGains = gains[0] && gains[1];
    std::vector<std::uint16_t> results[] = {entries[0], entries[1]};
    for (auto& table : results) {
      for (std::uint16_t& entry : table) entry = static_cast<std::uint16_t>(entry >> (mDepth - mResultDepth));
    }
    tables.red = {results[0].data(), gains[0].value_or(WideGain{})};
    tables.green = tables.blue = {results[1].data(), gains[1].value_or(WideGain{})};
    SampleTables made;
    made.Make(tables, mDepth, mResultDepth);
    ForEachInstructionSet([&] {
      Compare(made.Lookup(), results, 0);
      if (mDepth < 8 * sizeof(In)) Compare(made.Lookup(), results, 1U << mDepth);
    });
  }

 private:
  std::vector<std::uint16_t> Entries(const Curve& curve) const {
    const unsigned white = (1U << mDepth) - 1;
    std::vector<std::uint16_t> entries;
    for (unsigned i = 0; i <= white; ++i) {
      entries.push_back(static_cast<std::uint16_t>(std::clamp(curve(i * 1.0 / white), 0.0, 1.0) * white));
    }
    return entries;
  }

  // From a byte on that is not aligned. `stray` is set in every word.
  void Compare(const MosaicLookup& lookup, const std::vector<std::uint16_t> (&results)[2], unsigned stray) const {
    std::vector<std::uint8_t> row(mSamples.size() * sizeof(In) + 1);
    for (std::size_t i = 0; i < mSamples.size(); ++i) {
      const auto sample = static_cast<In>(mSamples[i] | stray);
      std::memcpy(&row[1 + i * sizeof sample], &sample, sizeof sample);
    }
    for (const std::size_t width : {mSamples.size(), std::size_t{1}, std::size_t{131}, mSamples.size() - 3}) {
      std::vector<Out> found(width + 1, Out{7});
      const RowTables tables{lookup.red, lookup.green, lookup.areGains, 0, (1U << mDepth) - 1};
      LookUpRow<In>(row.data() + 1, width, tables, found.data());
      EXPECT_EQ(found[width], 7);
      for (std::size_t i = 0; i < width; ++i) {
        ASSERT_EQ(found[i], results[i % 2][mSamples[i]]) << "column " << i << ", sample " << mSamples[i];
      }
    }
  }

  const unsigned mDepth, mResultDepth;
  std::vector<In> mSamples;
};

struct Case {
  const char* name;
  Curve even, odd;
};

double SRGB(double light) { return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055; }

// Tables that are products, tables that rise slowly or fast, and any.
const Case kCases[] = {
    {"gains", [](double x) { return 1.6 * x; }, [](double x) { return 0.83 * x; }},
    {"high gain", [](double x) { return 3.99 * x; }, [](double x) { return x; }},
    {"one gain", [](double x) { return 1.1 * x; }, SRGB},
    {"tone", [](double x) { return SRGB(1.6 * x); }, SRGB},
    {"black and root", [](double x) { return std::sqrt(std::max(x - 0.02, 0.0) * 3); },
     [](double x) { return std::sqrt(x); }},
    {"falling", [](double x) { return 1 - x; }, [](double x) { return x < 0.7 ? 0 : 1; }},
    {"uneven", [](double x) { return std::fmod(x * 1234567, 1); }, [](double x) { return std::fmod(x * 7654321, 1); }},
};

TEST(LookedUpRows, EqualTheirTablesInEachSet) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    LookedUpRow<std::uint8_t, std::uint8_t>(8, 8).Expect(c.even, c.odd);
    for (const unsigned depth : {10U, 12U, 14U, 16U}) {
      SCOPED_TRACE(depth);
      LookedUpRow<std::uint16_t, std::uint8_t>(depth, 8).Expect(c.even, c.odd);
      LookedUpRow<std::uint16_t, std::uint16_t>(depth, depth).Expect(c.even, c.odd);
    }
  }
}

}  // namespace
}  // namespace LmImagingLib
