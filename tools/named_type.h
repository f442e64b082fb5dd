#pragma once

#include <string>
#include <vector>

#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// A pixel type, and what its name tells besides.
struct NamedType {
  LmImagingLib::PixelTypeID id;
  unsigned long mosaic = 0;  ///< the bit of `ConversionFlags` of a mosaic's layout, if the name tells it
};

/// The type that a text names: an id, a registered name, a class name, or the name or code of the GenICam Pixel Format
/// Naming Convention. Where a class and a camera's format share a name (RGB16), it is the camera's.
/// @throws ToolError naming `argument`, with the names closest to the text, or why a camera's format is not supported
NamedType FindNamedType(const std::string& argument, const std::string& text);

/// The formats of the naming convention that are a type: of a mosaic one for each layout.
std::vector<const LmImagingLib::PFNCFormat*> FormatsOf(const LmImagingLib::PixelTypeID& type);

}  // namespace LmTool
