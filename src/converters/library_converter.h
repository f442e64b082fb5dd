#pragma once

#include <cstdint>

#include "LmImagingLib/PixelConverter.h"
#include "formats/format.h"
#include "walk/frame.h"

namespace LmImagingLib {

struct SourceType;

/// Sizes and numbers of pixels as frames count them: in 32 bits, on systems with a longer `unsigned long`, too.
constexpr std::uint32_t U32(std::uint64_t value) { return static_cast<std::uint32_t>(value); }

/// The facts of a converter that its callers plan with.
struct ConverterTraits {
  const Format* format = nullptr;  ///< how source pixels are grouped; null for pixels of whole bytes
  std::uint32_t destinationPlanes = 1;
  bool demosaics = false;     ///< whether it needs 2 x 2 pixels, and converts pairs of lines
  bool pairsOfLines = false;  ///< whether samples of two source lines alternate, so that no padding separates lines
};

/// A converter of the library's own: it converts lines of a frame that its caller describes, and needs nothing from the
/// thread that it runs in.
class LibraryConverter : public PixelConverter {
 public:
  LmBaseLib::Result Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                            unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                            unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                            unsigned long flags, unsigned long destinationPadding, void** scratch,
                            unsigned long* scratchSize) const override;
  /// Converts with the filter that a converter of an application passes on through the thread.
  LmBaseLib::Result Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                            void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                            unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                            unsigned long destinationPadding, void** scratch,
                            unsigned long* scratchSize) const override;
  /// Converts a line that a converter of an application hands on, in its frame.
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;

  unsigned long GetSourceLineSize(unsigned long pixelCount) const override;

  /// Converts lines `first` to `end`.
  virtual void ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const = 0;

  /// The bytes that `ConvertLines` touches from the first byte of the image on, for its first lines.
  virtual ConversionExtent ExtentOf(const Frame& frame, std::uint32_t lines) const = 0;

  /// Lines above and below the ones to convert that a conversion with these flags reads.
  virtual std::uint32_t Reach(std::uint32_t /*flags*/) const { return 0; }
  /// Source lines that become a line: 1, or 2 where the destination has half the size.
  virtual std::uint32_t SourceLinesPerLine(std::uint32_t /*flags*/) const { return 1; }

  /// The type whose samples, brought to 8 bits, are the image that it writes; null of any other converter.
  virtual const SourceType* Rows() const { return nullptr; }
  /// Converts lines of a mosaic of another type, as if its samples were brought to 8 bits before.
  /// @return false, with nothing done, of a converter that reads no mosaic of 8 bits
  virtual bool ConvertRows(const SourceType& /*mosaic*/, const Frame& /*frame*/, std::uint32_t /*first*/,
                           std::uint32_t /*end*/) const {
    return false;
  }

  const ConverterTraits& Traits() const { return mTraits; }

 protected:
  LibraryConverter(const PixelTypeID& from, const PixelTypeID& to, std::uint32_t sourcePixelBytes,
                   std::uint32_t destinationPixelBytes, std::uint32_t pixelsPerStep, const ConverterTraits& traits);

  /// The frame for lines that a converter of an application hands on: the thread's, moved to those lines.
  static Frame HandedLines(const void* source, void* destination, unsigned long pixelCount, std::uint32_t& line);

 private:
  const ConverterTraits mTraits;
  const Frame mFrame;              // what the frames of all its conversions have in common
  const std::uint32_t mHalfBytes;  // of a source pixel, as lines are counted; 0 of layouts that have no such number
};

/// The frame that the arguments of `PixelConverter::Convert` describe.
Frame FrameOf(const PixelConverter& converter, const void* source, unsigned long sourceWidth,
              unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
              unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
              unsigned long destinationPadding);

/// The extent of conversions that read and write so many bytes of each line.
ConversionExtent ExtentOfLines(const Frame& frame, std::uint32_t lines, std::size_t lineBytes);

/// The converter itself if it is one of the library's own, else null.
const LibraryConverter* AsLibraryConverter(const PixelConverter& converter);

}  // namespace LmImagingLib
