#pragma once

#include <string>

#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// Facts of a type by its layout in memory. What it is registered with, its name and numbers, may say something else.
struct TypeFacts {
  std::string sampleBits;  ///< significant bits of a sample: "12", or "5-6-5" where channels differ
  double pixelBytes;       ///< that a pixel takes in memory, such as 1.5
  std::string note;        ///< how the registered name misleads; empty if it does not
};

TypeFacts FactsOf(const LmImagingLib::PixelTypeID& type);

/// "1.5", without zeros at the end.
std::string PixelBytesInWords(double bytes);

}  // namespace LmTool
