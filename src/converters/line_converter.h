#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "converters/writers.h"
#include "simd/kernel.h"
#include "walk/conversion_context.h"
#include "walk/strips.h"

namespace LmImagingLib {

/// Which pixels of a line a source layout converts.
enum class WholeGroups {
  kInside,  ///< the groups that fit into the line
  kCover,   ///< the groups that cover the line: the last one may reach past it
  kYuv411,  ///< the groups that begin in the line, but a single pixel behind the last whole group begins none
};

/// What else a line converter needs to know of a source layout.
enum SourceTraits : unsigned {
  kGray = 1,    ///< all channels are equal, and never filtered
  kPlanar = 2,  ///< three planes; a group lies in each of them
  kPlain = 4,   ///< channels are plain bytes, and not decoded but handed on
};

/// A way from a source to one writer that needs no strip, for conversions that look nothing up.
struct Shortcut {
  const Writer* writer;
  Twins<DirectKernel> convert;
};

/// A source layout: how its samples are decoded, and how they lie.
struct Source {
  Twins<DecodeKernel> decode;
  std::uint32_t groupPixels;  ///< pixels that are stored together
  std::uint32_t groupBytes;   ///< the bytes that they take
  WholeGroups groups = WholeGroups::kInside;
  unsigned traits = 0;  ///< bits of `SourceTraits`
  const Shortcut* shortcuts = nullptr;
  std::size_t shortcutCount = 0;
};

/// Converts line by line from a source layout to a writer's.
class LineConverter : public PixelConverter {
 public:
  /// @param shift  right shift that brings a sample to 8 bits; of use to layouts of wider samples. Its low 5 bits
  /// count.
  /// @param linesJoin  whether pixels depend on nothing but their group, so that lines may be converted as one
  LineConverter(const Source& source, const Writer& writer, const PixelTypeID& from, const PixelTypeID& to,
                unsigned long shift, bool linesJoin = true);

  unsigned long GetSourceLineSize(unsigned long pixelCount) const override;
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;

  const Source& SourceLayout() const { return mSource; }

 protected:
  StripSteps Steps(const ConversionContext& context) const;
  SourceLines LinesAt(const void* source, const ConversionContext& context) const;

 private:
  const Source& mSource;
  const Writer& mWriter;
  const Shortcut* mShortcut;
  std::uint32_t mSampleShift;
};

/// What the conversion looks colours up in, or null where nothing changes them.
const LookupTables* LookupOf(const ConversionContext& context);

/// Where the pixels of a writer's line go.
inline TargetLine TargetAt(void* line, const ConversionContext& context) {
  return {static_cast<std::uint8_t*>(line), std::size_t{context.destinationStride} * context.destinationHeight,
          context.streams};
}

/// A line converter as a class of its source layout and writer: the converter families are names for these.
template <const Source& kSource, class Output>
class LineTo : public LineConverter {
 public:
  LineTo(const PixelTypeID& from, const PixelTypeID& to, unsigned long shift = 0)
      : LineConverter(kSource, Output::kWriter, from, to, shift) {}
};

}  // namespace LmImagingLib
