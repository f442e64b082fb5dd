#pragma once

#include <filesystem>
#include <optional>

#include "LmImagingLib/Image.h"
#include "colors.h"

namespace LmTool {

/// What a file says about how the frames of a camera become pictures.
struct DevelopmentFile {
  ColorArguments colors;
  std::optional<unsigned long> method;  ///< of demosaicing, a flag; empty where it is left out
  std::optional<LmImagingLib::ConversionDepth> depth;
};

/// Reads a file in JSON: an object with any of the keys black, gains, matrix, tone, demosaic, defects and depth.
/// @throws ToolError that names the file, and the key and its value
DevelopmentFile ReadDevelopmentFile(const std::string& argument, const std::filesystem::path& path);

}  // namespace LmTool
