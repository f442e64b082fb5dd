#pragma once

#include <string>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// The ids of all registered types, ascending.
std::vector<LmImagingLib::PixelTypeID> RegisteredTypes();

/// The class that describes a type, such as "BayerRGB10"; empty for a format that has none.
std::string ClassName(const LmImagingLib::PixelTypeID& id);

/// "0x20011".
std::string HexID(const LmImagingLib::PixelTypeID& id);

/// "0x20011 (Bayer RGB10-bits)".
std::string Label(const LmImagingLib::PixelTypeID& id);

/// The type that a text names: an id (0x20011, 131089), a registered name or a class name, in any case.
/// @throws ToolError naming `argument`, with the names closest to the text
LmImagingLib::PixelTypeID ParsePixelType(const std::string& argument, const std::string& text);

}  // namespace LmTool
