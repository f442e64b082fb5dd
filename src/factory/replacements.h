#pragma once

namespace LmImagingLib {

/// How often a registered converter was replaced by another one. While the number stays, so does the converter of each
/// registered pair. Any thread may ask.
unsigned Replacements();

}  // namespace LmImagingLib
