#pragma once

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib {

/// Puts the bytes of a readout by four taps in order, `Grayscale8_DualQuadMultiplexed` to 8-bit grayscale. Pixels past
/// the last multiple of four stay.
class Dalsa4x8ToGrayscale8 : public PixelConverter {
 public:
  Dalsa4x8ToGrayscale8(const PixelTypeID& from, const PixelTypeID& to);
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;
};

/// The same for 16-bit words, which stay as they are.
class Dalsa4x16ToGrayscale16 : public PixelConverter {
 public:
  Dalsa4x16ToGrayscale16(const PixelTypeID& from, const PixelTypeID& to);
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;
};

/// Parts pairs of lines whose bytes alternate between the upper and the lower line. A last line without a partner is
/// copied.
class DualLinesGrayscale8ToGrayscale8 : public PixelConverter {
 public:
  DualLinesGrayscale8ToGrayscale8(const PixelTypeID& from, const PixelTypeID& to);
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;
};

}  // namespace LmImagingLib
