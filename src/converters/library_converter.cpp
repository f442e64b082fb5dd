#include "converters/library_converter.h"

#include "converters/converter_info.h"
#include "converters/demosaic_method.h"
#include "formats/source_type.h"
#include "walk/streams.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

// The members that all frames of a converter have in common.
Frame FrameOfTypes(PixelTypeID from, PixelTypeID to) {
  Frame frame;
  frame.interlaced = (from & kInterlacedFlag) != 0;
  frame.sourcePlanes = PlaneCount(from);
  frame.destinationPlanes = PlaneCount(to);
  return frame;
}

// The members that follow from the arguments of a conversion. The sizes of lines are there already.
void Describe(Frame& frame, const RGBFilter* filter, const void* source, unsigned long sourceWidth,
              unsigned long sourceHeight, void* destination, unsigned long destinationHeight,
              unsigned long pixelsPerLine, unsigned long lines, unsigned long flags) {
  frame.source = static_cast<const std::uint8_t*>(source);
  frame.sourceWidth = U32(sourceWidth);
  frame.sourceHeight = U32(sourceHeight);
  frame.secondField = U32(frame.sourceLine * frame.sourceHeight) / 2;
  frame.fieldLines = U32(lines) / 2 * 2;
  frame.destination = static_cast<std::uint8_t*>(destination);
  frame.destinationHeight = U32(destinationHeight);
  frame.pixels = U32(pixelsPerLine);
  frame.flags = U32((flags & kLayoutFlags) == 0 ? flags | ConversionFlags::kBayerGR : flags);
  frame.filter = filter;
}

}  // namespace

LibraryConverter::LibraryConverter(const PixelTypeID& from, const PixelTypeID& to, std::uint32_t sourcePixelBytes,
                                   std::uint32_t destinationPixelBytes, std::uint32_t pixelsPerStep,
                                   const ConverterTraits& traits)
    : PixelConverter(from, to, sourcePixelBytes, destinationPixelBytes, pixelsPerStep, 1),
      mTraits(traits),
      mFrame(FrameOfTypes(from, to)),
      mHalfBytes(traits.format != nullptr && traits.format->groups != WholeGroups::kExact
                     ? HalfBytesOfPixel(*traits.format)
                     : 0) {
  mInfo->library = this;
}

unsigned long LibraryConverter::GetSourceLineSize(unsigned long pixelCount) const {
  if (mHalfBytes != 0) return U32(mHalfBytes * U32(pixelCount)) / 2;  // without the division by the pixels of a group
  if (mTraits.format == nullptr) return U32(mInfo->sourcePixelByteSize * U32(pixelCount));
  return DenseLineBytes(*mTraits.format, U32(pixelCount));
}

Result LibraryConverter::Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                                 unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                                 unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                                 unsigned long flags, unsigned long destinationPadding, void** /*scratch*/,
                                 unsigned long* /*scratchSize*/) const {
  // Small images take less time than calls of virtual functions for what is known.
  Frame frame = mFrame;
  frame.sourceLine = LibraryConverter::GetSourceLineSize(sourceWidth);
  frame.destinationLine = U32(mInfo->destinationPixelByteSize * U32(destinationWidth) + destinationPadding);
  Describe(frame, filter, source, sourceWidth, sourceHeight, destination, destinationHeight, pixelsPerLine, lines,
           flags);
  const StreamScope streams(frame, U32(lines));
  ConvertLines(frame, 0, U32(lines));
  return Result::OK;
}

Result LibraryConverter::Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                                 void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                                 unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                                 unsigned long destinationPadding, void** scratch, unsigned long* scratchSize) const {
  const RGBFilter*& filter = CurrentThread().filter;
  LibraryConverter::Convert(filter, source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight,
                            pixelsPerLine, lines, flags, destinationPadding, scratch, scratchSize);
  filter = nullptr;
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
  Frame frame = FrameOfTypes(converter.GetSourceTypeID(), converter.GetDestinationTypeID());
  frame.sourceLine = U32(converter.GetSourceLineSize(sourceWidth));
  frame.destinationLine = U32(converter.GetDestinationLineSize(destinationWidth) + destinationPadding);
  Describe(frame, CurrentThread().filter, source, sourceWidth, sourceHeight, destination, destinationHeight,
           pixelsPerLine, lines, flags);
  return frame;
}

const LibraryConverter* AsLibraryConverter(const PixelConverter& converter) { return converter.mInfo->library; }

}  // namespace LmImagingLib
