#pragma once

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib {

/// The converters that an image passes through.
struct ConverterStages {
  const PixelConverter& first;
  const PixelConverter* second;  ///< null unless it is a chain
};

/// The stages of a chain of the library's own class; of any other converter the converter itself.
ConverterStages StagesOf(const PixelConverter& converter);

}  // namespace LmImagingLib
