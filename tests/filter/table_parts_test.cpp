#include "filter/table_parts.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "filter/development_tables.h"

namespace LmImagingLib {
namespace {

// The definition of the parts: the entry of a sample.
std::uint8_t EntryOf(const SampleParts& parts, std::uint32_t sample) {
  const std::uint32_t fromWindow = sample - 4U * parts.windowPiece;
  if (fromWindow < 64) return parts.window[fromWindow];
  if (sample < 1024) {
    const std::uint8_t rises = parts.rises[sample / 4];
    const int more[] = {0, rises & 3, rises >> 2 & 7, rises >> 5};
    return static_cast<std::uint8_t>(parts.least[sample / 4] + more[sample % 4]);
  }
  const std::size_t at = SampleParts::kBright + sample / 16;
  return static_cast<std::uint8_t>(parts.least[at] + (sample % 16 >= parts.rises[at] % 16U ? 1 : 0) +
                                   (sample % 16 >= parts.rises[at] / 16U ? 1 : 0));
}

TEST(TableParts, EqualTheTablesOfMosaicsWhereTheyAreFound) {
  struct Case {
    ToneCurve tone;
    double black, gain;
    unsigned depth;
    bool matrix, isSlow;
  };
  const ToneCurve srgb{ToneCurve::kSRGB}, linear{ToneCurve::kLinear};
  for (const Case& c :
       {Case{srgb, 0, 1, 12, false, true}, Case{srgb, 240, 1.7, 12, true, true}, Case{srgb, 64, 9, 12, false, true},
        Case{linear, 0, 1.6, 12, false, true}, Case{linear, 0, 3, 12, false, false},
        Case{srgb, 60, 1.6, 10, false, false}, Case{srgb, 0, 1, 14, false, false}}) {
    DevelopmentSettings settings;
    settings.tone = c.tone;
    settings.black = {c.black, c.black, c.black};
    settings.gains = {c.gain, c.gain, c.gain};
    if (c.matrix) settings.matrix = {1, .2, 0, 0, 1, 0, 0, 0, 1};
    const DevelopSteps steps(settings, c.depth, 8);
    const SampleTable& made = steps.Lookup().green;
    ASSERT_EQ(made.parts != nullptr, c.isSlow) << c.black << ", " << c.gain << ", " << c.depth;
    if (c.depth > 12) continue;
    std::vector<std::uint8_t> table(made.bytes, made.bytes + (1U << c.depth));
    for (const std::size_t bent : {std::size_t{2}, std::size_t{130}, std::size_t{999}, table.size() - 9}) {
      const std::optional<SampleParts> parts = FindSampleParts(table);
      for (std::uint32_t i = 0; parts && i < table.size(); ++i) ASSERT_EQ(EntryOf(*parts, i), table[i]) << i;
      table[bent] ^= 1;
    }
  }
}

// The window holds the first rise; another one has to fit the bits of its piece.
TEST(TableParts, HoldARiseOrAreNone) {
  for (const unsigned sample : {701U, 702U, 703U, 2001U, 2015U}) {
    const unsigned most = sample == 701 ? 3 : sample < 1024 ? 7 : 2;
    for (unsigned rise = 0; rise < 11; ++rise) {
      std::vector<std::uint8_t> table;
      for (unsigned i = 0; i < 4096; ++i) {
        table.push_back(static_cast<std::uint8_t>((i < 5 ? 0 : 20) + (i < sample ? 0 : rise)));
      }
      const std::optional<SampleParts> parts = FindSampleParts(table);
      ASSERT_EQ(parts.has_value(), rise <= most) << rise << " at " << sample;
      for (unsigned i = 0; parts && i < 4096; ++i) ASSERT_EQ(EntryOf(*parts, i), table[i]) << rise << ", " << i;
    }
  }
}

}  // namespace
}  // namespace LmImagingLib
