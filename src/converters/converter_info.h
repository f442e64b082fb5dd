#pragma once

#include <atomic>
#include <cstdint>

#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

class RGBFilter;

/// What a converter is told when it is made, and what it finds out.
struct PixelConverterInfo {
  PixelTypeID sourceTypeID;
  PixelTypeID destinationTypeID;
  std::uint32_t sourcePixelByteSize;
  std::uint32_t destinationPixelByteSize;
  std::uint32_t pixelsPerStep;
  std::uint32_t linesPerStep;
  std::uint32_t joinedGroup;  ///< lines of multiples of so many pixels convert as one where no gap parts them; 0: never
  std::atomic<const RGBFilter*> defaultFilter{nullptr};  ///< of the source type, once that is registered
};

}  // namespace LmImagingLib
