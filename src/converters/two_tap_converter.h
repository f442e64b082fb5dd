#pragma once

#include "converters/line_converter.h"

namespace LmImagingLib {

/// How the two taps of a sensor deliver a line: samples come in pairs, one of the left half and one of the right.
struct TapOrder {
  int left = 0;   ///< 1: the left half is read forwards, -1: backwards; 0, as `right`: the sensor has one tap
  int right = 0;  ///< the same of the right half
};

/// Converts grayscale lines, putting the samples of a two-tap readout in order. An odd last pixel of such a line has no
/// partner and is not converted.
class TwoTapConverter : public LineConverter {
 public:
  TwoTapConverter(const Source& source, const Writer& writer, const PixelTypeID& from, const PixelTypeID& to,
                  unsigned long shift, TapOrder taps);

  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;

 private:
  TapOrder mTaps;
};

/// A two-tap converter as a class of its source layout and writer.
template <const Source& kSource, class Output>
class TwoTapTo : public TwoTapConverter {
 public:
  TwoTapTo(const PixelTypeID& from, const PixelTypeID& to, unsigned long shift = 0, TapOrder taps = {})
      : TwoTapConverter(kSource, Output::kWriter, from, to, shift, taps) {}
};

}  // namespace LmImagingLib
