#pragma once

#include "LmImagingLib/Image.h"
#include "walk/frame.h"

namespace LmImagingLib {

/// The source of a frame, from which no byte after a line is read.
/// @param type  whose flags name the fields: the converter's, or the view's own
inline Frame SourceFrame(const ConstImageView& source, std::uint64_t lineSize, PixelTypeID type) {
  Frame frame;
  frame.source = static_cast<const std::uint8_t*>(source.data);
  frame.sourceLine = static_cast<std::size_t>(lineSize);
  frame.sourceWidth = static_cast<std::uint32_t>(source.width);
  frame.sourceHeight = static_cast<std::uint32_t>(source.height);
  frame.interlaced = (type & kInterlacedFlag) != 0;
  frame.secondField = frame.sourceLine * frame.sourceHeight / 2;
  frame.fieldLines = frame.sourceHeight / 2 * 2;
  frame.sourcePlanes = PlaneCount(type);
  frame.contained = true;
  return frame;
}

}  // namespace LmImagingLib
