#pragma once

#include <cstddef>
#include <string>

#include "LmBaseLib/Export.h"
#include "LmBaseLib/Result.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/ToneCurve.h"

namespace LmImagingLib {

/// How to find the colour of the light in a frame.
struct WhiteBalanceOptions {
  /// What of the picture is taken to be gray.
  enum Method {
    kGrayWorld,   ///< the mean of the picture (G. Buchsbaum, 1980)
    kWhitePatch,  ///< the brightest hundredth of each colour (E. H. Land, 1977), by percentiles
    kRectangle,   ///< the mean of a rectangle that is known to be gray, such as a card
  };

  Method method = kGrayWorld;  ///< how gray is found
  unsigned long x = 0;         ///< the first column of the rectangle, for `kRectangle`
  unsigned long y = 0;         ///< its first line
  unsigned long width = 0;     ///< its columns
  unsigned long height = 0;    ///< its lines
  /// The Bayer layout of a mosaic, `kFieldOrder`, `kFullRange` and `kBT709`, as bits of `ConversionFlags`.
  unsigned long flags = ConversionFlags::kNone;
  /// The level of black in steps of the samples as the camera counts them, which will be taken off before the gains
  /// act; less than the greatest sample.
  RGBValues black{0, 0, 0};
};

/// An estimate of the white balance.
struct WhiteBalance {
  LmBaseLib::Result result;  ///< `OK`, `INVALID_PARAMETER` or `NOT_ENOUGH_MEMORY`
  /// Empty where gains were found. Otherwise why the call was refused, or why the gains are 1.
  std::string message;
  /// The gains that make the light white. The least is 1, or just as much more as brings a saturated sample to white
  /// after its black level was taken off, so that overexposed places stay white.
  RGBValues gains{1, 1, 1};
  std::size_t cells = 0;        ///< the cells that were looked at: of 2 x 2 samples of a mosaic, else pixels
  std::size_t usableCells = 0;  ///< those that are neither too dark nor overexposed

  /// Whether gains were found.
  bool IsFound() const { return result.IsOK() && message.empty(); }
};

/// Estimates the white balance of a frame: the gains of red, green and blue that make gray things gray.
///
/// It looks at every fourth cell along lines and columns; of a rectangle at all. A cell is usable if all its samples
/// are between 1/50 and 49/50 of their range. If less than a hundredth of the cells are usable, all gains are 1, and
/// `message` says so; the call is not refused. Any number of threads may call it at the same time.
/// @param source  a mosaic, or an image in colour of any layout; YUV is taken as the colours that it becomes
/// @param options  the method and the layout of the frame
LM_EXPORT WhiteBalance EstimateWhiteBalance(const ConstImageView& source, const WhiteBalanceOptions& options = {});

}  // namespace LmImagingLib
