#include "converters/line_converter.h"

#include <algorithm>

#include "converters/lines_of_frame.h"
#include "filter/filter_tables.h"
#include "walk/lines.h"
#include "walk/streams.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

// Images are joined up to so many pixels: none of their sizes in bytes comes near 32 bits.
constexpr std::uint64_t kMostJoined = 1U << 28;

Frame FrameOf(unsigned long flags) {
  Frame frame;
  frame.flags = U32(flags);
  return frame;
}

}  // namespace

Fit FitOf(std::uint32_t depth, const Writer& writer, bool inFull) {
  if (!inFull) return {writer.eightBitShift, 0};
  return depth <= writer.depth ? Fit{writer.depth - depth, 0} : Fit{0, depth - writer.depth};
}

template <>
const LookupTables<std::uint8_t>* LookupOf(const Frame& frame, std::uint32_t /*depth*/, const Writer& /*writer*/) {
  return frame.filter == nullptr ? nullptr : TablesOf(*frame.filter).Lookup();
}
template <>
const LookupTables<std::uint16_t>* LookupOf(const Frame& frame, std::uint32_t depth, const Writer& writer) {
  if (frame.filter == nullptr) return nullptr;
  // Luma is summed at the depth of the samples.
  return TablesOf(*frame.filter).Lookup(depth, IsLuma(writer) ? depth : writer.depth);
}

LineConverter::LineConverter(const SourceType& source, const Writer& writer, const PixelTypeID& from,
                             const PixelTypeID& to)
    : LibraryConverter(from, to,
                       (source.format->groupBits / 8 + source.format->groupPixels - 1) / source.format->groupPixels,
                       writer.pixelBytes, 1, {source.format, writer.planes}),
      mSource(source),
      mWriter(writer),
      mShortcut(FindShortcut(source.format->name, writer)),
      mPlainWay(Lines<std::uint8_t>(*this, FrameOf(0)).Way()),
      mPlainWayOfWords(Lines<std::uint16_t>(*this, FrameOf(ConversionFlags::kFullDepth)).Way()),
      mJoins(source.readout.taps != Readout::Taps::kTwo && (from & kInterlacedFlag) == 0) {}

Result LineConverter::Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                              unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                              unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                              unsigned long flags, unsigned long destinationPadding, void** scratch,
                              unsigned long* scratchSize) const {
  // To describe a small image in a frame takes as long as to convert it. Most of them are whole, without a gap between
  // lines, and need none.
  const std::uint32_t width = U32(pixelsPerLine), height = U32(lines);
  const bool isPlain = filter == nullptr && U32(destinationPadding) == 0;
  const bool isWhole = U32(sourceWidth) == width && U32(destinationWidth) == width && U32(sourceHeight) == height &&
                       U32(destinationHeight) == height;
  if (mJoins && isPlain && isWhole && mSource.format->Rest(width) == 0) {
    const std::size_t pixels = std::size_t{width} * height;
    if (U32(flags) == 0 && ConvertSmall(mPlainWay, source, destination, pixels)) return Result::OK;
    if (U32(flags) == ConversionFlags::kFullDepth && HasFullWords() &&
        ConvertSmall(mPlainWayOfWords, source, destination, pixels)) {
      return Result::OK;
    }
  }
  return LibraryConverter::Convert(filter, source, sourceWidth, sourceHeight, destination, destinationWidth,
                                   destinationHeight, pixelsPerLine, lines, flags, destinationPadding, scratch,
                                   scratchSize);
}

// Converts a small image, of whole groups of pixels in each line.
// @return false, with nothing done, where it is not small or needs strips
template <class Sample>
[[gnu::flatten]] bool LineConverter::ConvertSmall(const PlainWay<Sample>& way, const void* source, void* destination,
                                                  std::size_t pixels) const {
  if (pixels > kMostJoined || !IsSmallImage(pixels * way.pixelBits / 8)) return false;
  // The groups of planar layouts are single pixels.
  SourceLines lines =
      mSource.Lines<Sample>(static_cast<const std::uint8_t*>(source), pixels * mSource.format->groupBits / 8, 0);
  lines.matrix = way.matrix;
  const std::size_t bytes = pixels * way.writer.pixelBytes;
  const TargetLine target{static_cast<std::uint8_t*>(destination), bytes, false, 0, way.fit};
  if (way.shortcut != nullptr) {
    way.shortcut->convert.Active()(lines, 0, pixels, &target, 0);
    return true;
  }
  const bool isAligned = reinterpret_cast<std::uintptr_t>(destination) % sizeof(Sample) == 0;
  if (way.decode == nullptr || !isAligned || !IsInOneGo(target.line, bytes)) return false;
  ConvertWithoutStrip<Sample>({way.decode->Active(), mSource.format->groupPixels, false, nullptr, way.writer}, lines,
                              pixels, target);
  return true;
}

void LineConverter::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  if (HasFullWords() && (frame.flags & ConversionFlags::kFullDepth) != 0) {
    Convert<std::uint16_t>(frame, first, end);
  } else {
    Convert<std::uint8_t>(frame, first, end);
  }
}

template <class Sample>
void LineConverter::Convert(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  Lines<Sample> lines(*this, frame);
  if (mSource.readout.taps == Readout::Taps::kTwo) {
    ForEachLine(frame, first, end, 1, [&](const FrameLine& line) { lines.ConvertTaps(line); });
  } else if (LinesJoin(frame, end - first)) {
    lines.ConvertPixels(SourceLineAt(frame, first), DestinationLineAt(frame, first),
                        std::size_t{frame.pixels} * (end - first));
  } else if (HasLastGroup(*mSource.format, frame.pixels)) {
    const LineTail tail(*mSource.format, frame, end);
    ForEachLine(frame, first, end, 1, [&](const FrameLine& line) { lines.ConvertWithTail(line, tail); });
  } else {
    const std::uint32_t pixels = frame.pixels - mSource.format->Rest(frame.pixels);
    const bool isRun =
        !frame.interlaced && end > first &&
        lines.ConvertRun(SourceLineAt(frame, first), DestinationLineAt(frame, first), pixels, end - first);
    if (isRun) return;
    ForEachLine(frame, first, end, 1,
                [&](const FrameLine& line) { lines.ConvertPixels(line.source, line.destination, pixels); });
  }
}

// Whether the lines may be converted as one long line: no gap separates them, and no group of pixels reaches from one
// into the next. The cost of a line beside its pixels matters to narrow images.
bool LineConverter::LinesJoin(const Frame& frame, std::uint32_t lines) const {
  const Format& format = *mSource.format;
  return lines > 1 && !frame.interlaced && format.Rest(frame.pixels) == 0 &&
         std::uint64_t{frame.pixels} * lines <= kMostJoined &&
         std::uint64_t{frame.pixels} * format.groupBits == std::uint64_t{frame.sourceLine} * 8 * format.groupPixels &&
         std::size_t{frame.pixels} * mWriter.pixelBytes == frame.destinationLine;
}

ConversionExtent LineConverter::ExtentOf(const Frame& frame, std::uint32_t lines) const {
  const Format& format = *mSource.format;
  const bool hasLast = HasLastGroup(format, frame.pixels);
  const LineTail tail(format, frame, lines);
  std::uint32_t pixels = frame.pixels - format.Rest(frame.pixels);
  if (mSource.readout.taps == Readout::Taps::kTwo) pixels = frame.pixels / 2 * 2;
  const std::size_t read =
      hasLast ? tail.BytesRead() : std::size_t{pixels} / format.groupPixels * (format.groupBits / 8);
  ConversionExtent extent;
  ForEachLastLine(frame, lines, [&](std::uint32_t line, std::size_t source, std::size_t destination) {
    if (read == 0) return;
    const std::size_t planes = format.Is(kPlanar) ? 2 * frame.SourcePlane() : 0;
    extent.source = std::max(extent.source, source + planes + read);
    const std::size_t stored = hasLast ? tail.BytesStored(line, mWriter) : std::size_t{pixels} * mWriter.pixelBytes;
    extent.destination =
        std::max(extent.destination, destination + (mWriter.planes - 1) * frame.DestinationPlane() + stored);
  });
  return extent;
}

}  // namespace LmImagingLib
