#include "conversion.h"

#include <stdexcept>
#include <utility>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kGray8 = 0x10001;
constexpr PixelTypeID kMosaic8 = 0x20010;
constexpr PixelTypeID kBGR24 = 0x420006;
constexpr PixelTypeID kRGB24 = 0x420002;

bool IsGray(const PixelTypeID& type) { return (type & kColorSpaceMask) == kColorSpaceGrayscale; }

}  // namespace

Bytes ConvertFrame(const RawFrame& frame, const PixelTypeID& to, const RGBFilter* filter) {
  const auto width = static_cast<unsigned long>(frame.size.width);
  const auto height = static_cast<unsigned long>(frame.size.height);
  Bytes converted(RequiredSize(to, width, height).value_or(0));
  ConvertOptions options;
  options.filter = filter;
  options.flags = frame.flags;
  options.depth = ConversionDepth::kEightBits;
  const ConversionResult result =
      ConvertImage({frame.type, frame.bytes.data(), frame.bytes.size(), width, height, frame.lineSize},
                   {to, converted.data(), converted.size(), width, height}, options);
  if (!result.IsOK()) throw std::runtime_error(result.message);
  return converted;
}

Picture ConvertToPicture(const RawFrame& frame, const PixelTypeID& to, const RGBFilter* filter) {
  const PixelTypeID shown = IsMosaic(to) ? kMosaic8 : IsGray(to) ? kGray8 : kBGR24;
  if (frame.type != kBGR24 || shown != kBGR24 || filter == nullptr) {
    return {frame.size, shown != kBGR24, ConvertFrame(frame, shown, filter)};
  }
  // From a type to itself is a copy, which balances nothing.
  Picture picture{frame.size, false, ConvertFrame(frame, kRGB24, filter)};
  for (std::size_t i = 0; i < picture.pixels.size(); i += 3) std::swap(picture.pixels[i], picture.pixels[i + 2]);
  return picture;
}

PixelTypeID PictureTypeOf(const PixelTypeID& from) { return IsGray(from) ? kGray8 : kBGR24; }

RawFrame FrameOf(Picture picture) {
  return {picture.gray ? kGray8 : kBGR24, picture.size, ConversionFlags::kNone, std::move(picture.pixels)};
}

bool IsMosaic(const PixelTypeID& type) { return PixelTypeFactory::FindPixelType(type)->IsBayerPattern(); }

bool HasOneSample(const PixelTypeID& to) { return IsGray(to) || IsMosaic(to); }

}  // namespace LmTool
