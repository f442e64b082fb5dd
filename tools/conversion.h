#pragma once

#include "LmImagingLib/PixelTypeID.h"
#include "LmImagingLib/RGBFilter.h"
#include "image.h"

namespace LmTool {

/// A frame as it came from a camera.
struct RawFrame {
  LmImagingLib::PixelTypeID type;
  ImageSize size;
  unsigned long flags;  ///< bits of `ConversionFlags`: mosaic layout, demosaicing method, field order
  Bytes bytes;
  std::size_t lineSize = 0;  ///< bytes from line to line; 0 for lines without padding
};

/// Converts to a type that the frame's type has a converter to; lines without padding.
/// @param filter  white balance, or null
/// @throws std::runtime_error that says what the conversion needs
Bytes ConvertFrame(const RawFrame& frame, const LmImagingLib::PixelTypeID& to, const LmImagingLib::RGBFilter* filter);

/// The picture that a person sees of a conversion to `to`: colour types in colour, gray types and mosaics as the top
/// 8 bits of their samples.
Picture ConvertToPicture(const RawFrame& frame, const LmImagingLib::PixelTypeID& to,
                         const LmImagingLib::RGBFilter* filter);

/// The type that shows a frame best: gray for gray types, else colour.
LmImagingLib::PixelTypeID PictureTypeOf(const LmImagingLib::PixelTypeID& from);

/// The picture as a frame of its own.
RawFrame FrameOf(Picture picture);

/// Whether pixels of a type are samples of a Bayer mosaic.
bool IsMosaic(const LmImagingLib::PixelTypeID& type);

/// Whether a conversion to `to` writes one sample a pixel: gray, or a mosaic.
bool HasOneSample(const LmImagingLib::PixelTypeID& to);

}  // namespace LmTool
