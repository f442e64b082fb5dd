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
  PixelTypeID type = 0;
  const void* data = nullptr;
  std::size_t size = 0;      ///< bytes that `data` has, at least `RequiredSize`
  unsigned long width = 0;   ///< pixels
  unsigned long height = 0;  ///< lines
  std::size_t lineSize = 0;  ///< bytes from the beginning of a line to that of the next; 0 for lines without padding
};

/// An image to write; otherwise as `ConstImageView`. The padding behind its lines is never touched.
struct ImageView {
  PixelTypeID type = 0;
  void* data = nullptr;
  std::size_t size = 0;
  unsigned long width = 0;
  unsigned long height = 0;
  std::size_t lineSize = 0;
};

/// How to convert.
struct ConvertOptions {
  static constexpr unsigned long kAllLines = ~0UL;

  const RGBFilter* filter = nullptr;             ///< looks every colour value up; null changes none
  unsigned long flags = ConversionFlags::kNone;  ///< bits of `ConversionFlags`, at most one Bayer layout
  unsigned long firstLine = 0;                   ///< the first line to convert, in source and destination alike
  unsigned long lines = kAllLines;               ///< lines to convert; `kAllLines` for all from there on
};

/// What became of a conversion.
struct ConversionResult {
  /// `OK`; `NOT_IMPLEMENTED` for a pair of types without a converter; `INVALID_PARAMETER` for anything else.
  LmBaseLib::Result result;
  /// A sentence that names what was given and what is needed; empty on success.
  std::string message;

  bool IsOK() const { return result.IsOK(); }
};

/// The bytes that an image takes, from its first one to the last of its last line.
///
/// These are the bytes that conversions read and write: 3 a pixel for every 24-bit type, where
/// `PixelType::GetBufferSizeFor` counts 4 for the unpacked ones. Layouts of one and a half bytes a pixel (and RGB of 12
/// bits, of four and a half) round a line down to whole bytes.
/// @param lineSize  as in the views
/// @return nothing for a type that is not registered, a line size smaller than the line, and a size that does not fit
LM_EXPORT std::optional<std::size_t> RequiredSize(PixelTypeID type, unsigned long width, unsigned long height,
                                                  std::size_t lineSize = 0);

/// Converts an image after checking everything: nothing is read or written unless the call succeeds, and never a byte
/// outside the pixels of the two images. What is written is what `PixelConverter::Convert` writes there.
///
/// Source and destination have the same width and height. They must not overlap.
LM_EXPORT ConversionResult ConvertImage(const ConstImageView& source, const ImageView& destination,
                                        const ConvertOptions& options = {});

}  // namespace LmImagingLib
