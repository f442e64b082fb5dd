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

/// The text with its ASCII letters in lower case.
std::string Lower(std::string text);

/// The registered types with a name, in any case: their own name, or that of their class.
std::vector<LmImagingLib::PixelTypeID> TypesNamed(const std::string& text);

/// Up to three names close to a text, in quotes, of cameras first; empty if there are none.
std::string ClosestNames(const std::string& text);

}  // namespace LmTool
