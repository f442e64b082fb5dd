#include "LmImagingLib/Version.h"

namespace LmImagingLib {

const char* GetVersion() { return LM_VERSION; }

}  // namespace LmImagingLib
