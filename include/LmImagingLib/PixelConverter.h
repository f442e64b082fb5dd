#pragma once

#include <atomic>
#include <cstddef>
#include <optional>

#include "LmBaseLib/Export.h"
#include "LmBaseLib/Result.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

class PixelType;
class RGBFilter;
class LibraryConverter;
struct ConverterStages;
struct PixelConverterInfo;

/// The bits of the flags argument of `PixelConverter::Convert`.
namespace ConversionFlags {
/// No flag: a progressive image; a mosaic begins with G R and is demosaiced in blocks.
inline constexpr unsigned long kNone = 0;
/// Interlaced sources: the second half of the buffer holds the even lines. Clear: the first half does.
inline constexpr unsigned long kFieldOrder = 0x01;
/// The colours of the top left 2 x 2 pixels of a Bayer mosaic, row by row. At most one is set; none of them means GR.
inline constexpr unsigned long kBayerGR = 0x10;  ///< G R / B G
inline constexpr unsigned long kBayerGB = 0x20;  ///< G B / R G
inline constexpr unsigned long kBayerRG = 0x40;  ///< R G / G B
inline constexpr unsigned long kBayerBG = 0x80;  ///< B G / G R
/// Demosaic each pixel from its 3 x 3 neighbourhood, and the pixels at the edges by cells. The greens of the sensor are
/// smoothed too, by the mean of five: fine detail is lost, and so is the difference between the two greens of a cell.
/// Without a method, a 2 x 2 cell makes four equal pixels. Of several methods, `kBilinear` wins over `kAdaptive`, and
/// that over `kGradientCorrected`. docs/demosaicing.md has the formulas of all.
inline constexpr unsigned long kBilinear = 0x100;
/// Demosaic by linear filters of 5 x 5 samples, which correct a mean by the curvature of the pixel's own colour:
/// H. Malvar, L. He, R. Cutler, High-quality linear interpolation for demosaicing of Bayer-patterned color images,
/// 2004. The image is mirrored about its edge pixels; lines read two above and below.
inline constexpr unsigned long kGradientCorrected = 0x200;
/// Demosaic along edges: green by the direction in which its neighbourhood changes less, the other colours by their
/// differences to green. The image is mirrored about its edge pixels; lines read eight above and below.
inline constexpr unsigned long kAdaptive = 0x400;
/// Destinations of more than 8 bits receive all the bits of the samples: a value v of S bits becomes v << (D - S) or
/// v >> (S - D) in a destination of D bits. Clear: samples are brought to their upper 8 bits first.
inline constexpr unsigned long kFullDepth = 0x800;
/// The filter is applied to the samples of a mosaic, each in the table of its own colour, before they are demosaiced,
/// and to nothing afterwards. Gains and curves then act on what the sensor measured, which keeps edges free of false
/// colours. Samples of S bits are looked up in tables of 1 << S entries, derived from those of the filter; to become 8
/// bits, they are looked up first. Without demosaicing and without a filter it changes nothing.
inline constexpr unsigned long kFilterFirst = 0x1000;
/// The fourth channel of destinations of 32 and 64 bits is all ones. Clear: it is 0.
inline constexpr unsigned long kOpaque = 0x2000;
/// YUV sources use all of 0 to 255 (ITU-T T.871, as JPEG files do). Clear: the studio range of 16 to 235 and 240.
inline constexpr unsigned long kFullRange = 0x4000;
/// YUV sources have the coefficients of ITU-R BT.709. Clear: those of ITU-R BT.601.
inline constexpr unsigned long kBT709 = 0x8000;
/// A mosaic that becomes colour, or gray by way of colour, has half the width and half the height: each 2 x 2 cell is
/// one pixel of its red, its blue and the mean of its greens, halves rounded up. Wins over every method. An odd last
/// line or column is left out. In `PixelConverter::Convert`, `pixelsPerLine` and `lines` count pixels and lines of the
/// destination, of which there may be half as many as the source has.
inline constexpr unsigned long kHalfSize = 0x10000;
/// A hint that changes no result: the destination will not be read soon, as in a ring of frames that go to a disk or
/// wait for a slower thread. It is stored past the caches where that is quick: memory is not read before it is written,
/// and the caches keep what they hold. Reading the destination right afterwards takes longer then. Images that the
/// caches cannot hold are stored in this way without the hint.
inline constexpr unsigned long kReadLater = 0x20000;
}  // namespace ConversionFlags

/// Converts images from one pixel type to another.
///
/// Converters are immutable and shared: any number of threads may convert with one object at the same time. A running
/// call keeps its state in the calling thread. A class of your own overrides at least `ConvertLine`, and is registered
/// with `PixelTypeFactory::RegisterPixelConverter`.
///
/// Nothing is checked: buffers must have the bytes that the geometry needs (`FindConversionExtent`). `unsigned long`
/// sizes count in 32 bits and wrap.
///
/// A process may exit while threads convert, and static objects may convert in their destructors: nothing that a
/// conversion uses is destroyed at exit. After `fork` the child process can convert.
class LM_EXPORT PixelConverter {
 public:
  /// @param sourcePixelByteSize, destinationPixelByteSize  bytes a pixel, from which the line sizes follow
  /// @param pixelsPerStep  pixels that the line conversion groups
  /// @param linesPerStep  lines that one `ConvertLine` reads and writes
  PixelConverter(const PixelTypeID& source, const PixelTypeID& destination, unsigned long sourcePixelByteSize,
                 unsigned long destinationPixelByteSize, unsigned long pixelsPerStep, unsigned long linesPerStep);
  PixelConverter(const PixelConverter&) = delete;
  PixelConverter& operator=(const PixelConverter&) = delete;
  virtual ~PixelConverter();

  /// The type of the images that it reads.
  virtual const PixelTypeID& GetSourceTypeID() const;
  /// The type of the images that it writes.
  virtual const PixelTypeID& GetDestinationTypeID() const;
  /// Bytes of a source line of `pixelCount` pixels.
  virtual unsigned long GetSourceLineSize(unsigned long pixelCount) const;
  /// Bytes a source pixel. Of packed layouts it is nominal; use `GetSourceLineSize` for the size of their lines.
  virtual unsigned long GetSourcePixelByteSize() const;
  /// Bytes of a destination line of `pixelCount` pixels, without padding. Of planar destinations: of one plane's line.
  virtual unsigned long GetDestinationLineSize(unsigned long pixelCount) const;
  /// Bytes a pixel of the destination; of planar destinations, in one plane.
  virtual unsigned long GetDestinationPixelByteSize() const;
  /// Pixels that the line conversion groups.
  virtual unsigned long GetPixelsPerStep() const;
  /// Lines that one `ConvertLine` reads and writes: 1, or 2 where a line needs the next.
  virtual unsigned long GetLinesPerStep() const;

  /// Converts a line left over when the line count is no multiple of `GetLinesPerStep`.
  /// @return `NOT_IMPLEMENTED` unless the class provides it
  virtual LmBaseLib::Result ConvertLastLine(const void* source, void* destination, unsigned long pixelCount) const;

  /// Converts an image, looking every colour value up in `filter`; otherwise as the overload without it.
  /// @param filter  null stands for the identity; not owned, and not to be changed during the call
  virtual LmBaseLib::Result Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                                    unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                                    unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                                    unsigned long flags, unsigned long destinationPadding, void** scratch,
                                    unsigned long* scratchSize) const;

  /// Converts an image.
  ///
  /// An odd last line of an interlaced source is not converted. Some layouts convert whole groups of pixels, and so
  /// read and write past the end of a line: packed GEV grayscale and packed 12-bit RGB one pixel at odd counts, YUV
  /// 4:1:1 up to two pixels at counts of 2 or 3 modulo 4. These extra pixels never replace a pixel of the picture.
  /// After the last line, and after the last plane, the buffers need room for them: `FindConversionExtent` reports the
  /// exact sizes.
  ///
  /// Throws `std::bad_alloc` if memory for the intermediate image of a chain, for the rows of a wide mosaic, or for a
  /// filter's derived tables cannot be had. The converter can be used again afterwards.
  ///
  /// @param sourceWidth  pixels of a source line
  /// @param sourceHeight  lines of the source
  /// @param destinationWidth  pixels of a destination line
  /// @param destinationHeight  lines of the destination; places the planes of planar destinations
  /// @param pixelsPerLine  pixels to convert in each line, at most both widths; with `kHalfSize`, of the destination
  /// @param lines  lines to convert; with `kHalfSize`, of the destination
  /// @param flags  bits of `ConversionFlags`
  /// @param destinationPadding  bytes between the end of a destination line and the next one
  /// @param scratch  a buffer for the intermediate image of a chained conversion, in and out: null, or one that an
  ///   earlier call handed back. It grows when it is too small. The caller frees it with delete[] of `unsigned char`.
  ///   Null for a buffer of the converter's own. Scratch memory that the library allocates begins as zeros.
  /// @param scratchSize  the size of `*scratch` in bytes, in and out; null as `scratch`
  /// @return `OK`, whatever the line conversions return
  virtual LmBaseLib::Result Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                                    void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                                    unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                                    unsigned long destinationPadding, void** scratch, unsigned long* scratchSize) const;

  /// Converts `GetLinesPerStep` lines. `Convert` calls it, after setting up the thread's state.
  /// @return `NOT_IMPLEMENTED` unless the class provides it
  virtual LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const;

  /// Converts one pixel.
  /// @return `NOT_IMPLEMENTED` unless the class provides it
  virtual LmBaseLib::Result ConvertPixel(const void* source, void* destination) const;

 private:
  friend class LibraryConverter;
  friend const LibraryConverter* AsLibraryConverter(const PixelConverter& converter);

  PixelConverterInfo* mInfo;
};

/// The geometry of a call of `PixelConverter::Convert`; its arguments of the same names.
struct ConversionGeometry {
  unsigned long sourceWidth = 0;                 ///< pixels of a source line
  unsigned long sourceHeight = 0;                ///< lines of the source
  unsigned long destinationWidth = 0;            ///< pixels of a destination line
  unsigned long destinationHeight = 0;           ///< lines of the destination
  unsigned long pixelsPerLine = 0;               ///< pixels to convert in each line
  unsigned long lines = 0;                       ///< lines to convert
  unsigned long flags = ConversionFlags::kNone;  ///< bits of `ConversionFlags`
  unsigned long destinationPadding = 0;          ///< bytes between the end of a destination line and the next one
};

/// The bytes that a conversion may touch, from the beginning of each buffer.
struct ConversionExtent {
  std::size_t source = 0;       ///< one past the last byte that is read
  std::size_t destination = 0;  ///< one past the last byte that is written
};

/// Reports the sizes that buffers need for `PixelConverter::Convert`, to the byte. Where groups of pixels pass the end
/// of the last line they are more than `PixelType::GetBufferSizeFor` returns. Any thread may call it at any time.
/// @param geometry  the arguments of the conversion
/// @return empty for an application's own converter, and for a chain that contains one
LM_EXPORT std::optional<ConversionExtent> FindConversionExtent(const PixelConverter& converter,
                                                               const ConversionGeometry& geometry);

/// Copies images of one pixel type byte for byte. Interlaced sources come out with their lines in order.
///
/// The registered type gives the size of a line. For an id that is not registered it is `pixelByteSize` bytes a pixel.
class LM_EXPORT IdentityConverter : public PixelConverter {
 public:
  /// @param pixelByteSize  bytes a pixel, for ids that are not registered
  IdentityConverter(const PixelTypeID& id, unsigned long pixelByteSize);
  ~IdentityConverter() override;

  unsigned long GetSourceLineSize(unsigned long pixelCount) const override;
  unsigned long GetDestinationLineSize(unsigned long pixelCount) const override;
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;
  LmBaseLib::Result ConvertPixel(const void* source, void* destination) const override;

 private:
  mutable std::atomic<const PixelType*> mType{nullptr};
};

/// Chains two converters through an intermediate image of the whole source.
///
/// A filter is applied in both stages. Without a scratch argument the chain uses a buffer of its own. A call that finds
/// it in use by another thread allocates a buffer for that call. Threads that share a chain at camera rate should
/// therefore pass a scratch buffer each.
class LM_EXPORT ComplexConverter : public PixelConverter {
 public:
  /// @param first, second  not owned; they must outlive the chain. The first one's destination is the second's source.
  ComplexConverter(const PixelConverter& first, const PixelConverter& second);
  ~ComplexConverter() override;

  unsigned long GetSourceLineSize(unsigned long pixelCount) const override;
  unsigned long GetDestinationLineSize(unsigned long pixelCount) const override;

  using PixelConverter::Convert;
  /// As `PixelConverter::Convert`; a first stage that fails ends the chain, and its result is returned.
  LmBaseLib::Result Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                            void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                            unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                            unsigned long destinationPadding, void** scratch,
                            unsigned long* scratchSize) const override;
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;
  LmBaseLib::Result ConvertPixel(const void* source, void* destination) const override;

 private:
  friend ConverterStages StagesOf(const PixelConverter& converter);
  class ScratchLease;

  mutable unsigned char* mScratch = nullptr;
  mutable unsigned long mScratchCapacity = 0;
  mutable std::atomic_flag mScratchInUse = ATOMIC_FLAG_INIT;
  const PixelConverter* mFirst;
  const PixelConverter* mSecond;
};

}  // namespace LmImagingLib
