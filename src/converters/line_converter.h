#pragma once

#include "converters/library_converter.h"
#include "formats/source_type.h"
#include "formats/writers.h"
#include "walk/strips.h"

namespace LmImagingLib {

/// Converts line by line from a source layout to a writer's. Samples of a two-tap readout are put in order; an odd last
/// pixel of such a line has no partner and is not converted.
class LineConverter : public LibraryConverter {
 public:
  LineConverter(const SourceType& source, const Writer& writer, const PixelTypeID& from, const PixelTypeID& to);

  using LibraryConverter::Convert;
  LmBaseLib::Result Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                            unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                            unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                            unsigned long flags, unsigned long destinationPadding, void** scratch,
                            unsigned long* scratchSize) const override;
  void ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const override;
  ConversionExtent ExtentOf(const Frame& frame, std::uint32_t lines) const override;

  const SourceType* Rows() const override {
    return mWriter.isPlain && mWriter.depth == 8 && mWriter.planes == 1 ? &mSource : nullptr;
  }

 private:
  template <class Sample>
  class Lines;
  // How lines become samples without a filter: by a shortcut, or by a decoder that needs no strip. Of other ways both
  // are null. No flag is set but `kFullDepth`, of words.
  template <class Sample>
  struct PlainWay {
    const Shortcut* shortcut;
    const Twins<DecodeKernel<Sample>>* decode;
    const Writer& writer;
    Fit fit;
    const YuvMatrix* matrix;
    std::size_t pixelBits;  // of source and destination together
  };

  template <class Sample>
  bool ConvertSmall(const PlainWay<Sample>& way, const void* source, void* destination, std::size_t pixels) const;
  template <class Sample>
  void Convert(const Frame& frame, std::uint32_t first, std::uint32_t end) const;
  bool LinesJoin(const Frame& frame, std::uint32_t lines) const;
  // Whether all bits of words are kept where they are asked for.
  bool HasFullWords() const { return HasWords(mSource) && mWriter.depth > 8; }

  const SourceType mSource;
  const Writer& mWriter;
  const Shortcut* mShortcut;
  const PlainWay<std::uint8_t> mPlainWay;
  const PlainWay<std::uint16_t> mPlainWayOfWords;
  const bool mJoins;  // whether lines without a gap between them are one long line
};

/// The lookup of a conversion from samples of `depth` bits, or null where nothing changes them.
template <class Sample>
const LookupTables<Sample>* LookupOf(const Frame& frame, std::uint32_t depth, const Writer& writer);
template <>
const LookupTables<std::uint8_t>* LookupOf(const Frame& frame, std::uint32_t depth, const Writer& writer);
template <>
const LookupTables<std::uint16_t>* LookupOf(const Frame& frame, std::uint32_t depth, const Writer& writer);

/// The shift from samples of `depth` bits to those of a writer: as bytes, for conversions that reduce colours to 8
/// bits, or in full.
Fit FitOf(std::uint32_t depth, const Writer& writer, bool inFull);

/// Where the pixels of a writer's line go.
inline TargetLine TargetAt(std::uint8_t* line, const Frame& frame, const Fit& fit, const Writer& writer) {
  const bool hasFourth = writer.pixelBytes == 4 || writer.pixelBytes == 8;
  return {line,          frame.DestinationPlane(),
          frame.streams, frame.streams ? 0 : frame.fetchAhead,
          fit,           hasFourth && (frame.flags & ConversionFlags::kOpaque) != 0};
}

}  // namespace LmImagingLib
