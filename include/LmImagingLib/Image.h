#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "LmBaseLib/Export.h"
#include "LmBaseLib/Result.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

class RGBFilter;

/// An image to read: its format, its memory and its geometry. Views own nothing.
///
/// A plane of a planar image begins `lineSize` x `height` bytes behind the one before, the second field of an
/// interlaced image in the middle of its lines.
struct ConstImageView {
  PixelTypeID type = 0;        ///< a registered type
  const void* data = nullptr;  ///< the first byte of the first line
  std::size_t size = 0;        ///< bytes that `data` has, at least `RequiredSize`
  unsigned long width = 0;     ///< pixels
  unsigned long height = 0;    ///< lines
  std::size_t lineSize = 0;    ///< bytes from the beginning of a line to that of the next; 0 for lines without padding
};

/// An image to write; otherwise as `ConstImageView`. The padding behind its lines is never touched.
struct ImageView {
  PixelTypeID type = 0;      ///< as in `ConstImageView`, and so are the others
  void* data = nullptr;      ///< the first byte of the first line
  std::size_t size = 0;      ///< bytes
  unsigned long width = 0;   ///< pixels
  unsigned long height = 0;  ///< lines
  std::size_t lineSize = 0;  ///< bytes from line to line
};

/// The bits that destinations of more than 8 bits a sample receive.
enum class ConversionDepth {
  kFull,       ///< all that the source has, and the destination has room for
  kEightBits,  ///< the upper 8 of each colour value, as `PixelConverter::Convert` does without `kFullDepth`
};

/// How to convert.
struct ConvertOptions {
  /// Stands for all lines from `firstLine` on.
  static constexpr unsigned long kAllLines = ~0UL;

  const RGBFilter* filter = nullptr;             ///< looks every colour value up; null changes none
  unsigned long flags = ConversionFlags::kNone;  ///< bits of `ConversionFlags`; a mosaic needs its layout
  unsigned long firstLine = 0;                   ///< the first line to convert, in source and destination alike
  unsigned long lines = kAllLines;               ///< lines to convert; `kAllLines` for all from there on
  ConversionDepth depth = ConversionDepth::kFull;
};

/// What became of a conversion.
struct ConversionResult {
  /// `OK`; `NOT_IMPLEMENTED` for a pair of types without a converter; `INVALID_PARAMETER` for anything else that is
  /// asked for in vain; `NOT_ENOUGH_MEMORY`; what an application's own converter returns.
  LmBaseLib::Result result;
  /// A sentence that names what was given and what is needed; empty on success.
  std::string message;

  /// Whether the image was converted.
  bool IsOK() const { return result.IsOK(); }
};

/// The bytes that an image takes, from its first one to the last of its last line.
///
/// These are the bytes that conversions read and write: 3 a pixel for every 24-bit type, where
/// `PixelType::GetBufferSizeFor` counts 4 for the unpacked ones. Lines of one and a half or four and a half bytes
/// a pixel that end within a byte share it with the next line unless `lineSize` parts them; the last one has it to
/// itself. A last line of YUV 4:1:1 of 2 more pixels than a multiple of four includes the V that both need.
/// @param lineSize  as in the views
/// @return nothing for a type that is not registered, a `lineSize` too small for a line, and a size that is too large
LM_EXPORT std::optional<std::size_t> RequiredSize(PixelTypeID type, unsigned long width, unsigned long height,
                                                  std::size_t lineSize = 0);

/// Converts an image, or some of its lines, after checking everything: a call that is refused touches nothing, and one
/// that is accepted neither reads nor writes a byte outside the pixels of the two images.
///
/// Pixels become what `PixelConverter::Convert` makes of them. Pixels that it leaves alone stay: an odd last line of an
/// interlaced image; in each line what is left over of a pair in YUV 4:2:2, packed and two-tap layouts (packed GigE
/// Vision layouts convert it), of four pixels in the four-tap layouts, and the last pixel of YUV 4:1:1 that is one more
/// than a multiple of four.
///
/// Refused are, beside sizes that do not fit: images of different size, or without a pixel; images that overlap in
/// memory, even exactly; mosaics of less than 2 x 2 pixels that are to become colour, and ranges of their lines that
/// part pairs; several Bayer layouts in the flags; lines of more than 2 GiB; padding in images of `kDualLines`, and in
/// interlaced ones of odd height. An application's own converter takes lines from line 0 on, of a size that whole
/// pixels fill, and a chain with one in it no padding.
///
/// Needs no memory for pixels, but a few lines in chained conversions whose intermediate image takes more than 6144
/// bytes a line. Any number of threads may call at once, and do not wait for each other's pixels.
LM_EXPORT ConversionResult ConvertImage(const ConstImageView& source, const ImageView& destination,
                                        const ConvertOptions& options = {});

}  // namespace LmImagingLib
