#include "filter/tone_lines.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

#include "filter/development_tables.h"
#include "simd/each_set.h"
#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(MatrixKernel, ApplyMatrix)

namespace {

// The definition of the lines: the entry of some light.
std::uint8_t EntryOf(const ToneLines& lines, std::uint32_t light) {
  if (lines.hasFirst && light < 64) return lines.first[light];
  const int zone = light < 4096 ? 0 : 1;
  const std::uint32_t scaled = zone == 0 ? light * 16 : light, line = scaled / 2048;
  const std::uint32_t by64 = lines.base[zone][line] + lines.slope[zone][line] * scaled / 65536;
  const std::uint32_t tone = by64 / 64 % 256;
  return static_cast<std::uint8_t>(tone + ((scaled / 16 - lines.next[tone]) % 256 < 64 ? 1 : 0));
}

std::vector<std::uint8_t> TableOf(const MatrixSteps& steps) { return {steps.bytes, steps.bytes + kToneIndices}; }

DevelopmentSettings Settings(const ToneCurve& tone) {
  DevelopmentSettings settings;
  // Nearly every light comes up in each of the channels.
  settings.matrix = {1, 2.0 / 256, 0, 0, 1, -2.0 / 256, 2.0 / 256, 0, 1};
  settings.tone = tone;
  return settings;
}

const ToneCurve kTones[] = {{ToneCurve::kSRGB},       {ToneCurve::kBT709},      {ToneCurve::kLinear},
                            {ToneCurve::kGamma, 2.2}, {ToneCurve::kGamma, 1.8}, {ToneCurve::kGamma, 1.2},
                            {ToneCurve::kGamma, 1.0}, {ToneCurve::kGamma, 0.2}};

// Lines have some room: a rise may be an entry later.
TEST(ToneLines, EqualTheTableWhereTheyAreFound) {
  for (const ToneCurve& tone : kTones) {
    const DevelopSteps steps(Settings(tone), 12, 8);
    std::vector<std::uint8_t> table = TableOf(*steps.Matrix());
    const bool isLinear = tone.kind == ToneCurve::kLinear || (tone.kind == ToneCurve::kGamma && tone.gamma == 1);
    const bool isSlow = !isLinear && (tone.kind != ToneCurve::kGamma || tone.gamma > 1);
    ASSERT_EQ(steps.Matrix()->isLinear, isLinear) << tone.kind << ", " << tone.gamma;
    ASSERT_EQ(steps.Matrix()->lines != nullptr, isSlow) << tone.kind << ", " << tone.gamma;
    for (const std::size_t from : {std::size_t{0}, std::size_t{77}, std::size_t{4400}, std::size_t{7000}}) {
      const std::optional<ToneLines> lines = FindToneLines(table);
      ASSERT_EQ(lines.has_value(), isSlow) << tone.kind << ", " << tone.gamma << ", " << from;
      for (std::uint32_t light = 0; lines && light < 65536; ++light) {
        ASSERT_EQ(EntryOf(*lines, light), table[ToneIndex(light)]) << light << ", " << from;
      }
      std::size_t rise = from + 1;
      while (table[rise] == table[rise - 1]) ++rise;
      table[rise] = table[rise - 1];
    }
    std::swap(table[5000], table[5400]);
    EXPECT_FALSE(FindToneLines(table)) << "falls";
  }
}

// All pairs of red and green, and any blue.
TEST(ToneLines, MatrixEqualsItsDefinitionInEachSet) {
  std::vector<std::uint8_t> pixels[3];
  for (std::uint32_t i = 0; i < 65536 + 29; ++i) {
    pixels[0].push_back(static_cast<std::uint8_t>(i >> 8));
    pixels[1].push_back(static_cast<std::uint8_t>(i));
    pixels[2].push_back(static_cast<std::uint8_t>(i * 7 + (i >> 8) * 13));
  }
  const std::size_t count = pixels[0].size();
  for (const ToneCurve& tone : kTones) {
    const DevelopSteps steps(Settings(tone), 12, 8);
    const auto apply = [&](MatrixKernel<std::uint8_t>* kernel) {
      std::vector<std::uint8_t> out(3 * (count + 1), 7);
      kernel({pixels[0].data(), pixels[1].data(), pixels[2].data()}, *steps.Matrix(), count,
             {&out[0], &out[count + 1], &out[2 * count + 2]});
      return out;
    };
    const std::vector<std::uint8_t> expected = apply(kApplyMatrix.bytes.Definition());
    ForEachInstructionSet([&] { EXPECT_EQ(apply(kApplyMatrix.bytes.Active()), expected) << tone.kind; });
  }
}

}  // namespace
}  // namespace LmImagingLib
