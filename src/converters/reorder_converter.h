#pragma once

#include "converters/library_converter.h"
#include "simd/kernel.h"

namespace LmImagingLib {

/// Puts the samples of a readout by four taps in order, as they are. Pixels past the last multiple of four stay.
class QuadTapsConverter : public LibraryConverter {
 public:
  void ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const override;
  ConversionExtent ExtentOf(const Frame& frame, std::uint32_t lines) const override;

 protected:
  /// @param sampleBytes  1 or 2
  QuadTapsConverter(std::uint32_t sampleBytes, const PixelTypeID& from, const PixelTypeID& to);

 private:
  const Twins<ReorderKernel>& mKernel;
};

/// A readout of bytes by four taps to 8-bit grayscale.
class Dalsa4x8ToGrayscale8 : public QuadTapsConverter {
 public:
  Dalsa4x8ToGrayscale8(const PixelTypeID& from, const PixelTypeID& to) : QuadTapsConverter(1, from, to) {}
};

/// A readout of 16-bit words by four taps to grayscale of the same words.
class Dalsa4x16ToGrayscale16 : public QuadTapsConverter {
 public:
  Dalsa4x16ToGrayscale16(const PixelTypeID& from, const PixelTypeID& to) : QuadTapsConverter(2, from, to) {}
};

/// Separates pairs of lines whose bytes alternate between the upper and the lower line. A last line without a partner
/// is copied.
class DualLinesGrayscale8ToGrayscale8 : public LibraryConverter {
 public:
  DualLinesGrayscale8ToGrayscale8(const PixelTypeID& from, const PixelTypeID& to);
  void ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const override;
  ConversionExtent ExtentOf(const Frame& frame, std::uint32_t lines) const override;
};

}  // namespace LmImagingLib
