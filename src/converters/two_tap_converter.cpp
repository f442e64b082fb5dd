#include "converters/two_tap_converter.h"

#include "walk/conversion_context.h"

namespace LmImagingLib {

using LmBaseLib::Result;

TwoTapConverter::TwoTapConverter(const Source& source, const Writer& writer, const PixelTypeID& from,
                                 const PixelTypeID& to, unsigned long shift, TapOrder taps)
    : LineConverter(source, writer, from, to, shift, taps.left == 0 && taps.right == 0), mTaps(taps) {}

Result TwoTapConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  if (mTaps.left == 0 && mTaps.right == 0) return LineConverter::ConvertLine(source, destination, pixelCount);
  const ContextScope context;
  ConvertTapStrips(Steps(*context), LinesAt(source, *context), static_cast<std::uint32_t>(pixelCount) / 2,
                   TargetAt(destination, *context), mTaps.left <= 0, mTaps.right <= 0);
  return Result::OK;
}

}  // namespace LmImagingLib
