#include "image/walk.h"

#include <algorithm>
#include <cstring>

#include "converters/line_converter.h"
#include "filter/default_filters.h"
#include "image/layout.h"
#include "walk/conversion_context.h"
#include "walk/streams.h"

namespace LmImagingLib {

namespace {

// Room for the group of pixels that the end of a line lies in, and for its pixels once they are converted.
constexpr std::size_t kGroupBytes = 16;
constexpr std::size_t kPlaneBytes = 16;

/// Converts the pixels of a line behind its whole groups, from and into buffers that hold a whole group.
class LineTail {
 public:
  LineTail(const PixelConverter& converter, const Source& groups, std::uint32_t width)
      : mConverter(converter),
        mPixels(width % groups.groupPixels),
        mWholePixels(width - mPixels),
        // A single pixel of 4:1:1 has no chroma, and stays.
        mStored(groups.groups == WholeGroups::kYuv411 && mPixels == 1 ? 0 : mPixels),
        mSourceOffset(std::size_t{mWholePixels} / groups.groupPixels * groups.groupBytes),
        mSourceBytes(static_cast<std::size_t>(LineBytesOf(groups, width)) - mSourceOffset),
        mPlanes((converter.GetDestinationTypeID() & kPlanarFlag) != 0 ? 3 : 1),
        mPixelBytes(converter.GetDestinationPixelByteSize()) {}

  std::uint32_t WholePixels() const { return mWholePixels; }

  void Convert(ConversionContext& context, const std::uint8_t* source, std::uint8_t* destination) const {
    std::uint8_t group[kGroupBytes] = {};
    std::uint8_t converted[3 * kPlaneBytes];
    std::memcpy(group, source + mSourceOffset, mSourceBytes);
    const ConversionContext frame = context;
    context.destinationStride = kPlaneBytes;
    context.destinationHeight = 1;
    mConverter.ConvertLine(group, converted, mPixels);
    context.destinationStride = frame.destinationStride;
    context.destinationHeight = frame.destinationHeight;
    const std::size_t plane = std::size_t{frame.destinationStride} * frame.destinationHeight;
    for (std::size_t k = 0; k < mPlanes; ++k) {
      std::memcpy(destination + k * plane + mWholePixels * mPixelBytes, converted + k * kPlaneBytes,
                  mStored * mPixelBytes);
    }
  }

 private:
  const PixelConverter& mConverter;
  std::uint32_t mPixels, mWholePixels, mStored;
  std::size_t mSourceOffset, mSourceBytes;
  std::size_t mPlanes, mPixelBytes;
};

/// Calls `convert` with the source and the destination of each step of lines.
template <class Convert>
void ForEachStep(const LineWalk& walk, bool interlaced, std::uint32_t step, ConversionContext& context,
                 Convert&& convert) {
  std::uint8_t* destination = walk.destination + (walk.first - walk.destinationFirst) * walk.destinationLine;
  for (std::uint32_t line = walk.first; line < walk.end; line += std::min(step, walk.end - line)) {
    context.currentLine = line;
    const std::uint8_t* const source = SourceLineAt(walk, interlaced, line);
    if (source != nullptr) convert(source, destination, walk.end - line < step);
    destination += step * walk.destinationLine;
  }
}

}  // namespace

const std::uint8_t* SourceLineAt(const LineWalk& walk, bool interlaced, std::uint32_t line) {
  if (!interlaced) return walk.source + (line - walk.sourceFirst) * walk.sourceLine;
  if (walk.height % 2 != 0 && line + 1 == walk.height) return nullptr;
  const bool swapped = (walk.flags & ConversionFlags::kFieldOrder) != 0;
  const bool secondField = (line % 2 != 0) != swapped;
  return walk.source + (secondField ? walk.sourceLine * walk.height / 2 : 0) + line / 2 * walk.sourceLine;
}

bool PassesLineEnd(const Source* groups, std::uint32_t width) {
  return groups != nullptr && groups->groups != WholeGroups::kInside && width % groups->groupPixels != 0;
}

void ConvertLines(const PixelConverter& converter, const Source* groups, const LineWalk& walk) {
  const ContextScope context;
  context->filter = walk.filter != nullptr ? walk.filter : &DefaultFilter(8);
  context->flags = static_cast<std::uint32_t>(walk.flags);
  context->sourceLineSize = static_cast<std::uint32_t>(walk.sourceLine);
  context->sourceHeight = walk.height;
  context->destinationStride = static_cast<std::uint32_t>(walk.destinationLine);
  context->destinationHeight = static_cast<std::uint32_t>(walk.destinationPlane);
  const StreamScope streams(*context, walk.end - walk.first);

  const bool interlaced = (converter.GetSourceTypeID() & kInterlacedFlag) != 0;
  if (PassesLineEnd(groups, walk.width)) {
    const LineTail tail(converter, *groups, walk.width);
    ForEachStep(walk, interlaced, 1, *context, [&](const std::uint8_t* source, std::uint8_t* destination, bool) {
      converter.ConvertLine(source, destination, tail.WholePixels());
      tail.Convert(*context, source, destination);
    });
  } else {
    const auto step = interlaced ? 1U : static_cast<std::uint32_t>(converter.GetLinesPerStep());
    ForEachStep(walk, interlaced, step, *context,
                [&](const std::uint8_t* source, std::uint8_t* destination, bool isRest) {
                  if (isRest) {
                    converter.ConvertLastLine(source, destination, walk.width);
                  } else {
                    converter.ConvertLine(source, destination, walk.width);
                  }
                });
  }
  context->filter = nullptr;
}

}  // namespace LmImagingLib
