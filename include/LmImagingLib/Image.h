#pragma once

#include <cstddef>
#include <functional>
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
/// A plane of a planar image begins `lineSize` x `height` bytes after the previous one. The second field of an
/// interlaced image begins after half of its lines.
struct ConstImageView {
  PixelTypeID type = 0;        ///< a registered type
  const void* data = nullptr;  ///< the first byte of the first line
  std::size_t size = 0;        ///< bytes that `data` has, at least `RequiredSize`
  unsigned long width = 0;     ///< pixels
  unsigned long height = 0;    ///< lines
  std::size_t lineSize = 0;    ///< bytes from the beginning of a line to that of the next; 0 for lines without padding
};

/// An image to write; otherwise as `ConstImageView`. The padding after its lines is never touched.
struct ImageView {
  PixelTypeID type = 0;      ///< a registered type
  void* data = nullptr;      ///< the first byte of the first line
  std::size_t size = 0;      ///< bytes
  unsigned long width = 0;   ///< pixels
  unsigned long height = 0;  ///< lines
  std::size_t lineSize = 0;  ///< bytes from line to line

  /// The same image to read, so that the result of a conversion is the source of the next one.
  operator ConstImageView() const {  // NOLINT(google-explicit-constructor): whoever may write may read
    return {type, data, size, width, height, lineSize};
  }
};

/// The bits that destinations of more than 8 bits a sample receive.
enum class ConversionDepth {
  kFull,       ///< all that the source has, and the destination has room for
  kEightBits,  ///< the upper 8 of each colour value, as `PixelConverter::Convert` does without `kFullDepth`
};

/// Runs `job(0)` to `job(count - 1)`, each exactly once, on threads of its choice, and returns when all have returned.
/// Jobs do not throw, and do not wait for each other.
using Executor = std::function<void(std::size_t count, const std::function<void(std::size_t)>& job)>;

/// How to convert.
struct ConvertOptions {
  /// Stands for all lines from `firstLine` on.
  static constexpr unsigned long kAllLines = ~0UL;

  const RGBFilter* filter = nullptr;             ///< looks every colour value up; null changes none
  unsigned long flags = ConversionFlags::kNone;  ///< bits of `ConversionFlags`; a mosaic needs its layout
  /// The first line to convert, in source and destination alike. With `ConversionFlags::kHalfSize` lines are those of
  /// the source, in pairs: line 2 of it is line 1 of the destination.
  unsigned long firstLine = 0;
  unsigned long lines = kAllLines;                 ///< lines to convert; `kAllLines` for all from there on
  ConversionDepth depth = ConversionDepth::kFull;  ///< the bits that destinations of more than 8 bits receive
  /// The most threads that may work on one image, 1 or more. The result is the same for any number. An image is divided
  /// into bands of lines of at least 512 KiB, source and destination together, so small images take one thread.
  unsigned threads = 1;
  /// Runs the bands, for example on the application's thread pool; null starts threads for this call. Not owned.
  const Executor* executor = nullptr;
};

/// The outcome of a conversion.
struct ConversionResult {
  /// `OK`; `NOT_IMPLEMENTED` for a pair of types without a converter; `INVALID_PARAMETER` for any other argument that
  /// is refused; `NOT_ENOUGH_MEMORY`; or the code that an application's own converter returned.
  LmBaseLib::Result result;
  /// A sentence that names what was given and what is needed; empty on success.
  std::string message;

  /// Whether the image was converted.
  bool IsOK() const { return result.IsOK(); }
};

/// Returns the bytes of an image, from its first byte to the last byte of its last line.
///
/// These are the bytes that `ConvertImage` reads or writes: 3 a pixel for every 24-bit type, where
/// `PixelType::GetBufferSizeFor` counts 4 for the unpacked ones. Packed lines of one and a half or four and a half
/// bytes a pixel may end within a byte. Without padding the next line begins in the same byte; lines of the packed
/// extended types begin with a byte. A last line of YUV 4:1:1 of 2 more pixels than a multiple of four includes the V
/// that both pixels need. Any thread may call it at any time.
/// @param type  the pixel type
/// @param width, height  in pixels
/// @param lineSize  bytes from the beginning of a line to that of the next; 0 for lines without padding
/// @return empty for a type that is not registered, for a `lineSize` that is less than a line, and for a size that does
///   not fit `std::size_t`
LM_EXPORT std::optional<std::size_t> RequiredSize(PixelTypeID type, unsigned long width, unsigned long height,
                                                  std::size_t lineSize = 0);

/// Returns the significant bits of a sample, in whose steps black levels count: of YUV those of the colours that it
/// becomes, 8. Types of 1, 2 and 4 bits have 16, for their samples are widened. Any thread may call it at any time.
/// @param type  the pixel type
/// @return empty for a type that is not one of the library's own
LM_EXPORT std::optional<unsigned> SampleDepth(PixelTypeID type);

/// Checks its arguments and converts an image, or some of its lines. A call that is refused touches nothing. A call
/// that is accepted neither reads nor writes a byte outside the pixels of the two images.
///
/// The pixels are those of `PixelConverter::Convert`, by default at full depth. Pixels that it does not convert keep
/// their values: an odd last line of an interlaced image; the rest of a line that is less than a pair in YUV 4:2:2,
/// packed and two-tap layouts (packed GigE Vision and extended layouts convert it), or less than four pixels in
/// four-tap layouts; and the last pixel of a YUV 4:1:1 line that is one more than a multiple of four.
///
/// It refuses, beside buffers that are too small:
/// - images of different sizes, and images without a pixel
/// - images that overlap in memory
/// - a mosaic that becomes colour without a Bayer layout in the flags, or with several layouts or methods
/// - a mosaic of fewer than two columns or lines, or with a range of lines that does not begin and end between pairs
/// - flags that have no meaning for the source
/// - lines of more than 2 GiB; padding in images of `kDualLines`, and in interlaced images of odd height
/// - for an application's own converter: a range that does not begin at line 0, and a `lineSize` that is not a whole
///   number of pixels; for a chain that contains one: padding
///
/// It allocates no image. Chained conversions whose intermediate lines are longer than 6144 bytes allocate a few lines,
/// and so do mosaics that are demosaiced from more than their cells, or filtered before. Any number of threads may call
/// it at the same time; they share no lock while they convert.
/// @param source  the image to read; the caller keeps ownership
/// @param destination  the image to write; of the width and height of `source`, or with `ConversionFlags::kHalfSize`
///   of half of both, rounded down
/// @param options  the filter, flags, lines, depth and threads
/// @return the code, and a sentence for the user if the call was refused
LM_EXPORT ConversionResult ConvertImage(const ConstImageView& source, const ImageView& destination,
                                        const ConvertOptions& options = {});

}  // namespace LmImagingLib
