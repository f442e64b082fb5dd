#include "converters/parted_demosaicer.h"

#include <algorithm>

#include "converters/adaptive_rows.h"
#include "converters/steps_after_demosaicing.h"
#include "walk/lines.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(GradientCorrectedKernel, BayerGradientCorrected)
LM_DECLARE_KERNEL(RowPixelsKernel, GradientCorrectedToRGB24)
LM_DECLARE_KERNEL(RowPixelsKernel, GradientCorrectedToBGR24)
LM_DECLARE_KERNEL(RowPixelsKernel, GradientCorrectedToRGB32)
LM_DECLARE_KERNEL(RowPixelsKernel, GradientCorrectedToBGR32)
LM_DECLARE_KERNEL(RowPixelsKernel, AdaptiveToRGB24)
LM_DECLARE_KERNEL(RowPixelsKernel, AdaptiveToBGR24)
LM_DECLARE_KERNEL(RowPixelsKernel, AdaptiveToRGB32)
LM_DECLARE_KERNEL(RowPixelsKernel, AdaptiveToBGR32)

namespace {

using Kind = DemosaicMethod::Kind;

/// A kernel that stores the pixels of a method, where nothing is looked up.
struct PixelShortcut {
  Kind kind;
  const Writer* writer;
  Twins<RowPixelsKernel> make;
};

constexpr PixelShortcut kPixelShortcuts[] = {{Kind::kGradientCorrected, &Writers::kRGB24, kGradientCorrectedToRGB24},
                                             {Kind::kGradientCorrected, &Writers::kBGR24, kGradientCorrectedToBGR24},
                                             {Kind::kGradientCorrected, &Writers::kRGB32, kGradientCorrectedToRGB32},
                                             {Kind::kGradientCorrected, &Writers::kBGR32, kGradientCorrectedToBGR32},
                                             {Kind::kAdaptive, &Writers::kRGB24, kAdaptiveToRGB24},
                                             {Kind::kAdaptive, &Writers::kBGR24, kAdaptiveToBGR24},
                                             {Kind::kAdaptive, &Writers::kRGB32, kAdaptiveToRGB32},
                                             {Kind::kAdaptive, &Writers::kBGR32, kAdaptiveToBGR32}};

RowPixelsKernel* FindPixelKernel(Kind kind, const Writer* writer) {
  for (const PixelShortcut& shortcut : kPixelShortcuts) {
    if (shortcut.kind == kind && shortcut.writer == writer) return shortcut.make.Active();
  }
  return nullptr;
}

/// The gradient-corrected method.
template <class Sample>
class GradientCorrectedRows {
 public:
  explicit GradientCorrectedRows(PartedRowWindow<Sample>& rows) : mRows(rows) {}

  void Make(std::uint32_t line, const RowColors<Sample>& out) {
    const std::size_t pairs = (mRows.Shape().width + 1) / 2;
    kBayerGradientCorrected.template Of<Sample>().Active()(mRows.Around(line, 2), pairs, out);
  }

  void MakePixels(std::uint32_t line, RowPixelsKernel* make, std::size_t first, std::size_t end,
                  const TargetLine& target) {
    if constexpr (sizeof(Sample) == 1) make(mRows.Around(line, 2), nullptr, first, end, target);
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
      mShape{frame.pixels, frame.sourceHeight, LayoutSite(frame.flags),
             sizeof(Sample) == 1 ? 8 : DepthOfRows(frame, source.type.depth, writer)},
      mSource(source.type, frame, source.width, 1, RowsRead(frame, first, end),
              RowLookupOf(frame, source.type.depth, mShape.depth)),
      mRows(mSource, mShape, first - std::min(first, DemosaicMethodOf(frame.flags).reach),
            DemosaicMethodOf(frame.flags).reach, CoarseShift(frame.flags, mShape.depth)),
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
  const Kind kind = DemosaicMethodOf(mFrame.flags).kind;
  // A writer's pixel that has red and blue exchanged is that of the lines whose colour is blue.
  RowPixelsKernel* const red = StoresPixels() ? FindPixelKernel(kind, &mWriter) : nullptr;
  RowPixelsKernel* const blue = StoresPixels() ? FindPixelKernel(kind, mWriter.swapped) : nullptr;
  if (red != nullptr && blue != nullptr) {
    for (std::uint32_t line = mFirst; line < mEnd; ++line) {
      RowPixelsKernel* const make = IsRedInLine(line) ? red : blue;
      const TargetLine target = TargetAt(DestinationLineAt(mFrame, line), mFrame, mFit, mWriter);
      if (!target.streams) {
        method.MakePixels(line, make, 0, mShape.width, target);
        continue;
      }
      // Stores past the caches are aligned.
      StripWalk walk(2, mWriter, target, mShape.width, 0, mShape.width);
      while (walk.Next()) method.MakePixels(line, make, walk.At(), walk.At() + walk.Pixels(), target);
    }
    return;
  }
  const std::size_t stride = mShape.width + 2 * kRowMargin;
  std::vector<Sample> room(3 * stride);
  const RowColors<Sample> colors{room.data(), room.data() + stride, room.data() + 2 * stride};
  for (std::uint32_t line = mFirst; line < mEnd; ++line) {
    method.Make(line, colors);
    Store(line, colors);
  }
}

// Whether pixels may be stored as they come.
template <class Sample>
bool PartedDemosaicer<Sample>::StoresPixels() const {
  return sizeof(Sample) == 1 && mSteps.tables == nullptr && mSteps.matrix == nullptr &&
         (mFrame.flags & ConversionFlags::kOpaque) == 0;
}

template <class Sample>
void PartedDemosaicer<Sample>::Store(std::uint32_t line, const RowColors<Sample>& colors) const {
  const Sample* const red = IsRedInLine(line) ? colors.line : colors.column;
  const Sample* const blue = IsRedInLine(line) ? colors.column : colors.line;
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
