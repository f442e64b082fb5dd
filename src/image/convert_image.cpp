#include <algorithm>
#include <cstring>
#include <new>

#include "LmImagingLib/Image.h"
#include "converters/chain.h"
#include "converters/library_converter.h"
#include "image/bands.h"
#include "image/flags.h"
#include "image/frames.h"
#include "image/plan.h"
#include "walk/lines.h"
#include "walk/streams.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

Frame FrameOf(const ConversionPlan& plan, const ConstImageView& source, const ImageView& destination,
              const ConvertOptions& options) {
  Frame frame = SourceFrame(source, plan.sourceLine, plan.converter->GetSourceTypeID());
  frame.destination = static_cast<std::uint8_t*>(destination.data);
  frame.destinationLine = static_cast<std::size_t>(plan.destinationLine);
  frame.destinationHeight = plan.DestinationHeight();
  frame.destinationPlanes = PlaneCount(plan.converter->GetDestinationTypeID());
  frame.pixels = plan.DestinationWidth();
  frame.flags = static_cast<std::uint32_t>(FlagsOf(options));
  frame.filter = options.filter;
  return frame;
}

// A line that ends within a byte shares it with the next one where nothing is between them, so lines are copied from
// top to bottom and only the image's last one has a byte to itself.
void CopyLines(const ConversionPlan& plan, Frame frame) {
  const auto lineBytes = static_cast<std::size_t>(plan.source.LineBytes(plan.width));
  for (std::uint64_t plane = 0; plane < plan.source.planes; ++plane) {
    for (std::uint32_t line = plan.first; line < plan.end; ++line) {
      const bool isLast = plane + 1 == plan.source.planes && line + 1 == plan.height;
      const std::uint8_t* const source = SourceLineAt(frame, line);
      if (source == nullptr) continue;
      std::memcpy(DestinationLineAt(frame, line), source,
                  isLast ? lineBytes : std::min(lineBytes, frame.destinationLine));
    }
    frame.source += frame.SourcePlane();
    frame.destination += frame.DestinationPlane();
  }
}

void ConvertBand(const ConversionPlan& plan, Frame frame, std::uint32_t first, std::uint32_t end) {
  const StreamScope streams(frame, plan.end - plan.first);
  if (plan.walk == WalkKind::kChain) {
    BandedChain(StagesOf(*plan.converter)).ConvertLines(frame, first, end);
  } else {
    AsLibraryConverter(*plan.converter)->ConvertLines(frame, first, end);
  }
}

ConversionResult ConvertByApplication(const ConversionPlan& plan, const ConstImageView& source,
                                      const ImageView& destination, const ConvertOptions& options) {
  const std::uint32_t width = plan.DestinationWidth();
  const auto padding = static_cast<unsigned long>(plan.destinationLine - plan.destination.DenseLine(width));
  const Result result = plan.converter->Convert(options.filter, source.data, plan.sourceWidth, plan.height,
                                                destination.data, width, plan.DestinationHeight(), width,
                                                plan.DestinationEnd(), FlagsOf(options), padding, nullptr, nullptr);
  if (result.IsOK()) return {};
  return {result, "the application's converter failed with code " + std::to_string(result.GetCode())};
}

}  // namespace

ConversionResult ConvertImage(const ConstImageView& source, const ImageView& destination,
                              const ConvertOptions& options) {
  try {
    ConversionPlan plan;
    if (ConversionResult refused = PlanConversion(source, destination, options, plan); !refused.IsOK()) return refused;
    if (plan.walk == WalkKind::kApplication) return ConvertByApplication(plan, source, destination, options);
    const Frame frame = FrameOf(plan, source, destination, options);
    if (plan.walk == WalkKind::kCopy) {
      CopyLines(plan, frame);
      return {};
    }
    ConvertInBands(options, plan.DestinationFirst(), plan.DestinationEnd(), plan.sourceLine + plan.destinationLine,
                   [&](std::uint32_t first, std::uint32_t end) { ConvertBand(plan, frame, first, end); });
    return {};
  } catch (const std::bad_alloc&) {
    return {Result::NOT_ENOUGH_MEMORY, "out of memory"};  // short enough to need none
  }
}

}  // namespace LmImagingLib
