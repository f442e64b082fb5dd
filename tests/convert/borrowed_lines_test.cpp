#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"

// A converter of a program's own may hand its lines to a built-in one, from wherever it keeps them.

namespace LmImagingLib {
namespace {

constexpr unsigned long kWidth = 70;
constexpr unsigned long kHeight = 12;

/// Brings the lines of a step and those around it to one place, and converts them there.
class ThroughABuffer : public PixelConverter {
 public:
  ThroughABuffer(const PixelConverter& inner, const unsigned char* image)
      : PixelConverter(inner.GetSourceTypeID(), inner.GetDestinationTypeID(), inner.GetSourcePixelByteSize(),
                       inner.GetDestinationPixelByteSize(), 1, inner.GetLinesPerStep()),
        mInner(inner),
        mLine(inner.GetSourceLineSize(kWidth)),
        mImage(image),
        mBuffer(4 * mLine) {}

  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override {
    const std::size_t line = static_cast<std::size_t>(static_cast<const unsigned char*>(source) - mImage) / mLine;
    for (std::size_t k = 0; k < 4; ++k) {
      if (line + k < 1 || line + k > kHeight) continue;
      std::memcpy(&mBuffer[k * mLine], mImage + (line + k - 1) * mLine, mLine);
    }
    return mInner.ConvertLine(&mBuffer[mLine], destination, pixelCount);
  }

 private:
  const PixelConverter& mInner;
  std::size_t mLine;
  const unsigned char* mImage;
  mutable std::vector<unsigned char> mBuffer;
};

TEST(BorrowedLines, AreReadAnew) {
  for (const PixelTypeID from : {0x20010, 0x20012, 0x20013, 0x10003, 0x40001}) {
    const PixelConverter& inner = *PixelTypeFactory::FindConverter(from, 0x20002);
    std::vector<unsigned char> image(inner.GetSourceLineSize(kWidth) * kHeight);
    for (std::size_t i = 0; i < image.size(); ++i) image[i] = static_cast<unsigned char>((i * i + i / 7) >> 2);
    const auto convert = [&](const PixelConverter& converter) {
      std::vector<unsigned char> destination(inner.GetDestinationLineSize(kWidth) * kHeight);
      converter.Convert(image.data(), kWidth, kHeight, destination.data(), kWidth, kHeight, kWidth, kHeight,
                        ConversionFlags::kBayerBG | ConversionFlags::kBilinear, 0, nullptr, nullptr);
      return destination;
    };
    EXPECT_EQ(convert(ThroughABuffer(inner, image.data())), convert(inner)) << std::hex << from;
  }
}

}  // namespace
}  // namespace LmImagingLib
