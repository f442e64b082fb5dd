#include "converters/line_converter.h"

#include <algorithm>
#include <cstring>

#include "converters/line_tail.h"
#include "filter/filter_tables.h"
#include "formats/yuv_matrices.h"
#include "walk/lines.h"
#include "walk/streams.h"
#include "walk/tap_strips.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

// Images are joined up to so many pixels: none of their sizes in bytes comes near 32 bits.
constexpr std::uint64_t kMostJoined = 1U << 28;

// Bytes of an image that second-level caches mostly hold. Fetching its lines from there makes kernels that do little
// but move samples take an eighth longer.
constexpr std::size_t kMostInSecondCache = 5U << 18;

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

/// The lines of a frame, decoded into bytes or into words.
template <class Sample>
class LineConverter::Lines {
 public:
  Lines(const LineConverter& converter, const Frame& frame)
      : mConverter(converter),
        mFrame(frame),
        mInFull(converter.mWriter.depth > 8 && (frame.flags & ConversionFlags::kFullDepth) != 0),
        mMatrix(MatrixOf(frame.flags, IsLuma(converter.mWriter))),
        mSteps{Decoder().Active(), Format().groupPixels, IsPlain(), nullptr, StoredBy()},
        mLines(LinesAt(frame.source)),
        mTarget(TargetAt(frame.destination, frame,
                         FitOf(sizeof(Sample) == 1 ? 8 : converter.mSource.depth, converter.mWriter, mInFull),
                         mSteps.writer)) {
    if (!Format().Is(kGray)) FindTables(frame);
    mNeedsNoStrip = NeedsNoStrip(mSteps, mTarget);
    if (FitsShortcut() && mSteps.tables == nullptr && mSteps.widening == nullptr && !IsByMatrix() && !mTarget.opaque) {
      mShortcut = converter.mShortcut;
    }
    // Other shortcuts than those of YUV and to luma only move bytes. Fetching never slowed those to planes down.
    const bool moves = mShortcut != nullptr && Format().decodeByMatrix.of[0] == nullptr && !IsLuma(mSteps.writer) &&
                       mSteps.writer.planes == 1;
    if (!FetchesLines() || (moves && !frame.fetchesMoves)) mLines.ahead = mTarget.ahead = 0;
  }

  void ConvertPixels(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels) {
    // All else is the same for each line, and is not copied: a copy would have to wait for what was just stored.
    mConverter.mSource.MoveTo(source, mFrame.SourcePlane(), mLines);
    mTarget.line = destination;
    if (mShortcut != nullptr) {
      ConvertDirectly(mShortcut->convert.Active(), mSteps.groupPixels, mSteps.writer, mLines, pixels, &mTarget, 0);
    } else if (mNeedsNoStrip && IsInOneGo(destination, pixels * mSteps.writer.pixelBytes) &&
               reinterpret_cast<std::uintptr_t>(destination) % sizeof(Sample) == 0) {
      ConvertWithoutStrip(mSteps, mLines, pixels, mTarget);
    } else {
      ConvertStrips(mSteps, mLines, pixels, &mTarget, 1, 0);
    }
  }

  PlainWay Way() const {
    const Writer& writer = mSteps.writer;
    const std::size_t sourceBits = Format().groupBits / Format().groupPixels * (Format().Is(kPlanar) ? 3 : 1);
    return {mShortcut, mNeedsNoStrip ? &Decoder() : nullptr,
            writer,    mTarget.fit,
            mMatrix,   sourceBits + std::size_t{8} * writer.pixelBytes * writer.planes};
  }

  // Converts lines at equal distances by one call of a kernel.
  // @return false, with nothing done, where each line needs a call of its own: past the caches, or through a strip
  bool ConvertRun(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels, std::uint32_t lines) {
    if (mFrame.streams) return false;
    if (mShortcut == nullptr) {
      const std::size_t bytes = pixels * mSteps.writer.pixelBytes;
      const auto aligned =
          reinterpret_cast<const std::uint8_t*>(reinterpret_cast<std::uintptr_t>(destination) | mFrame.destinationLine);
      if (!mNeedsNoStrip || !TakesRuns(mSteps) || !IsInOneGo(aligned, bytes) ||
          reinterpret_cast<std::uintptr_t>(aligned) % sizeof(Sample) != 0) {
        return false;
      }
    }
    const LineRun run{lines, mFrame.sourceLine, mFrame.destinationLine};
    mTarget.run = &run;
    ConvertPixels(source, destination, pixels);
    mTarget.run = nullptr;
    return true;
  }

  void ConvertTaps(const FrameLine& line) const {
    const TargetLine target = TargetAt(line.destination, mFrame, mTarget.fit, mSteps.writer);
    ForEachTapStrip(mSteps.decode, LinesAt(line.source), mFrame.pixels / 2, mConverter.mSource.readout,
                    [&](const Sample* samples, std::size_t count, std::size_t first) {
                      StorePixels({samples, samples, samples}, mSteps, count, target, first, KernelChoice::kActive);
                    });
  }

  void ConvertWithTail(const FrameLine& line, const LineTail& tail) {
    const std::optional<std::uint32_t> inOneGo = tail.PixelsInOneGo(line.index, mSteps.writer);
    if (inOneGo) return ConvertPixels(line.source, line.destination, *inOneGo);
    ConvertPixels(line.source, line.destination, tail.WholePixels());
    tail.Convert(line, mSteps.writer, TargetAt(line.destination, mFrame, mTarget.fit, mSteps.writer),
                 [this](const std::uint8_t* group, const TargetLine& target, std::size_t pixels) {
                   ConvertStrips(mSteps, LinesAt(group), pixels, &target, 1, 0);
                 });
  }

 private:
  // Whether lines are fetched ahead. Processors keep up by themselves with gray that needs no unpacking: with bytes
  // unless they are stored past the caches, with words that stay words in small images.
  bool FetchesLines() const {
    const bool fromBytes = Format().Is(kGray) && Format().Is(kBytes);
    const bool fromWords = Format().Is(kGray) && Format().Is(kWords);
    const bool toGrayBytes = mSteps.writer.pixelBytes == 1 && mSteps.writer.planes == 1;
    if (fromBytes || (fromWords && toGrayBytes) || (DecodesLuma() && IsByMatrix())) return mFrame.streams;
    return !fromWords || (mFrame.sourceLine + mFrame.destinationLine) * mFrame.destinationHeight > kMostInSecondCache;
  }
  // Whether gray is decoded: of YUV by a matrix, and of layouts that make it at once where no colour is looked up.
  bool DecodesLuma() const {
    if (Format().decodeLuma.template Of<Sample>().of[0] == nullptr || !IsLuma(mConverter.mWriter)) return false;
    return Format().decodeByMatrix.of[0] != nullptr ? IsByMatrix() : mFrame.filter == nullptr;
  }
  const Twins<DecodeKernel<Sample>>& Decoder() const {
    if (DecodesLuma()) return Format().decodeLuma.template Of<Sample>();
    if constexpr (sizeof(Sample) == 1) {
      if (IsByMatrix()) return Format().decodeByMatrix;
    }
    return Format().decode.template Of<Sample>();
  }
  const Writer& StoredBy() const {
    return DecodesLuma() && mFrame.filter == nullptr ? *mConverter.mWriter.gray : mConverter.mWriter;
  }

  void FindTables(const Frame& frame) {
    if (sizeof(Sample) == 1 && mInFull) {
      mSteps.widening = LookupOf<std::uint16_t>(frame, 8, mSteps.writer);
    } else {
      mSteps.tables = LookupOf<Sample>(frame, mConverter.mSource.depth, mSteps.writer);
    }
  }

  // Whether the source holds its channels as samples that need no decoding.
  bool IsPlain() const {
    return sizeof(Sample) == 1 ? Format().Is(kBytes) : Format().Is(kWords) && mConverter.mSource.depth == 16;
  }
  const struct Format& Format() const { return *mConverter.mSource.format; }
  // Whether samples have as many bits afterwards as shortcuts expect: 8, or 16 of words. Those of a layout of bytes to
  // words shift by what they are told.
  bool FitsShortcut() const {
    if (!HasWords(mConverter.mSource)) return true;
    return mSteps.writer.depth == (sizeof(Sample) == 1 ? 8 : mConverter.mSource.depth) &&
           mSteps.writer.depth == 8 * sizeof(Sample);
  }
  bool IsByMatrix() const { return mMatrix != nullptr && Format().decodeByMatrix.of[0] != nullptr; }
  SourceLines LinesAt(const std::uint8_t* line) const {
    SourceLines lines = mConverter.mSource.Lines<Sample>(line, mFrame.SourcePlane(), mFrame.fetchAhead);
    lines.matrix = mMatrix;
    return lines;
  }

  const LineConverter& mConverter;
  const Frame& mFrame;
  const bool mInFull;
  const YuvMatrix* const mMatrix;
  StripSteps<Sample> mSteps;
  SourceLines mLines;
  TargetLine mTarget;
  const Shortcut* mShortcut = nullptr;  // null where it is not for this conversion
  bool mNeedsNoStrip = false;
};

LineConverter::LineConverter(const SourceType& source, const Writer& writer, const PixelTypeID& from,
                             const PixelTypeID& to)
    : LibraryConverter(from, to,
                       (source.format->groupBits / 8 + source.format->groupPixels - 1) / source.format->groupPixels,
                       writer.pixelBytes, 1, {source.format, writer.planes}),
      mSource(source),
      mWriter(writer),
      mShortcut(FindShortcut(source.format->name, writer)),
      mPlainWay(Lines<std::uint8_t>(*this, Frame{}).Way()),
      mJoins(source.readout.taps != Readout::Taps::kTwo && (from & kInterlacedFlag) == 0) {}

Result LineConverter::Convert(const RGBFilter* filter, const void* source, unsigned long sourceWidth,
                              unsigned long sourceHeight, void* destination, unsigned long destinationWidth,
                              unsigned long destinationHeight, unsigned long pixelsPerLine, unsigned long lines,
                              unsigned long flags, unsigned long destinationPadding, void** scratch,
                              unsigned long* scratchSize) const {
  // To describe a small image in a frame takes as long as to convert it. Most of them are whole, without a gap between
  // lines, and need none.
  const std::uint32_t width = U32(pixelsPerLine), height = U32(lines);
  const bool isPlain = filter == nullptr && (U32(flags) | U32(destinationPadding)) == 0;
  const bool isWhole = U32(sourceWidth) == width && U32(destinationWidth) == width && U32(sourceHeight) == height &&
                       U32(destinationHeight) == height;
  if (mJoins && isPlain && isWhole && mSource.format->Rest(width) == 0 &&
      ConvertSmall(source, destination, std::size_t{width} * height)) {
    return Result::OK;
  }
  return LibraryConverter::Convert(filter, source, sourceWidth, sourceHeight, destination, destinationWidth,
                                   destinationHeight, pixelsPerLine, lines, flags, destinationPadding, scratch,
                                   scratchSize);
}

// Converts a small image, of whole groups of pixels in each line, without a filter and without flags.
// @return false, with nothing done, where it is not small or needs strips
[[gnu::flatten]] bool LineConverter::ConvertSmall(const void* source, void* destination, std::size_t pixels) const {
  const PlainWay& way = mPlainWay;
  if (pixels > kMostJoined || !IsSmallImage(pixels * way.pixelBits / 8)) return false;
  // The groups of planar layouts are single pixels.
  SourceLines lines =
      mSource.Lines<std::uint8_t>(static_cast<const std::uint8_t*>(source), pixels * mSource.format->groupBits / 8, 0);
  lines.matrix = way.matrix;
  const std::size_t bytes = pixels * way.writer.pixelBytes;
  const TargetLine target{static_cast<std::uint8_t*>(destination), bytes, false, 0, way.fit};
  if (way.shortcut != nullptr) {
    way.shortcut->convert.Active()(lines, 0, pixels, &target, 0);
    return true;
  }
  if (way.decode == nullptr || !IsInOneGo(target.line, bytes)) return false;
  ConvertWithoutStrip<std::uint8_t>({way.decode->Active(), mSource.format->groupPixels, false, nullptr, way.writer},
                                    lines, pixels, target);
  return true;
}

void LineConverter::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  const bool words = HasWords(mSource) && mWriter.depth > 8 && (frame.flags & ConversionFlags::kFullDepth) != 0;
  if (words) {
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
