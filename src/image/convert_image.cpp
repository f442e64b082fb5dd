#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "LmImagingLib/Image.h"
#include "converters/line_converter.h"
#include "image/plan.h"
#include "image/stages.h"
#include "image/walk.h"
#include "walk/conversion_context.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

bool IsInterlaced(const PixelConverter& converter) { return (converter.GetSourceTypeID() & kInterlacedFlag) != 0; }

LineWalk WalkOf(const ConversionPlan& plan, const ConstImageView& source, const ImageView& destination,
                const ConvertOptions& options) {
  return {static_cast<const std::uint8_t*>(source.data),
          static_cast<std::size_t>(plan.sourceLine),
          0,
          static_cast<std::uint8_t*>(destination.data),
          static_cast<std::size_t>(plan.destinationLine),
          plan.height,
          0,
          plan.width,
          plan.height,
          plan.first,
          plan.end,
          options.flags,
          options.filter};
}

// A line that ends within a byte shares it with the next one where nothing lies between, so lines go from top to bottom
// and only the image's last one has a byte to itself.
void CopyLines(const ConversionPlan& plan, LineWalk walk) {
  const bool interlaced = IsInterlaced(*plan.converter);
  const auto lineBytes = static_cast<std::size_t>(plan.source.LineBytes(plan.width));
  for (std::uint64_t plane = 0; plane < plan.source.planes; ++plane) {
    for (std::uint32_t line = walk.first; line < walk.end; ++line) {
      const bool last = plane + 1 == plan.source.planes && line + 1 == walk.height;
      const std::uint8_t* const source = SourceLineAt(walk, interlaced, line);
      if (source == nullptr) continue;
      std::memcpy(walk.destination + line * walk.destinationLine, source,
                  last ? lineBytes : std::min(lineBytes, walk.destinationLine));
    }
    walk.source += walk.sourceLine * walk.height;
    walk.destination += walk.destinationLine * walk.height;
  }
}

/// Room for some lines of the image between the stages of a chain: inside, unless the lines are very long. Zero at
/// first, because stages leave pixels that belong to no group.
class Band {
 public:
  Band(std::size_t lineBytes, std::uint32_t lines)
      : mLines(std::max(kFewestLines, static_cast<std::uint32_t>(
                                          std::min<std::size_t>(sizeof mInside / lineBytes, std::size_t{lines} + 2)))) {
    const std::size_t bytes = mLines * lineBytes;
    if (bytes <= sizeof mInside) {
      std::memset(mInside, 0, bytes);
    } else {
      mOutside = std::make_unique<std::uint8_t[]>(bytes);
    }
  }

  std::uint8_t* Data() { return mOutside != nullptr ? mOutside.get() : mInside; }
  /// Lines to convert at a time: one above and one below them are there too.
  std::uint32_t Lines() const { return (mLines - 2) / 2 * 2; }

 private:
  static constexpr std::uint32_t kFewestLines = 8;

  std::uint32_t mLines;
  std::unique_ptr<std::uint8_t[]> mOutside;
  alignas(64) std::uint8_t mInside[kFewestLines * 6144];
};

const Source* GroupsOf(const PixelConverter& converter) {
  const auto* const lines = dynamic_cast<const LineConverter*>(&converter);
  return lines != nullptr ? &lines->SourceLayout() : nullptr;
}

// Both stages for a band of lines at a time: the intermediate image never leaves the cache, and threads share no
// buffer.
void ConvertChain(const ConversionPlan& plan, const LineWalk& walk) {
  const ConverterStages stages = StagesOf(*plan.converter);
  const std::size_t lineBytes = stages.first.GetDestinationLineSize(plan.width);
  const bool oddField = IsInterlaced(stages.first) && walk.height % 2 != 0;
  Band band(lineBytes, walk.end - walk.first);
  LineWalk first = walk;
  first.destination = band.Data();
  first.destinationLine = lineBytes;
  first.destinationFirst = walk.first - std::min(walk.first, 1U);
  first.end = first.destinationFirst;
  LineWalk second = walk;
  second.source = band.Data();
  second.sourceLine = lineBytes;
  second.end = walk.first;
  while (second.end < walk.end) {
    second.first = second.end;
    second.end += std::min(band.Lines(), walk.end - second.first);
    first.first = first.end;
    first.end = std::min(second.end, walk.height - 1) + 1;
    ConvertLines(stages.first, plan.source.groups, first);
    if (oddField && first.end == walk.height) {
      std::memset(band.Data() + (first.end - 1 - first.destinationFirst) * lineBytes, 0, lineBytes);
    }
    second.sourceFirst = first.destinationFirst;
    ConvertLines(*stages.second, GroupsOf(*stages.second), second);
    // The next band begins with the line above it, which is there.
    const std::uint32_t above = second.end - 1;
    std::memmove(band.Data(), band.Data() + (above - first.destinationFirst) * lineBytes,
                 (first.end - above) * lineBytes);
    first.destinationFirst = above;
  }
}

// Whether the converter's own way over the whole image needs no byte outside the pixels, and counts none in 32 bits
// that are not enough.
bool IsPlain(const ConversionPlan& plan) {
  if (plan.walk == WalkKind::kNone) return true;
  if (plan.walk != WalkKind::kLines || plan.sourceWidth == 0 || plan.first != 0) return false;
  if (PassesLineEnd(plan.source.groups, plan.width)) return false;
  return !IsInterlaced(*plan.converter) || (plan.end % 2 == 0 && plan.sourceLine * plan.height <= kMostLineBytes);
}

ConversionResult Convert(const ConversionPlan& plan, const ConstImageView& source, const ImageView& destination,
                         const ConvertOptions& options) {
  const auto padding = static_cast<unsigned long>(plan.destinationLine - plan.destination.DenseLine(plan.width));
  const Result result =
      plan.converter->Convert(options.filter, source.data, plan.sourceWidth, plan.height, destination.data, plan.width,
                              plan.height, plan.width, plan.end, options.flags, padding, nullptr, nullptr);
  if (result.IsOK()) return {};
  return {result, "the application's converter failed with code " + std::to_string(result.GetCode())};
}

void ConvertByWalk(const ConversionPlan& plan, const LineWalk& walk) {
  const ContextScope context;  // kept over all the walks of a chain
  switch (plan.walk) {
    case WalkKind::kCopy:
      return CopyLines(plan, walk);
    case WalkKind::kChain:
      return ConvertChain(plan, walk);
    default:
      return ConvertLines(*plan.converter, plan.source.groups, walk);
  }
}

}  // namespace

ConversionResult ConvertImage(const ConstImageView& source, const ImageView& destination,
                              const ConvertOptions& options) {
  try {
    ConversionPlan plan;
    if (ConversionResult refused = PlanConversion(source, destination, options, plan); !refused.IsOK()) return refused;
    if (IsPlain(plan)) return Convert(plan, source, destination, options);
    ConvertByWalk(plan, WalkOf(plan, source, destination, options));
    return {};
  } catch (const std::bad_alloc&) {
    return {Result::NOT_ENOUGH_MEMORY, "out of memory"};  // short enough to need none
  }
}

}  // namespace LmImagingLib
