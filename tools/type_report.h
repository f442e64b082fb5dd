#pragma once

#include <nlohmann/json.hpp>

#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// Everything about a type, for programs.
nlohmann::ordered_json DescribeType(const LmImagingLib::PixelTypeID& id);

}  // namespace LmTool
