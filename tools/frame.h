#pragma once

#include <cstddef>

#include "LmImagingLib/PixelConverter.h"
#include "image.h"

namespace LmTool {

/// How the bytes of a frame are divided. Planar frames have the lines of one plane after those of another.
struct FrameLayout {
  std::size_t lineBytes;
  std::size_t lines;

  std::size_t Bytes() const { return lineBytes * lines; }
};

/// What a frame of a type takes as a source of conversions: the bytes that its converters read.
///
/// That is what cameras deliver. It differs from `PixelType::GetBufferSizeFor` where buffers are larger than their
/// pixels: unpacked 24-bit types (3 bytes a pixel, not 4), packed GEV, 4:1:1 and packed 12-bit RGB.
FrameLayout SourceLayout(const LmImagingLib::PixelTypeID& type, const ImageSize& size);

/// What `converter` writes for an image.
FrameLayout DestinationLayout(const LmImagingLib::PixelConverter& converter, const ImageSize& size);

/// Bytes that a frame buffer needs after its frame, because some layouts are read in groups that pass the end of
/// a line: packed GEV, packed 12-bit RGB and 4:1:1.
inline constexpr std::size_t kSlackBytes = 16;

}  // namespace LmTool
