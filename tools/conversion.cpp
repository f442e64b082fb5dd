#include "conversion.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

// The types that pictures are made of, by the bits of their samples.
struct PictureTypes {
  PixelTypeID gray, mosaic, bgr, rgb;
};
constexpr PictureTypes k8Bits{0x10001, 0x20010, 0x420006, 0x420002};
constexpr PictureTypes k16Bits{0x10005, 0x20020, 0x20A40, 0x20004};

ImageSize ConvertedSize(const RawFrame& frame) {
  if ((frame.flags & ConversionFlags::kHalfSize) == 0) return frame.size;
  return {frame.size.width / 2, frame.size.height / 2};
}

ConversionResult Converted(const RawFrame& frame, const ImageView& destination, const Treatment& treatment) {
  if (treatment.development != nullptr) {
    DevelopOptions options;
    options.flags = frame.flags & kFrameFlags;
    options.threads = treatment.threads;
    return Develop(*treatment.development, ViewOf(frame), destination, options);
  }
  ConvertOptions options;
  options.filter = treatment.filter;
  options.flags = frame.flags;
  options.depth = treatment.depth;
  options.threads = treatment.threads;
  return ConvertImage(ViewOf(frame), destination, options);
}

const PictureTypes& TypesOf(unsigned bits) { return bits == 16 ? k16Bits : k8Bits; }

// Exchanges red and blue.
template <class Sample>
void Swap(Bytes& pixels) {
  constexpr std::size_t kBytes = sizeof(Sample);
  for (std::size_t i = 0; i < pixels.size(); i += 3 * kBytes) {
    std::swap_ranges(&pixels[i], &pixels[i] + kBytes, &pixels[i] + 2 * kBytes);
  }
}

}  // namespace

ConstImageView ViewOf(const RawFrame& frame) {
  const auto width = static_cast<unsigned long>(frame.size.width),
             height = static_cast<unsigned long>(frame.size.height);
  return {frame.type, frame.bytes.data(), frame.bytes.size(), width, height, frame.lineSize};
}

Bytes ConvertFrame(const RawFrame& frame, const PixelTypeID& to, const Treatment& treatment) {
  const ImageSize size = ConvertedSize(frame);
  const auto width = static_cast<unsigned long>(size.width), height = static_cast<unsigned long>(size.height);
  Bytes converted(RequiredSize(to, width, height).value_or(0));
  const ImageView destination{to, converted.data(), converted.size(), width, height};
  const ConversionResult result = Converted(frame, destination, treatment);
  if (!result.IsOK()) throw std::runtime_error(result.message);
  return converted;
}

Picture ConvertToPicture(const RawFrame& frame, const PixelTypeID& to, unsigned bits, const Treatment& treatment) {
  const PictureTypes& types = TypesOf(bits);
  const PixelTypeID shown = IsMosaic(to) ? types.mosaic : IsGray(to) ? types.gray : types.bgr;
  Picture picture{ConvertedSize(frame), shown != types.bgr, bits, {}};
  // From a type to itself is a copy, which balances nothing.
  const bool isCopy = frame.type == types.bgr && shown == types.bgr && treatment.filter != nullptr;
  picture.pixels = ConvertFrame(frame, isCopy ? types.rgb : shown, treatment);
  if (isCopy) bits == 16 ? Swap<std::uint16_t>(picture.pixels) : Swap<std::uint8_t>(picture.pixels);
  return picture;
}

PixelTypeID PictureTypeOf(const PixelTypeID& from) { return IsGray(from) ? k8Bits.gray : k8Bits.bgr; }

RawFrame FrameOf(Picture picture) {
  const PictureTypes& types = TypesOf(picture.bits);
  return {picture.gray ? types.gray : types.bgr, picture.size, ConversionFlags::kNone, std::move(picture.pixels)};
}

bool IsMosaic(const PixelTypeID& type) { return PixelTypeFactory::FindPixelType(type)->IsBayerPattern(); }

bool IsGray(const PixelTypeID& type) { return (type & kColorSpaceMask) == kColorSpaceGrayscale; }

}  // namespace LmTool
