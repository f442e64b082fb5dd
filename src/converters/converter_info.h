#pragma once

#include <cstdint>

#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

class LibraryConverter;

/// The arguments that a converter is constructed with.
struct PixelConverterInfo {
  PixelTypeID sourceTypeID;
  PixelTypeID destinationTypeID;
  std::uint32_t sourcePixelByteSize;
  std::uint32_t destinationPixelByteSize;
  std::uint32_t pixelsPerStep;
  std::uint32_t linesPerStep;
  const LibraryConverter* library = nullptr;  ///< the converter itself, if it is one of the library's own
};

}  // namespace LmImagingLib
