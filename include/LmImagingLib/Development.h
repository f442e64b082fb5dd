#pragma once

#include <array>
#include <memory>

#include "LmBaseLib/Export.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/ToneCurve.h"

namespace LmImagingLib {

struct DevelopmentTables;

/// A 3 x 3 matrix, row by row: red, green and blue of the result are the products of its rows with the colour. The
/// first row {1.5, -0.3, -0.2} makes red 1.5 red - 0.3 green - 0.2 blue. Rows that sum to 1 keep gray as it is.
using ColorMatrix = std::array<double, 9>;

/// The matrix that changes nothing.
inline constexpr ColorMatrix kIdentityMatrix{1, 0, 0, 0, 1, 0, 0, 0, 1};

/// How the frames of a camera become pictures. The steps come in the order of the members.
struct DevelopmentSettings {
  /// Whether defect pixels of mosaics are corrected, before anything else: a sample that is above the greatest of the
  /// eight samples of its colour around it by more than a threshold becomes that one, and likewise below the least.
  bool correctsDefects = false;
  /// That threshold, in steps of the samples; 0 stands for 1/64 of their range.
  unsigned defectThreshold = 0;
  /// The level of black that is taken off each sample, in steps of the samples as the camera counts them, 0 or more.
  RGBValues black{0, 0, 0};
  /// The factors of the samples afterwards, 0 to 1000: the white balance. What exceeds white becomes white.
  RGBValues gains{1, 1, 1};
  /// How a mosaic becomes colour: `ConversionFlags::kNone` for blocks, or one of `kBilinear`, `kGradientCorrected`,
  /// `kAdaptive` and `kHalfSize`.
  unsigned long method = ConversionFlags::kAdaptive;
  /// From the colours of the camera to those of the picture, in linear light. The absolute values of a row sum to 7 at
  /// most; they are rounded to multiples of 1/4096.
  ColorMatrix matrix = kIdentityMatrix;
  /// The curve from light to values of the picture.
  ToneCurve tone{ToneCurve::kSRGB};
  /// The bits that destinations of more than 8 bits receive.
  ConversionDepth depth = ConversionDepth::kFull;
};

/// Settings that were checked, with the tables that they need. It never changes; copies share their state.
///
/// Any number of threads may develop with one object at the same time. Tables are made at the first use for sources of
/// a depth and destinations of a depth, and kept until the last copy is gone.
class LM_EXPORT Development {
 public:
  /// The default settings: sRGB, and nothing else but demosaicing.
  Development();
  /// Shares the state of `other`.
  Development(const Development& other);
  /// Shares the state of `other` from now on.
  Development& operator=(const Development& other);
  ~Development();

  /// Checks settings.
  /// @param made  becomes the development; stays as it was if the settings are refused
  /// @return `INVALID_PARAMETER` and a sentence that names the setting, its value and what is allowed;
  ///   `NOT_ENOUGH_MEMORY`
  static ConversionResult Make(const DevelopmentSettings& settings, Development& made);

  /// The settings that it was made of.
  const DevelopmentSettings& Settings() const;

 private:
  friend const DevelopmentTables& TablesOf(const Development& development);

  std::shared_ptr<const DevelopmentTables> mTables;
};

/// What a development is not for: the layout of a frame, the lines to develop, and the threads to do it with.
struct DevelopOptions {
  /// Bits of `ConversionFlags` that describe the frame: its Bayer layout, `kFieldOrder`, `kFullRange` and `kBT709`;
  /// `kOpaque` and `kReadLater`. The method of demosaicing, the depth and the order of steps are the development's.
  unsigned long flags = ConversionFlags::kNone;
  unsigned long firstLine = 0;                      ///< as `ConvertOptions::firstLine`
  unsigned long lines = ConvertOptions::kAllLines;  ///< as `ConvertOptions::lines`
  unsigned threads = 1;                             ///< as `ConvertOptions::threads`
  const Executor* executor = nullptr;               ///< as `ConvertOptions::executor`
};

/// Makes a picture of a camera's frame: defect pixels, black level, gains, demosaicing, matrix and tone in one pass,
/// without an image in between. docs/development.md has the formulas.
///
/// Sources are mosaics and images in colour, YUV included, of every layout; defects and the method of demosaicing have
/// no meaning for the latter. Destinations are colours, interleaved or planar, and gray. Results use the whole range of
/// the destination: white is 255 of 8 bits, 4095 of 12 bits. A source of 8 bits gives 256 values at most to deeper
/// destinations. It refuses what `ConvertImage` refuses, and gray sources. Everything else is as there: which bytes are
/// read and written, overlaps, lines, threads and memory. Types and pairs beyond the standard ones need
/// `RegisterExtendedFormats`.
/// @param development  may be used by any number of threads at the same time
/// @param source  the frame; the caller keeps ownership
/// @param destination  of the same width and height; of half of both, rounded down, for the method `kHalfSize`
/// @param options  the layout of the frame, lines and threads
/// @return the code, and a sentence for the user if the call was refused
LM_EXPORT ConversionResult Develop(const Development& development, const ConstImageView& source,
                                   const ImageView& destination, const DevelopOptions& options = {});

}  // namespace LmImagingLib
