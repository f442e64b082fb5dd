#pragma once

#include "LmBaseLib/Export.h"

namespace LmImagingLib {

/// The version of the library that is loaded, such as "1.2.3", which may be newer than the one compiled against.
LM_EXPORT const char* GetVersion();

}  // namespace LmImagingLib
