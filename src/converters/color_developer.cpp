#include "converters/color_developer.h"

#include "converters/line_decoder.h"
#include "converters/steps_after_demosaicing.h"
#include "filter/development_tables.h"
#include "walk/lines.h"
#include "walk/row_lookup.h"

namespace LmImagingLib {

namespace {

template <class Decoded, class Result>
void DevelopLines(const SourceType& source, const Writer& writer, const Frame& frame, std::uint32_t first,
                  std::uint32_t end) {
  const MosaicLookup& lookup = frame.development->Lookup();
  const StripSteps<Result> steps = StepsAfterDemosaicing<Result>(frame, source.depth, writer);
  const Fit fit = FitAfterDemosaicing<Result>(frame, source.depth, writer);
  const LineDecoder<Decoded> lines(source, frame);
  ForEachLine(frame, first, end, 1, [&](const FrameLine& line) {
    const TargetLine target = TargetAt(line.destination, frame, fit, writer);
    lines.ForEachStrip(line.source, [&](const Channels<Decoded>& in, std::size_t count, std::size_t at) {
      Strip<Result> strip;
      LookUpSamples(in.red, count, {lookup.red, lookup.red, false}, strip.red);
      LookUpSamples(in.green, count, {lookup.green, lookup.green, false}, strip.green);
      LookUpSamples(in.blue, count, {lookup.blue, lookup.blue, false}, strip.blue);
      StorePixels<Result>({strip.red, strip.green, strip.blue}, steps, count, target, at, KernelChoice::kActive);
    });
  });
}

}  // namespace

void DevelopColors(const SourceType& source, const Writer& writer, const Frame& frame, std::uint32_t first,
                   std::uint32_t end) {
  if (!HasWords(source)) {
    DevelopLines<std::uint8_t, std::uint8_t>(source, writer, frame, first, end);
  } else if (frame.development->EntryDepth() == 8) {
    DevelopLines<std::uint16_t, std::uint8_t>(source, writer, frame, first, end);
  } else {
    DevelopLines<std::uint16_t, std::uint16_t>(source, writer, frame, first, end);
  }
}

}  // namespace LmImagingLib
