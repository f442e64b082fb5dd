#pragma once

#include "converters/demosaicer.h"
#include "converters/library_converter.h"
#include "formats/source_type.h"
#include "formats/writers.h"

namespace LmImagingLib {

/// Turns a colour mosaic into colour, two lines at a time.
///
/// The layout of the mosaic and the method come with the flags of the conversion. By blocks and bilinearly an odd last
/// line is made of the cells that it forms with the line above. An image of a single line or column has no cell and
/// stays. Of conversions to half the size, pixels and lines are those of the destination.
class BayerConverter : public LibraryConverter {
 public:
  BayerConverter(const SourceType& source, const Writer& writer, const PixelTypeID& from, const PixelTypeID& to);

  unsigned long GetLinesPerStep() const override;
  /// @return `NOT_IMPLEMENTED` where no line is above
  LmBaseLib::Result ConvertLastLine(const void* source, void* destination, unsigned long pixelCount) const override;
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;

  void ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const override;
  ConversionExtent ExtentOf(const Frame& frame, std::uint32_t lines) const override;
  bool ConvertRows(const SourceType& mosaic, const Frame& frame, std::uint32_t first, std::uint32_t end) const override;
  std::uint32_t Reach(std::uint32_t flags) const override;
  std::uint32_t SourceLinesPerLine(std::uint32_t flags) const override;

 private:
  static Frame RowsOf(Frame frame);
  static bool ConvertsNothing(const Frame& frame, std::uint32_t lines);
  std::uint32_t RowWidth(const Frame& frame) const;
  template <class Sample>
  void Convert(const SourceType& source, const Frame& frame, std::uint32_t width, std::uint32_t first,
               std::uint32_t end) const;

  const SourceType mSource;
  const Writer& mWriter;
  const MosaicShortcuts mShortcuts;
};

}  // namespace LmImagingLib
