#include "converters/parted_demosaicer.h"

#include <algorithm>

#include "converters/adaptive_rows.h"
#include "walk/lines.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(GradientCorrectedKernel, BayerGradientCorrected)

namespace {

using Kind = DemosaicMethod::Kind;

/// The gradient-corrected method.
template <class Sample>
class GradientCorrectedRows {
 public:
  explicit GradientCorrectedRows(PartedRowWindow<Sample>& rows) : mRows(rows) {}

  void Make(std::uint32_t line, const RowColors<Sample>& out) {
    const std::size_t pairs = (mRows.Shape().width + 1) / 2;
    kBayerGradientCorrected.template Of<Sample>().Active()(mRows.Around(line, 2), pairs, out);
  }

 private:
  PartedRowWindow<Sample>& mRows;
};

std::uint32_t CoarseShift(std::uint32_t flags, std::uint32_t depth) {
  if (DemosaicMethodOf(flags).kind != Kind::kAdaptive) return kNotCoarse;
  return AdaptiveRows<std::uint16_t>::CoarseShift(depth);
}

}  // namespace

template <class Sample>
PartedDemosaicer<Sample>::PartedDemosaicer(const MosaicSource& source, const Writer& writer, const Frame& frame,
                                           std::uint32_t first, std::uint32_t end)
    : mWriter(writer),
      mFrame(frame),
      mFirst(first),
      mEnd(end),
      mShape{frame.pixels, frame.sourceHeight, LayoutCell(frame.flags), sizeof(Sample) == 1 ? 8 : source.type.depth},
      mSource(source.type, frame, source.width, 1, RowsRead(frame, first, end),
              RowLookupOf(frame, source.type.depth, mShape.depth)),
      mRows(mSource, mShape, first - std::min(first, DemosaicMethodOf(frame.flags).reach),
            CoarseShift(frame.flags, mShape.depth)),
      mSteps(StepsAfterDemosaicing<Sample>(frame, source.type.depth, writer)),
      mFit(FitAfterDemosaicing<Sample>(frame, source.type.depth, writer)) {}

template <class Sample>
void PartedDemosaicer<Sample>::Convert() {
  // A single row mirrors nothing.
  if (mFrame.sourceHeight < 2) return;
  if (DemosaicMethodOf(mFrame.flags).kind == Kind::kAdaptive) {
    AdaptiveRows<Sample> method(mRows, mFirst);
    ConvertBy(method);
  } else {
    GradientCorrectedRows<Sample> method(mRows);
    ConvertBy(method);
  }
}

template <class Sample>
template <class Method>
void PartedDemosaicer<Sample>::ConvertBy(Method& method) {
  const std::size_t stride = mShape.width + 2 * kRowMargin;
  std::vector<Sample> room(3 * stride);
  const RowColors<Sample> colors{room.data(), room.data() + stride, room.data() + 2 * stride};
  for (std::uint32_t line = mFirst; line < mEnd; ++line) {
    method.Make(line, colors);
    Store(line, colors);
  }
}

template <class Sample>
void PartedDemosaicer<Sample>::Store(std::uint32_t line, const RowColors<Sample>& colors) const {
  const bool redInLine = mShape.CellOf(line) % 2 == 0;
  const Sample* const red = redInLine ? colors.line : colors.column;
  const Sample* const blue = redInLine ? colors.column : colors.line;
  const TargetLine target = TargetAt(DestinationLineAt(mFrame, line), mFrame, mFit, mWriter);
  StripWalk walk(1, mWriter, target, mShape.width, 0, kStripPixels);
  while (walk.Next()) {
    const std::size_t at = walk.At();
    StorePixels<Sample>({red + at, colors.green + at, blue + at}, mSteps, walk.Pixels(), target, at,
                        KernelChoice::kActive);
  }
}

template class PartedDemosaicer<std::uint8_t>;
template class PartedDemosaicer<std::uint16_t>;

}  // namespace LmImagingLib
