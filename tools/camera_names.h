#pragma once

#include <string>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// The V4L2 fourccs of a type: of a mosaic one for each layout.
std::vector<std::string> FourccsOf(const LmImagingLib::PixelTypeID& type);

/// The names that cameras have for a type, by PFNC or else by V4L2: "Mono8", "BayerGR10 (RG, GB, BG)", "Y10P (V4L2)".
std::string CameraNames(const LmImagingLib::PixelTypeID& type);

/// "RGB8 (0x420002)"; for a type that no name of a camera leads to, its registered name in place of that.
std::string ShortLabel(const LmImagingLib::PixelTypeID& type);

/// Up to four destinations that a user most likely wants from a type, and how to list the others.
/// @param lister  the call or command that lists all of them
std::string DestinationsInWords(const LmImagingLib::PixelTypeID& from, const std::string& lister);

}  // namespace LmTool
