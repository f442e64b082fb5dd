#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "LmImagingLib/ImageViews.h"

namespace LmImagingLib {
namespace {

constexpr PixelTypeID kGray8 = 0x10001, kGray16 = 0x10005, kRGB8 = 0x420002;

// The members that OpenCV's matrix has. Its step is a class.
struct Matrix {
  struct Step {
    std::size_t bytes;
    operator std::size_t() const { return bytes; }  // NOLINT(google-explicit-constructor)
  };
  int rows, cols;
  std::uint8_t* data;
  Step step;
  std::size_t element;
  std::size_t elemSize() const { return element; }  // NOLINT(readability-identifier-naming)
};

TEST(ImageViews, OfContainersHaveAllTheirBytes) {
  const std::vector<std::uint16_t> words = {0x0100, 0x0200, 0x0300, 0x0400};
  std::array<std::uint8_t, 4> bytes{};
  const ImageView gray = ViewOf(kGray8, bytes, 2, 2);
  static_assert(std::is_same_v<decltype(ViewOf(kGray16, words, 2, 2)), ConstImageView>);
  EXPECT_TRUE(ConvertImage(ViewOf(kGray16, words, 2, 2), gray).IsOK());
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 4>{1, 2, 3, 4}));

  std::vector<std::uint8_t> colors(2 * 7);  // two lines of two pixels and a byte of padding
  EXPECT_TRUE(ConvertImage(gray, ViewOf(kRGB8, colors, 2, 2, 7)).IsOK());  // a view to write to is read
  EXPECT_EQ(colors, (std::vector<std::uint8_t>{1, 1, 1, 2, 2, 2, 0, 3, 3, 3, 4, 4, 4, 0}));
  colors.resize(12);
  EXPECT_EQ(ConvertImage(gray, ViewOf(kRGB8, colors, 2, 2, 7)).message.find("destination.size is 12"), 0U);
}

TEST(ImageViews, OfMatricesAreRefusedWhereElementsAreNoPixels) {
  std::vector<std::uint8_t> parent = {1, 2, 0, 3, 4, 0};
  std::vector<std::uint8_t> colors(12);
  const Matrix gray{2, 2, parent.data(), {3}, 1};
  EXPECT_TRUE(ConvertImage(ViewOf(kGray8, gray), ViewOf(kRGB8, Matrix{2, 2, colors.data(), {6}, 3})).IsOK());
  EXPECT_EQ(colors, (std::vector<std::uint8_t>{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}));
  for (const Matrix& wrong : {Matrix{2, 2, colors.data(), {6}, 1}, Matrix{2, 1, colors.data(), {6}, 6},
                              Matrix{-1, -1, colors.data(), {6}, 3}}) {
    EXPECT_FALSE(ConvertImage(ViewOf(kGray8, gray), ViewOf(kRGB8, wrong)).IsOK());
  }
}

}  // namespace
}  // namespace LmImagingLib
