#pragma once

#include <string>

#include "LmBaseLib/Export.h"
#include "LmBaseLib/Result.h"

namespace LmImagingLib {

/// Writes pixels to a Windows bitmap (BMP) file as they are: it converts nothing and adds no palette.
///
/// Holds no state; any number of threads may save at once, to different files.
class LM_EXPORT BMPSaver {
 public:
  BMPSaver();
  ~BMPSaver();
  /// Does nothing: savers hold no state.
  BMPSaver& operator=(const BMPSaver& other);

  /// Writes the 14-byte file header, the 40-byte info header and width * height * bitsPerPixel / 8 bytes of `data`.
  ///
  /// The header asks for rows stored top row first. BMP wants rows of a multiple of 4 bytes; none are padded here,
  /// so pass rows that are (24-bit images of a width that is a multiple of 4, or lines padded by the conversion).
  /// A 24-bit BMP holds B, G, R and a 32-bit one B, G, R, 0.
  ///
  /// @param path  a file name in the system's narrow encoding; an existing file is replaced
  /// @param data  pixels, not checked; null or a negative size writes the headers alone
  /// @param width, height  in pixels; the image size is computed in 32 bits and wraps
  /// @param bitsPerPixel  written into the header unchecked
  /// @return `FILE_OPEN_FAILED` if the file cannot be opened; failures of the writes are not reported
  LmBaseLib::Result SaveBMP(const std::string& path, const void* data, long width, long height,
                            unsigned short bitsPerPixel);
};

}  // namespace LmImagingLib
