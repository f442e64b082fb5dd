#pragma once

#include "LmImagingLib/Development.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
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

/// What a conversion makes of colours.
struct Treatment {
  const LmImagingLib::RGBFilter* filter = nullptr;         ///< tables, or null
  const LmImagingLib::Development* development = nullptr;  ///< all of it; null for a conversion
  LmImagingLib::ConversionDepth depth = LmImagingLib::ConversionDepth::kFull;
  unsigned threads = 1;  ///< the most that work on one frame
};

/// The flags of a frame that describe it, and those that are a method of demosaicing.
inline constexpr unsigned long kMethodFlags =
    LmImagingLib::ConversionFlags::kBilinear | LmImagingLib::ConversionFlags::kGradientCorrected |
    LmImagingLib::ConversionFlags::kAdaptive | LmImagingLib::ConversionFlags::kHalfSize;
inline constexpr unsigned long kFrameFlags =
    LmImagingLib::ConversionFlags::kBayerGR | LmImagingLib::ConversionFlags::kBayerGB |
    LmImagingLib::ConversionFlags::kBayerRG | LmImagingLib::ConversionFlags::kBayerBG |
    LmImagingLib::ConversionFlags::kFieldOrder | LmImagingLib::ConversionFlags::kFullRange |
    LmImagingLib::ConversionFlags::kBT709;

/// The view of a frame's bytes.
LmImagingLib::ConstImageView ViewOf(const RawFrame& frame);

/// Converts to a type that the frame's type has a converter to; lines without padding.
/// @throws std::runtime_error that says what the conversion needs
Bytes ConvertFrame(const RawFrame& frame, const LmImagingLib::PixelTypeID& to, const Treatment& treatment);

/// The picture that a person sees of a conversion to `to`: colour types in colour, gray types and mosaics in gray.
/// @param bits  of the picture's samples: the top 8, or 16, to which samples of fewer bits are shifted up
Picture ConvertToPicture(const RawFrame& frame, const LmImagingLib::PixelTypeID& to, unsigned bits,
                         const Treatment& treatment);

/// The type that shows a frame best: gray for gray types, else colour.
LmImagingLib::PixelTypeID PictureTypeOf(const LmImagingLib::PixelTypeID& from);

/// The picture as a frame of its own.
RawFrame FrameOf(Picture picture);

/// Whether pixels of a type are samples of a Bayer mosaic.
bool IsMosaic(const LmImagingLib::PixelTypeID& type);

/// Whether pixels of a type are gray.
bool IsGray(const LmImagingLib::PixelTypeID& type);

}  // namespace LmTool
