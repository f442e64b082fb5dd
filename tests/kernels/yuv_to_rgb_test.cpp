#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"
#include "simd/each_set.h"

// The vector kernels work in 16 bits what the definition works in 32: here for every triple there is.

namespace LmImagingLib {
namespace {

struct Matrix {
  unsigned long flags;
  int bits;  // by which the factors are scaled
  int y, black, vToR, uToG, vToG, uToB;
};

// Without a flag the system's own factors, then BT.601 of the full range and BT.709 of the studio and the full range.
constexpr Matrix kMatrices[] = {
    {0, 10, 1196, 16, 1642, -400, -832, 2064},
    {ConversionFlags::kFullRange, 13, 8192, 0, 11485, -2819, -5850, 14516},
    {ConversionFlags::kBT709, 13, 9539, 16, 14686, -1747, -4366, 17305},
    {ConversionFlags::kFullRange | ConversionFlags::kBT709, 13, 8192, 0, 12901, -1535, -3835, 15201},
};

// The colour of every U and V with one Y, in the order of the source below.
std::vector<std::uint8_t> Expected(const Matrix& m, int y) {
  const auto clamped = [&m](int scaled) {
    return static_cast<std::uint8_t>(std::clamp((scaled + (1 << (m.bits - 1))) >> m.bits, 0, 255));
  };
  std::vector<std::uint8_t> colors;
  for (int u = -128; u < 128; ++u) {
    for (int v = -128; v < 128; ++v) {
      const int luma = m.y * (y - m.black);
      colors.push_back(clamped(luma + m.vToR * v));
      colors.push_back(clamped(luma + m.uToG * u + m.vToG * v));
      colors.push_back(clamped(luma + m.uToB * u));
    }
  }
  return colors;
}

TEST(YuvToRgb, EveryTripleInEachInstructionSet) {
  const PixelConverter& yuv444 = *PixelTypeFactory::FindConverter(0x440003, 0x420002);
  const PixelConverter& yuv422 = *PixelTypeFactory::FindConverter(0x40001, 0x420002);
  constexpr unsigned long kSide = 256;
  std::vector<std::uint8_t> source444(kSide * kSide * 3);
  std::vector<std::uint8_t> source422(kSide * kSide * 4);
  std::vector<std::uint8_t> picture(kSide * kSide * 3);
  std::vector<std::uint8_t> pairs(kSide * kSide * 6);
  for (std::size_t y = 0; y < 256; ++y) {
    for (std::size_t i = 0; i < kSide * kSide; ++i) {
      const auto luma = static_cast<std::uint8_t>(y);
      const auto u = static_cast<std::uint8_t>(i / 256);
      const auto v = static_cast<std::uint8_t>(i % 256);
      const std::uint8_t triple[] = {luma, u, v};
      const std::uint8_t pair[] = {luma, u, luma, v};
      std::copy_n(triple, 3, &source444[3 * i]);
      std::copy_n(pair, 4, &source422[4 * i]);
    }
    for (const Matrix& m : kMatrices) {
      const std::vector<std::uint8_t> expected = Expected(m, static_cast<int>(y));
      ForEachInstructionSet([&] {
        yuv444.Convert(source444.data(), kSide, kSide, picture.data(), kSide, kSide, kSide, kSide, m.flags, 0, nullptr,
                       nullptr);
        ASSERT_EQ(picture, expected) << "flags " << m.flags << ", Y " << y;
        yuv422.Convert(source422.data(), 2 * kSide, kSide, pairs.data(), 2 * kSide, kSide, 2 * kSide, kSide, m.flags, 0,
                       nullptr, nullptr);
        for (std::size_t i = 0; i < kSide * kSide * 6; ++i) {
          ASSERT_EQ(pairs[i], expected[i / 6 * 3 + i % 3]) << "flags " << m.flags << ", Y " << y;
        }
      });
      if (HasFatalFailure()) return;
    }
  }
}

}  // namespace
}  // namespace LmImagingLib
