#include <algorithm>

#include "converters/chain.h"
#include "converters/identity.h"
#include "converters/library_converter.h"
#include "walk/lines.h"

namespace LmImagingLib {

ConversionExtent ExtentOfLines(const Frame& frame, std::uint32_t lines, std::size_t lineBytes) {
  ConversionExtent extent;
  if (lineBytes == 0) return extent;
  ForEachLastLine(frame, lines, [&](std::uint32_t /*line*/, std::size_t source, std::size_t destination) {
    extent.source = std::max(extent.source, source + lineBytes);
    extent.destination = std::max(extent.destination, destination + lineBytes);
  });
  return extent;
}

std::optional<ConversionExtent> FindConversionExtent(const PixelConverter& converter,
                                                     const ConversionGeometry& geometry) {
  const auto lines = static_cast<std::uint32_t>(geometry.lines);
  Frame frame = FrameOf(converter, nullptr, geometry.sourceWidth, geometry.sourceHeight, nullptr,
                        geometry.destinationWidth, geometry.destinationHeight, geometry.pixelsPerLine, geometry.lines,
                        geometry.flags, geometry.destinationPadding);
  if (IsIdentity(converter)) return ExtentOfLines(frame, lines, converter.GetSourceLineSize(geometry.pixelsPerLine));
  const ConverterStages stages = StagesOf(converter);
  const LibraryConverter* const first = AsLibraryConverter(stages.first);
  if (first == nullptr) return std::nullopt;
  if (stages.second == nullptr) return first->ExtentOf(frame, lines);
  const LibraryConverter* const second = AsLibraryConverter(*stages.second);
  if (second == nullptr) return std::nullopt;
  // The first stage converts the whole source, and the second one only the lines and pixels of the call.
  Frame whole = frame;
  whole.pixels = frame.sourceWidth;
  whole.fieldLines = frame.sourceHeight / 2 * 2;
  whole.destinationLine = first->GetDestinationLineSize(geometry.sourceWidth);
  whole.destinationHeight = frame.sourceHeight;
  frame.interlaced = false;
  return ConversionExtent{first->ExtentOf(whole, frame.sourceHeight).source,
                          second->ExtentOf(frame, lines).destination};
}

}  // namespace LmImagingLib
