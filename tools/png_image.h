#pragma once

#include "image.h"

namespace LmTool {

/// A PNG file.
Bytes EncodePng(const Picture& picture);

}  // namespace LmTool
