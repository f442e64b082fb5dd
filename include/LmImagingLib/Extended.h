#pragma once

#include "LmBaseLib/Export.h"
#include "LmBaseLib/Result.h"

namespace LmImagingLib {

/// Registers the extended formats: pixel types of today's cameras, and conversions of every type to colours and gray of
/// more than 8 bits. Entries that are registered already stay as they are, those of applications included.
///
/// Until it is called the registry has the 155 standard types and their pairs, and answers as if there were no others.
/// Call it once, before the first conversion; more calls do nothing. It is never undone. Any thread may call it at any
/// time; what others have looked up stays valid.
/// @return `NOT_ENOUGH_MEMORY` if the registry cannot be made
LM_EXPORT LmBaseLib::Result RegisterExtendedFormats();

}  // namespace LmImagingLib
