#pragma once

namespace LmImagingLib {

/// How often a registered converter was replaced by another one: what was found of a pair holds until then. Any thread
/// may ask.
unsigned Replacements();

}  // namespace LmImagingLib
