#include <cstdint>

#include "LmImagingLib/PixelType.h"

namespace LmImagingLib {

PixelType::PixelType(const PixelTypeID& id, unsigned short bitSize, unsigned short byteSize, bool isBayer)
    : mTypeID(id), mPixelBitSize(bitSize), mPixelByteSize(byteSize), mBayer(isBayer) {}

PixelType::PixelType(const PixelType& other) = default;
PixelType& PixelType::operator=(const PixelType& other) = default;
PixelType::~PixelType() = default;

PixelType* PixelType::Clone() const {
  return new PixelType(GetTypeID(), GetPixelBitSize(), GetPixelByteSize(), IsBayerPattern());
}

const PixelTypeID& PixelType::GetTypeID() const { return mTypeID; }

unsigned short PixelType::GetPixelBitSize() const { return mPixelBitSize; }

unsigned short PixelType::GetPixelByteSize() const { return mPixelByteSize; }

bool PixelType::IsBayerPattern() const { return mBayer; }

unsigned long PixelType::GetBufferSizeFor(unsigned long width, unsigned long height) const {
  const std::uint32_t pixels = static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height);
  const std::uint32_t bits = GetPixelBitSize();
  const std::uint32_t bytes = GetPixelByteSize();
  const bool packed = (GetTypeID() & kPackedFlag) != 0;
  const bool oneSample = (GetTypeID() & kColorSpaceGrayscale) != 0 || IsBayerPattern();
  if (packed && oneSample && (bits == 10 || bits == 12)) {
    // Two pixels in three bytes; a pixel without a partner takes three bytes too.
    return static_cast<std::uint32_t>((pixels + pixels % 2) * 3) / 2;
  }
  if (!packed && bits == 24 && bytes == 3) return pixels * 4;
  return static_cast<std::uint32_t>(pixels * bytes);
}

}  // namespace LmImagingLib
