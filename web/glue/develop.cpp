#include "develop.h"

#include <algorithm>
#include <stdexcept>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/WhiteBalance.h"
#include "encode/layout.h"

namespace LmPage {

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kRGB48 = 0x20004, kRGB32 = 0x20003;

void Check(const ConversionResult& result) {
  if (!result.IsOK()) throw std::runtime_error(result.message);
}

ConstImageView ViewOf(const RawFrame& frame) {
  return {frame.reading.type,
          frame.bytes.data,
          frame.bytes.size,
          static_cast<unsigned long>(frame.reading.width),
          static_cast<unsigned long>(frame.reading.height),
          frame.lineSize};
}

bool IsGray(const RawFrame& frame) { return (frame.reading.type & kColorSpaceMask) == kColorSpaceGrayscale; }

Picture Develop(const ConstImageView& source, unsigned long flags, const DevelopmentSettings& settings) {
  Development development;
  Check(Development::Make(settings, development));
  const unsigned long parts = settings.method == ConversionFlags::kHalfSize ? 2 : 1;
  Picture picture{source.width / parts, source.height / parts, {}};
  picture.pixels.resize(4 * picture.width * picture.height);
  DevelopOptions options;
  options.flags = flags | ConversionFlags::kOpaque;
  Check(Develop(development, source,
                {kRGB32, picture.pixels.data(), picture.pixels.size(), source.width / parts, source.height / parts, 0},
                options));
  return picture;
}

// Gray as three equal colours, whose samples are at the top of 16 bits.
Picture DevelopGray(const RawFrame& frame, DevelopmentSettings settings) {
  const ConstImageView source = ViewOf(frame);
  std::vector<std::uint16_t> words(3 * frame.reading.width * frame.reading.height);
  const std::size_t bytes = words.size() * sizeof(words[0]);
  Check(ConvertImage(source, {kRGB48, words.data(), bytes, source.width, source.height, 0}));
  const double step = 1U << (16 - DepthOf(frame.reading.type));
  settings.black = {settings.black.red * step, settings.black.green * step, settings.black.blue * step};
  settings.method = ConversionFlags::kNone;
  return Develop({kRGB48, words.data(), bytes, source.width, source.height, 0}, 0, settings);
}

}  // namespace

unsigned DepthOf(PixelTypeID type) { return LmTool::LayoutOf(type).bits; }

Picture DevelopPicture(const RawFrame& frame, const DevelopmentSettings& settings) {
  return IsGray(frame) ? DevelopGray(frame, settings) : Develop(ViewOf(frame), frame.reading.flags, settings);
}

RGBValues BalanceAt(const RawFrame& frame, const RGBValues& black, std::size_t x, std::size_t y, std::size_t radius) {
  if (IsGray(frame)) throw std::runtime_error("The frame is gray; it has no colours to balance.");
  const std::size_t width = frame.reading.width, height = frame.reading.height;
  WhiteBalanceOptions options;
  options.flags = frame.reading.flags;
  options.black = black;
  if (radius != 0) {
    const std::size_t left = x - std::min(x, radius), top = y - std::min(y, radius);
    options.method = WhiteBalanceOptions::kRectangle;
    options.x = static_cast<unsigned long>(left);
    options.y = static_cast<unsigned long>(top);
    options.width = static_cast<unsigned long>(std::min(width, x + radius + 1) - left);
    options.height = static_cast<unsigned long>(std::min(height, y + radius + 1) - top);
  }
  const WhiteBalance found = EstimateWhiteBalance(ViewOf(frame), options);
  if (!found.IsFound()) throw std::runtime_error("White is not balanced: " + found.message);
  return found.gains;
}

}  // namespace LmPage
