#pragma once

#include <algorithm>

#include "converters/line_converter.h"
#include "converters/line_tail.h"
#include "formats/yuv_matrices.h"
#include "walk/tap_strips.h"

namespace LmImagingLib {

/// Bytes of an image that second-level caches mostly hold. Fetching its lines from there makes kernels that do little
/// but move samples take an eighth longer.
inline constexpr std::size_t kMostInSecondCache = 5U << 18;

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
    // Other shortcuts than those of YUV and to luma only move bytes, and so do words that stay words. Fetching never
    // slowed those to planes down.
    const bool movesBytes = mShortcut != nullptr && Format().decodeByMatrix.of[0] == nullptr && !IsLuma(mSteps.writer);
    const bool movesWords = Format().Is(kGray) && Format().Is(kWords) && mSteps.writer.pixelBytes == 2;
    const bool moves = (movesBytes || movesWords) && mSteps.writer.planes == 1;
    if (!FetchesLines()) {
      mLines.ahead = mTarget.ahead = 0;
    } else if (moves) {
      mLines.ahead = frame.fetchMovesAhead;
      if (!frame.streams) mTarget.ahead = frame.fetchMovesAhead;
    }
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

  PlainWay<Sample> Way() const {
    const Writer& writer = mSteps.writer;
    const std::size_t sourceBits = Format().groupBits / Format().groupPixels * (Format().Is(kPlanar) ? 3 : 1);
    return {mShortcut, mNeedsNoStrip ? &Decoder() : nullptr,
            writer,    mTarget.fit,
            mMatrix,   sourceBits + std::size_t{8} * writer.pixelBytes * writer.planes};
  }

  // Converts lines at equal distances by one call of a kernel, or by two for as many as a strip holds.
  // @return false, with nothing done, where each line needs calls of its own: past the caches, or by more steps
  bool ConvertRun(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels, std::uint32_t lines) {
    if (mFrame.streams) return false;
    const std::size_t step = mFrame.destinationLine;
    const bool isAligned = (reinterpret_cast<std::uintptr_t>(destination) | step) % sizeof(Sample) == 0;
    const bool isInOneGo = isAligned && IsInOneGo(destination, pixels * mSteps.writer.pixelBytes, step);
    if (mShortcut == nullptr && (!isInOneGo || (mNeedsNoStrip && !TakesRuns(mSteps)))) return false;
    LineRun run{lines, mFrame.sourceLine, step};
    mTarget.run = &run;
    bool isDone = true;
    if (mShortcut != nullptr || mNeedsNoStrip) {
      ConvertPixels(source, destination, pixels);
    } else {
      isDone = ConvertSomeAtOnce(source, destination, pixels, run);
    }
    mTarget.run = nullptr;
    return isDone;
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
  // Converts the lines of a run, some of them at once.
  // @return false, with nothing done, where each line needs calls of its own
  bool ConvertSomeAtOnce(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels, LineRun& run) {
    std::uint32_t left = run.lines;
    std::uint32_t some = 0;
    for (; left != 0; left -= run.lines, source += run.lines * run.source, destination += run.lines * run.target) {
      mConverter.mSource.MoveTo(source, mFrame.SourcePlane(), mLines);
      mTarget.line = destination;
      if (some == 0) some = LinesAtOnce(mSteps, mLines, mTarget, pixels);
      if (some == 0) return false;
      run.lines = std::min(left, some);
      ConvertAtOnce(mSteps, mLines, pixels, mTarget);
    }
    return true;
  }

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

}  // namespace LmImagingLib
