#pragma once

#include <string>
#include <vector>

#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// A pixel type, and what else its name says.
struct NamedType {
  LmImagingLib::PixelTypeID id;
  unsigned long mosaic = 0;  ///< the bit of `ConversionFlags` of a mosaic's layout, if the name says it
  unsigned long yuv = 0;     ///< the bits of the range and the matrix of YUV, if the name says them
};

/// The type that a text names: by the name or code of the GenICam Pixel Format Naming Convention, a fourcc of V4L2, an
/// id, a registered name or a class name. Exact spelling wins, case does not count otherwise; a name that cameras use
/// wins over that of a class.
/// @throws ToolError naming `argument`, with the names closest to the text, or why a camera's format is not supported
NamedType FindNamedType(const std::string& argument, const std::string& text);

/// The formats of the naming convention that are a type: of a mosaic one for each layout.
std::vector<const LmImagingLib::PFNCFormat*> FormatsOf(const LmImagingLib::PixelTypeID& type);

}  // namespace LmTool
