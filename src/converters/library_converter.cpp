#include "converters/library_converter.h"

#include "converters/converter_info.h"
#include "converters/demosaic_method.h"
#include "walk/streams.h"

namespace LmImagingLib {

using LmBaseLib::Result;

LibraryConverter::LibraryConverter(const PixelTypeID& from, const PixelTypeID& to, std::uint32_t sourcePixelBytes,
                                   std::uint32_t destinationPixelBytes, std::uint32_t pixelsPerStep,
                                   const ConverterTraits& traits)
    : PixelConverter(from, to, sourcePixelBytes, destinationPixelBytes, pixelsPerStep, 1), mTraits(traits) {
  mInfo->library = this;
}

Result LibraryConverter::Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                                 void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                                 unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                                 unsigned long destinationPadding, void** /*scratch*/,
                                 unsigned long* /*scratchSize*/) const {
  Frame frame = FrameOf(*this, source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight,
                        pixelsPerLine, lines, flags, destinationPadding);
  const auto lineCount = static_cast<std::uint32_t>(lines);
  const StreamScope streams(frame, lineCount);
  ConvertLines(frame, 0, lineCount);
  CurrentThread().filter = nullptr;
  return Result::OK;
}

Result LibraryConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  std::uint32_t line = 0;
  const Frame frame = HandedLines(source, destination, pixelCount, line);
  ConvertLines(frame, line, line + 1);
  return Result::OK;
}

Frame LibraryConverter::HandedLines(const void* source, void* destination, unsigned long pixelCount,
                                    std::uint32_t& line) {
  const ThreadState& thread = CurrentThread();
  Frame frame;
  if (thread.frame != nullptr) frame = *thread.frame;
  line = thread.line;
  frame.source = static_cast<const std::uint8_t*>(source);
  frame.sourceFirst = frame.destinationFirst = line;
  frame.destination = static_cast<std::uint8_t*>(destination);
  frame.pixels = static_cast<std::uint32_t>(pixelCount);
  frame.interlaced = false;  // whoever hands it on has found the line
  return frame;
}

Frame FrameOf(const PixelConverter& converter, const void* source, unsigned long sourceWidth,
              unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
              unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
              unsigned long destinationPadding) {
  const PixelTypeID from = converter.GetSourceTypeID();
  Frame frame;
  frame.source = static_cast<const std::uint8_t*>(source);
  frame.sourceLine = U32(converter.GetSourceLineSize(sourceWidth));
  frame.sourceWidth = U32(sourceWidth);
  frame.sourceHeight = U32(sourceHeight);
  frame.interlaced = (from & kInterlacedFlag) != 0;
  frame.secondField = U32(frame.sourceLine * frame.sourceHeight) / 2;
  frame.fieldLines = U32(lines) / 2 * 2;
  frame.destination = static_cast<std::uint8_t*>(destination);
  frame.destinationLine = U32(converter.GetDestinationLineSize(destinationWidth) + destinationPadding);
  frame.destinationHeight = U32(destinationHeight);
  frame.sourcePlanes = PlaneCount(from);
  frame.destinationPlanes = PlaneCount(converter.GetDestinationTypeID());
  frame.pixels = U32(pixelsPerLine);
  frame.flags = U32((flags & kLayoutFlags) == 0 ? flags | ConversionFlags::kBayerGR : flags);
  frame.filter = CurrentThread().filter;
  return frame;
}

const LibraryConverter* AsLibraryConverter(const PixelConverter& converter) { return converter.mInfo->library; }

}  // namespace LmImagingLib
