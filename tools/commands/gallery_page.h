#pragma once

#include <string>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"
#include "image.h"

namespace LmTool {

/// One type in the gallery.
struct GalleryCell {
  LmImagingLib::PixelTypeID type;
  Picture picture;          ///< what its frame of the scene converts to
  double psnr;              ///< of the picture against the scene, in decibels; infinite if they are equal
  std::string layout;       ///< of a pixel, in words
  std::size_t bufferBytes;  ///< by `PixelType::GetBufferSizeFor`
  std::size_t frameBytes;   ///< that the frame's pixels take
};

/// A web page that needs no other file.
std::string GalleryPage(const std::vector<GalleryCell>& cells, const Picture& colorScene, const Picture& grayScene);

}  // namespace LmTool
