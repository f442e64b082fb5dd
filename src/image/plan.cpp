#include "image/plan.h"

#include <algorithm>
#include <array>

#include "LmImagingLib/PixelTypeFactory.h"
#include "converters/chain.h"
#include "converters/identity.h"
#include "converters/library_converter.h"
#include "factory/replacements.h"
#include "formats/source_type.h"
#include "image/flags.h"
#include "image/refusal.h"
#include "image/views.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

bool Overlap(const void* source, std::size_t sourceBytes, const void* destination, std::size_t destinationBytes) {
  const auto from = reinterpret_cast<std::uintptr_t>(source);
  const auto to = reinterpret_cast<std::uintptr_t>(destination);
  return from < to ? to - from < sourceBytes : from - to < destinationBytes;
}

// Whether the library's own converter of the pair is used, so that both types are registered.
bool IsOwnOf(const PixelConverter* converter, const ConstImageView& source, const ImageView& destination) {
  return converter != nullptr && AsLibraryConverter(*converter) != nullptr &&
         converter->GetSourceTypeID() == source.type && converter->GetDestinationTypeID() == destination.type;
}

WalkKind KindOf(const PixelConverter& converter) {
  if (AsLibraryConverter(converter) != nullptr) return WalkKind::kLines;
  if (IsIdentity(converter)) return WalkKind::kCopy;
  return BandedChain(StagesOf(converter)) ? WalkKind::kChain : WalkKind::kApplication;
}

// The traits of a stage; of an application's converter none.
ConverterTraits TraitsOf(const PixelConverter& converter) {
  const LibraryConverter* const library = AsLibraryConverter(converter);
  return library != nullptr ? library->Traits() : ConverterTraits{};
}

ConversionResult CheckSize(const ConstImageView& source, const ImageView& destination, const ConvertOptions& options,
                           ConversionPlan& plan) {
  const bool toHalf = (options.flags & ConversionFlags::kHalfSize) != 0 && Demosaics(*plan.converter);
  if (toHalf) plan.perPixel = 2;
  if (destination.width == plan.DestinationWidth() && destination.height == plan.DestinationHeight()) return {};
  if (!toHalf) {
    return Refused("destination is " + Size(destination) + " pixels; it must be as large as source, " + Size(source));
  }
  return Refused("destination is " + Size(destination) + " pixels; with kHalfSize it must be " +
                 Decimal(plan.DestinationWidth()) + " x " + Decimal(plan.DestinationHeight()) + ", half of source, " +
                 Size(source));
}

ConversionResult CheckRange(const ConvertOptions& options, ConversionPlan& plan) {
  if (options.threads == 0) return Refused("options.threads is 0; it is at least 1, for the calling thread");
  const unsigned long height = plan.height;
  if (options.firstLine >= height) {
    return Refused("options.firstLine is " + Decimal(options.firstLine) + "; the image has the lines 0 to " +
                   Decimal(height - 1));
  }
  const unsigned long left = height - options.firstLine;
  const unsigned long lines = options.lines == ConvertOptions::kAllLines ? left : options.lines;
  if (lines == 0 || lines > left) {
    return Refused("options.lines is " + Decimal(lines) + "; from line " + Decimal(options.firstLine) +
                   " on there are 1 to " + Decimal(left));
  }
  plan.first = static_cast<std::uint32_t>(options.firstLine);
  plan.end = static_cast<std::uint32_t>(options.firstLine + lines);
  const unsigned long step = plan.converter->GetLinesPerStep();
  if (step == 0) {
    return Refused(
        "source.type and destination.type have an application's converter that takes 0 lines at a time; its "
        "GetLinesPerStep() must be at least 1");
  }
  if (step > 1 && (plan.first % step != 0 || (plan.end != height && plan.end % step != 0))) {
    return Refused("options.firstLine is " + Decimal(options.firstLine) + " and options.lines " + Decimal(lines) +
                   "; this conversion takes " + Decimal(step) + " lines at a time, so that both must be multiples of " +
                   Decimal(step) + " unless the range ends with the image");
  }
  return {};
}

// The pixels that a line with its padding has room for, if they fill it to the byte; otherwise 0.
std::uint32_t PixelsThatFill(const ImageLayout& layout, std::uint64_t width, std::uint64_t lineSize) {
  std::uint64_t least = width;
  std::uint64_t most = std::max(width, lineSize * 8);  // no layout has less than a bit a pixel
  while (least < most) {
    const std::uint64_t middle = least + (most - least) / 2;
    if (layout.HoldsLine(middle) && layout.DenseLine(middle) < lineSize) {
      least = middle + 1;
    } else {
      most = middle;
    }
  }
  return layout.HoldsLine(least) && layout.DenseLine(least) == lineSize ? static_cast<std::uint32_t>(least) : 0;
}

// A chain of an application counts the bytes of the whole intermediate image, and those of its lines, in 32 bits.
ConversionResult CheckChain(const ConstImageView& source, const ConversionPlan& plan) {
  const ConverterStages stages = StagesOf(*plan.converter);
  if (stages.second == nullptr) return {};
  const std::uint64_t pixelBytes = std::max(stages.first.GetDestinationPixelByteSize(), 1UL);
  const std::uint64_t pixels = plan.walk == WalkKind::kChain ? plan.width : std::uint64_t{plan.width} * plan.height;
  if (pixels <= kMostLineBytes / pixelBytes) return {};
  return Refused("source is " + Size(source) + " pixels; " + (plan.walk == WalkKind::kChain ? "a line" : "an image") +
                 " between the stages of its conversion may take at most " + Decimal(kMostLineBytes) + " bytes");
}

// The limits of an application's converter.
ConversionResult CheckApplication(const ConstImageView& source, const ConversionPlan& plan) {
  const PixelConverter& converter = *plan.converter;
  if (plan.source.format != nullptr && PassesLineEnd(*plan.source.format, plan.width)) {
    return Refused("source.width is " + Decimal(plan.width) + "; the application's converter of " + Label(source.type) +
                   " reads " + Decimal(plan.source.format->groupPixels) +
                   " pixels at a time, so it must be a multiple");
  }
  // A chain converts the padding too, of which the last line has none.
  const bool isChain = StagesOf(converter).second != nullptr;
  if (plan.sourceWidth == 0 || (isChain && !plan.IsDense())) {
    return Refused("source.lineSize is " + Decimal(source.lineSize) + "; the application's converter of " +
                   Label(source.type) + " takes lines " +
                   (plan.sourceWidth == 0 ? "that whole pixels fill" : "without padding"));
  }
  if (plan.first != 0) {
    return Refused("options.firstLine is " + Decimal(plan.first) + "; the application's converter of " +
                   Label(source.type) + " begins with line 0");
  }
  return {};
}

ConversionResult CheckAbilities(const ConstImageView& source, const ConversionPlan& plan) {
  const PixelConverter& converter = *plan.converter;
  if (Demosaics(converter) && (plan.width < 2 || plan.height < 2)) {
    return Refused("source is " + Size(source) + " pixels; a mosaic takes at least 2 x 2 to become colour");
  }
  if (TraitsOf(StagesOf(converter).first).pairsOfLines && !plan.IsDense()) {
    return Refused("source.lineSize is " + Decimal(source.lineSize) + "; lines of " + Label(source.type) +
                   " come in pairs and have no padding, so it must be 0 or " + Decimal(plan.width));
  }
  if (plan.walk == WalkKind::kCopy && (plan.source.planes != plan.destination.planes ||
                                       plan.source.LineBytes(plan.width) != plan.destination.LineBytes(plan.width))) {
    return Refused("destination.type has lines of " + Decimal(plan.destination.LineBytes(plan.width)) +
                   " bytes; it is registered as a copy of " + Label(source.type) + ", which has " +
                   Decimal(plan.source.LineBytes(plan.width)));
  }
  const bool interlaced = (converter.GetSourceTypeID() & kInterlacedFlag) != 0;
  if (interlaced && plan.height % 2 != 0 && !plan.IsDense()) {
    return Refused("source.lineSize is " + Decimal(source.lineSize) + "; at an odd height, " + Decimal(source.height) +
                   ", the second field of an interlaced image begins within a line, so there can be no padding");
  }
  if (ConversionResult checked = CheckChain(source, plan); !checked.IsOK()) return checked;
  return plan.walk == WalkKind::kApplication ? CheckApplication(source, plan) : ConversionResult{};
}

ConversionResult CheckOverlap(const ConstImageView& source, const ImageView& destination, const ConversionPlan& plan) {
  if (!Overlap(source.data, plan.sourceBytes, destination.data, plan.destinationBytes)) return {};
  return Refused("source.data and destination.data are memory that overlaps; the images must not overlap");
}

ConversionResult MakePlan(const ConstImageView& source, const ImageView& destination, const ConvertOptions& options,
                          ConversionPlan& plan) {
  plan.converter = PixelTypeFactory::FindConverter(source.type, destination.type);
  if (!IsOwnOf(plan.converter, source, destination)) {
    if (ConversionResult checked = CheckType(source, "source"); !checked.IsOK()) return checked;
    if (ConversionResult checked = CheckType(destination, "destination"); !checked.IsOK()) return checked;
  }
  if (ConversionResult checked = CheckView(source, "source"); !checked.IsOK()) return checked;
  if (ConversionResult checked = CheckView(destination, "destination"); !checked.IsOK()) return checked;
  if (plan.converter == nullptr) {
    return {Result::NOT_IMPLEMENTED, "destination.type is " + Label(destination.type) + "; no converter to it from " +
                                         Label(source.type) + " is registered"};
  }
  if (ConversionResult checked = CheckFlags(source, *plan.converter, options); !checked.IsOK()) return checked;
  plan.width = static_cast<std::uint32_t>(source.width);
  plan.height = static_cast<std::uint32_t>(source.height);
  if (ConversionResult checked = CheckSize(source, destination, options, plan); !checked.IsOK()) return checked;
  plan.walk = KindOf(*plan.converter);
  if (plan.walk == WalkKind::kCopy) {
    plan.source = *FindLayout(source.type);
    plan.destination = *FindLayout(destination.type);
  } else {
    plan.source = SourceLayoutOf(*plan.converter, source.type);
    plan.destination = DestinationLayoutOf(*plan.converter, destination.type);
  }
  if (ConversionResult checked = CheckRange(options, plan); !checked.IsOK()) return checked;
  if (ConversionResult checked = CheckBytes(source, plan.source, "source", plan.sourceLine, plan.sourceBytes);
      !checked.IsOK()) {
    return checked;
  }
  if (ConversionResult checked =
          CheckBytes(destination, plan.destination, "destination", plan.destinationLine, plan.destinationBytes);
      !checked.IsOK()) {
    return checked;
  }
  if (ConversionResult checked = CheckOverlap(source, destination, plan); !checked.IsOK()) return checked;
  if (plan.walk == WalkKind::kApplication) {
    plan.sourceWidth = PixelsThatFill(plan.source, plan.width, plan.sourceLine);
  }
  return CheckAbilities(source, plan);
}

// All that a plan by one of the library's own converters depends on.
using PlanKey = std::array<std::uint64_t, 16>;

PlanKey KeyOf(const ConstImageView& source, const ImageView& destination, const ConvertOptions& options) {
  return {static_cast<std::uint64_t>(source.type),
          source.size,
          source.width,
          source.height,
          source.lineSize,
          static_cast<std::uint64_t>(destination.type),
          destination.size,
          destination.width,
          destination.height,
          destination.lineSize,
          options.flags,
          static_cast<std::uint64_t>(options.depth),
          options.firstLine,
          options.lines,
          std::uint64_t{options.threads == 0},
          Replacements()};
}

// A thread's last plan: a camera's frames are all alike, and small ones take less time than their checks.
struct LastPlan {
  PlanKey key{};  // of no conversion, as no type has the id 0
  ConversionPlan plan;
};
thread_local LastPlan tLast;

}  // namespace

ConversionResult PlanConversion(const ConstImageView& source, const ImageView& destination,
                                const ConvertOptions& options, ConversionPlan& plan) {
  const PlanKey key = KeyOf(source, destination, options);
  LastPlan& last = tLast;
  if (last.key == key && source.data != nullptr && destination.data != nullptr) {
    plan = last.plan;
    return CheckOverlap(source, destination, plan);
  }
  ConversionResult checked = MakePlan(source, destination, options, plan);
  if (checked.IsOK() && plan.walk == WalkKind::kLines && IsOwnOf(plan.converter, source, destination)) {
    last = {key, plan};
  }
  return checked;
}

}  // namespace LmImagingLib
