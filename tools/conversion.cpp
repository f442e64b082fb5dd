#include "conversion.h"

#include <algorithm>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "frame.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kGray8 = 0x10001;
constexpr PixelTypeID kGray8Interlaced = 0x210001;
constexpr PixelTypeID kMosaic8 = 0x20010;
constexpr PixelTypeID kBGR24 = 0x420006;

// Behind each destination line, for the pixels of a group that passes the line's end; the next line may already hold
// its own pixels, in another plane or field.
constexpr std::size_t kPadding = 16;

Bytes Run(const PixelConverter& converter, const RawFrame& frame, const ImageSize& size, const RGBFilter* filter) {
  const FrameLayout layout = DestinationLayout(converter, size);
  const std::size_t stride = layout.lineBytes + kPadding;
  Bytes padded(stride * layout.lines);
  converter.Convert(filter, frame.bytes.data(), size.width, size.height, padded.data(), size.width, size.height,
                    size.width, size.height, frame.flags, kPadding, nullptr, nullptr);
  for (std::size_t line = 1; line < layout.lines; ++line) {
    std::copy_n(padded.data() + line * stride, layout.lineBytes, padded.data() + line * layout.lineBytes);
  }
  padded.resize(layout.Bytes());
  return padded;
}

// A type to itself moves bytes, and sorts fields. The type's own identity counts lines as buffers have them, not as
// frames do (see `SourceLayout`), so the lines go as 8-bit grayscale.
Bytes CopyFrame(const RawFrame& frame) {
  const FrameLayout layout = SourceLayout(frame.type, frame.size);
  const PixelTypeID bytes = (frame.type & kInterlacedFlag) != 0 ? kGray8Interlaced : kGray8;
  return Run(*PixelTypeFactory::FindConverter(bytes, bytes), frame, {layout.lineBytes, layout.lines}, nullptr);
}

bool IsBayer(const PixelTypeID& type) { return PixelTypeFactory::FindPixelType(type)->IsBayerPattern(); }

Picture Gray(const ImageSize& size, const Bytes& samples) {
  Picture picture{size, {}};
  picture.bgr.reserve(samples.size() * 3);
  for (const std::uint8_t sample : samples) picture.bgr.insert(picture.bgr.end(), 3, sample);
  return picture;
}

}  // namespace

Bytes ConvertFrame(const RawFrame& frame, const PixelTypeID& to, const RGBFilter* filter) {
  if (to == frame.type) return CopyFrame(frame);
  return Run(*PixelTypeFactory::FindConverter(frame.type, to), frame, frame.size, filter);
}

Picture ConvertToPicture(const RawFrame& frame, const PixelTypeID& to, const RGBFilter* filter) {
  if (HasOneSample(to)) return Gray(frame.size, ConvertFrame(frame, IsBayer(to) ? kMosaic8 : kGray8, filter));
  return {frame.size, ConvertFrame(frame, kBGR24, filter)};
}

bool HasOneSample(const PixelTypeID& to) { return (to & kColorSpaceMask) == kColorSpaceGrayscale || IsBayer(to); }

}  // namespace LmTool
