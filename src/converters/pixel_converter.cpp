#include <cstdint>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/RGBFilter.h"
#include "converters/converter_info.h"
#include "filter/default_filters.h"
#include "walk/conversion_context.h"
#include "walk/streams.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

constexpr std::uint32_t U32(unsigned long value) { return static_cast<std::uint32_t>(value); }

constexpr unsigned long kBayerLayouts =
    ConversionFlags::kBayerGR | ConversionFlags::kBayerGB | ConversionFlags::kBayerRG | ConversionFlags::kBayerBG;

std::uint32_t NormalizedFlags(unsigned long flags) {
  return U32((flags & kBayerLayouts) == 0 ? flags | ConversionFlags::kBayerGR : flags);
}

// Asked for every image without a filter, so the registry, where all threads meet, is asked only until it knows the
// type. Types are never removed.
const RGBFilter& DefaultFilterOf(PixelConverterInfo& info, const PixelTypeID& source) {
  const RGBFilter* const known = info.defaultFilter.load(std::memory_order_acquire);
  if (known != nullptr && source == info.sourceTypeID) return *known;
  const PixelType* const type = PixelTypeFactory::FindPixelType(source);
  if (type == nullptr) return DefaultFilter(16);
  const RGBFilter& filter = DefaultFilter(type->GetPixelBitSize());
  if (source == info.sourceTypeID) info.defaultFilter.store(&filter, std::memory_order_release);
  return filter;
}

// A walk over the lines of a source and a destination.
struct Lines {
  const unsigned char* source;
  unsigned char* destination;
  std::size_t sourceAdvance;
  std::size_t destinationAdvance;
};

// The results of the kernels are dropped throughout: a frame succeeds even where a converter has no kernel.
void ConvertSteps(const PixelConverter& converter, ConversionContext& context, Lines& lines,
                  unsigned long pixelsPerLine, std::uint32_t wholeLines, std::uint32_t step) {
  for (std::uint32_t line = 0; line < wholeLines; line += step) {
    context.currentLine = line;
    converter.ConvertLine(lines.source, lines.destination, pixelsPerLine);
    lines.source += lines.sourceAdvance;
    lines.destination += lines.destinationAdvance;
  }
}

// Images are joined up to so many pixels: none of their sizes in bytes comes near 32 bits.
constexpr std::uint64_t kMostJoined = 1U << 28;

// Whether the image may be converted as one long line: no gap lies between its lines, and no group of pixels reaches
// from one into the next. What a line costs beside its pixels, narrow images would feel most.
bool LinesJoin(const PixelConverterInfo& info, const PixelConverter& converter, const ConversionContext& context,
               std::uint32_t pixelsPerLine, std::uint32_t lines) {
  return lines != 0 && info.joinedGroup != 0 && pixelsPerLine % info.joinedGroup == 0 &&
         std::uint64_t{pixelsPerLine} * lines <= kMostJoined &&
         converter.GetSourceLineSize(pixelsPerLine) == context.sourceLineSize &&
         converter.GetDestinationLineSize(pixelsPerLine) == context.destinationStride;
}

}  // namespace

PixelConverter::PixelConverter(const PixelTypeID& source, const PixelTypeID& destination,
                               unsigned long sourcePixelByteSize, unsigned long destinationPixelByteSize,
                               unsigned long pixelsPerStep, unsigned long linesPerStep)
    : mInfo(new PixelConverterInfo{source, destination, U32(sourcePixelByteSize), U32(destinationPixelByteSize),
                                   U32(pixelsPerStep), U32(linesPerStep), 0}) {}

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

Result PixelConverter::Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                               unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                               unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                               unsigned long flags, unsigned long destinationPadding, void** scratch,
                               unsigned long* scratchSize) const {
  const ContextScope context;
  context->filter = filter;
  return Convert(source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight, pixelsPerLine,
                 lines, flags, destinationPadding, scratch, scratchSize);
}

Result PixelConverter::Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                               void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                               unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                               unsigned long destinationPadding, void** /*scratch*/,
                               unsigned long* /*scratchSize*/) const {
  const ContextScope context;
  if (context->filter == nullptr) context->filter = &DefaultFilterOf(*mInfo, GetSourceTypeID());
  context->flags = NormalizedFlags(flags);
  context->sourceLineSize = U32(GetSourceLineSize(sourceWidth));
  context->sourceHeight = U32(sourceHeight);
  context->destinationStride = U32(GetDestinationLineSize(destinationWidth) + destinationPadding);
  context->destinationHeight = U32(destinationHeight);

  const StreamScope streams(*context, U32(lines));
  context->frame = this;
  context->narrowRows.Forget();

  const bool interlaced = (GetSourceTypeID() & kInterlacedFlag) != 0;
  const std::size_t sourceLine = context->sourceLineSize;
  const std::size_t destinationLine = context->destinationStride;
  const std::uint32_t step = interlaced ? 2 : U32(GetLinesPerStep());
  const std::uint32_t lineCount = U32(lines);
  const std::uint32_t wholeLines = lineCount - lineCount % step;
  const auto* const firstField = static_cast<const unsigned char*>(source);
  auto* const target = static_cast<unsigned char*>(destination);

  if (interlaced) {
    // The halves of the buffer interleave. An odd last line belongs to no pair of fields and is left alone.
    const auto* const secondField = firstField + U32(context->sourceLineSize * context->sourceHeight) / 2;
    const bool swapped = (context->flags & ConversionFlags::kFieldOrder) != 0;
    Lines even{swapped ? secondField : firstField, target, sourceLine, 2 * destinationLine};
    ConvertSteps(*this, *context, even, pixelsPerLine, wholeLines, step);
    Lines odd{swapped ? firstField : secondField, target + destinationLine, sourceLine, 2 * destinationLine};
    ConvertSteps(*this, *context, odd, pixelsPerLine, wholeLines, step);
  } else if (LinesJoin(*mInfo, *this, *context, U32(pixelsPerLine), lineCount)) {
    context->currentLine = 0;
    ConvertLine(source, destination, U32(pixelsPerLine) * lineCount);
  } else {
    Lines walk{firstField, target, sourceLine * step, destinationLine * step};
    ConvertSteps(*this, *context, walk, pixelsPerLine, wholeLines, step);
    for (std::uint32_t line = wholeLines; line < lineCount; ++line) {
      context->currentLine = line;
      ConvertLastLine(walk.source, walk.destination, pixelsPerLine);
      walk.source += sourceLine;
      walk.destination += destinationLine;
    }
  }
  context->frame = nullptr;
  context->filter = nullptr;
  return Result::OK;
}

Result PixelConverter::ConvertLine(const void* /*source*/, void* /*destination*/, unsigned long /*pixelCount*/) const {
  return Result::NOT_IMPLEMENTED;
}

Result PixelConverter::ConvertPixel(const void* /*source*/, void* /*destination*/) const {
  return Result::NOT_IMPLEMENTED;
}

}  // namespace LmImagingLib
