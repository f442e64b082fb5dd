#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"

// A converter of a program's own may hand lines to a built-in one, from a place that it uses again for others.

namespace LmImagingLib {
namespace {

constexpr unsigned long kWidth = 70;
constexpr unsigned long kHeight = 6;
constexpr unsigned long kFlags = ConversionFlags::kBayerBG | ConversionFlags::kBilinear;

using Bytes = std::vector<unsigned char>;

Bytes ConvertAll(const PixelConverter& converter, const unsigned char* source) {
  Bytes destination(converter.GetDestinationLineSize(kWidth) * kHeight);
  converter.Convert(source, kWidth, kHeight, destination.data(), kWidth, kHeight, kWidth, kHeight, kFlags, 0, nullptr,
                    nullptr);
  return destination;
}

/// Images one upon the other that a program keeps as one. Keeps what the inner converter makes of each.
class Stack : public PixelConverter {
 public:
  enum class Way { LINES, FRAMES };

  Stack(const PixelConverter& inner, const std::vector<Bytes>& images, Way way)
      : PixelConverter(inner.GetSourceTypeID(), inner.GetDestinationTypeID(), inner.GetSourcePixelByteSize(),
                       inner.GetDestinationPixelByteSize(), 1, inner.GetLinesPerStep()),
        results(images.size()),
        mInner(inner),
        mImages(images),
        mWay(way) {}

  LmBaseLib::Result ConvertLine(const void* source, void* /*destination*/, unsigned long pixelCount) const override {
    auto* const place = static_cast<unsigned char*>(const_cast<void*>(source));
    const std::size_t lineBytes = mInner.GetSourceLineSize(kWidth);
    for (std::size_t k = 0; k < mImages.size(); ++k) {
      if (mWay == Way::FRAMES) {
        std::copy(mImages[k].begin(), mImages[k].end(), place);
        results[k] = ConvertAll(mInner, place);
      } else {
        // From the line above the step to the one below it.
        const std::size_t at = results[k].size() / mInner.GetDestinationLineSize(kWidth) * lineBytes;
        const std::size_t above = std::min(at, lineBytes);
        const std::size_t bytes = std::min(mImages[k].size() - at + above, 4 * lineBytes);
        std::memcpy(place - above, &mImages[k][at - above], bytes);
        results[k].resize(results[k].size() + GetLinesPerStep() * mInner.GetDestinationLineSize(kWidth));
        mInner.ConvertLine(place, &results[k][at / lineBytes * mInner.GetDestinationLineSize(kWidth)], pixelCount);
      }
    }
    return LmBaseLib::Result::OK;
  }

  mutable std::vector<Bytes> results;

 private:
  const PixelConverter& mInner;
  const std::vector<Bytes>& mImages;
  Way mWay;
};

TEST(BorrowedLines, AreReadAnew) {
  for (const PixelTypeID from : {0x20010, 0x20012, 0x20016, 0x10003, 0x40001}) {
    ASSERT_TRUE(PixelTypeFactory::HasConverter(from, 0x420002)) << std::hex << from;
    const PixelConverter& inner = *PixelTypeFactory::FindConverter(from, 0x420002);
    std::vector<Bytes> images(2, Bytes(inner.GetSourceLineSize(kWidth) * kHeight));
    for (std::size_t i = 0; i < images[0].size(); ++i) {
      images[0][i] = static_cast<unsigned char>((i * i + i / 7) >> 2);
      images[1][i] = static_cast<unsigned char>(3 * i + 11);
    }
    const std::vector<Bytes> expected = {ConvertAll(inner, images[0].data()), ConvertAll(inner, images[1].data())};

    Bytes place(images[0].size());
    const Stack byLines(inner, images, Stack::Way::LINES);
    ConvertAll(byLines, place.data());
    EXPECT_EQ(byLines.results, expected) << std::hex << from;

    const Stack byFrames(inner, images, Stack::Way::FRAMES);
    byFrames.Convert(place.data(), kWidth, kHeight, nullptr, 0, 0, kWidth, byFrames.GetLinesPerStep(), kFlags, 0,
                     nullptr, nullptr);
    EXPECT_EQ(byFrames.results, expected) << std::hex << from;
  }
}

}  // namespace
}  // namespace LmImagingLib
