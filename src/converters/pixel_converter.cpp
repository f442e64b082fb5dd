#include "LmImagingLib/PixelConverter.h"
#include "converters/converter_info.h"
#include "converters/library_converter.h"
#include "walk/lines.h"

namespace LmImagingLib {

using LmBaseLib::Result;

PixelConverter::PixelConverter(const PixelTypeID& source, const PixelTypeID& destination,
                               unsigned long sourcePixelByteSize, unsigned long destinationPixelByteSize,
                               unsigned long pixelsPerStep, unsigned long linesPerStep)
    : mInfo(new PixelConverterInfo{source, destination, U32(sourcePixelByteSize), U32(destinationPixelByteSize),
                                   U32(pixelsPerStep), U32(linesPerStep)}) {}

PixelConverter::~PixelConverter() {
  delete mInfo;
  mInfo = nullptr;
}

const PixelTypeID& PixelConverter::GetSourceTypeID() const { return mInfo->sourceTypeID; }

const PixelTypeID& PixelConverter::GetDestinationTypeID() const { return mInfo->destinationTypeID; }

unsigned long PixelConverter::GetSourceLineSize(unsigned long pixelCount) const {
  return U32(mInfo->sourcePixelByteSize * U32(pixelCount));
}

unsigned long PixelConverter::GetSourcePixelByteSize() const { return mInfo->sourcePixelByteSize; }

unsigned long PixelConverter::GetDestinationLineSize(unsigned long pixelCount) const {
  return U32(mInfo->destinationPixelByteSize * U32(pixelCount));
}

unsigned long PixelConverter::GetDestinationPixelByteSize() const { return mInfo->destinationPixelByteSize; }

unsigned long PixelConverter::GetPixelsPerStep() const { return mInfo->pixelsPerStep; }

unsigned long PixelConverter::GetLinesPerStep() const { return mInfo->linesPerStep; }

Result PixelConverter::ConvertLastLine(const void* /*source*/, void* /*destination*/,
                                       unsigned long /*pixelCount*/) const {
  return Result::NOT_IMPLEMENTED;
}

// The filter reaches the other overload through the thread, as a class that overrides that one may pass it on.
Result PixelConverter::Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                               unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                               unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                               unsigned long flags, unsigned long destinationPadding, void** scratch,
                               unsigned long* scratchSize) const {
  const FilterScope scope(filter);
  return Convert(source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight, pixelsPerLine,
                 lines, flags, destinationPadding, scratch, scratchSize);
}

// The results of the kernels are dropped: a frame succeeds even where a converter has no kernel.
Result PixelConverter::Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                               void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                               unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                               unsigned long destinationPadding, void** /*scratch*/,
                               unsigned long* /*scratchSize*/) const {
  const Frame frame = FrameOf(*this, source, sourceWidth, sourceHeight, destination, destinationWidth,
                              destinationHeight, pixelsPerLine, lines, flags, destinationPadding);
  FrameScope scope(frame);
  const std::uint32_t step = frame.interlaced ? 1 : U32(GetLinesPerStep());
  std::uint32_t rest = ForEachLine(frame, 0, U32(lines), step != 0 ? step : 1, [&](const FrameLine& line) {
    scope.SetLine(frame.interlaced ? line.index / 2 * 2 : line.index);
    ConvertLine(line.source, line.destination, pixelsPerLine);
  });
  for (; rest < U32(lines); ++rest) {
    scope.SetLine(rest);
    ConvertLastLine(SourceLineAt(frame, rest), DestinationLineAt(frame, rest), pixelsPerLine);
  }
  CurrentThread().filter = nullptr;
  return Result::OK;
}

Result PixelConverter::ConvertLine(const void* /*source*/, void* /*destination*/, unsigned long /*pixelCount*/) const {
  return Result::NOT_IMPLEMENTED;
}

Result PixelConverter::ConvertPixel(const void* /*source*/, void* /*destination*/) const {
  return Result::NOT_IMPLEMENTED;
}

}  // namespace LmImagingLib
