#include "image/plan.h"

#include <algorithm>
#include <array>

#include "LmImagingLib/PixelTypeFactory.h"
#include "converters/chain.h"
#include "converters/identity.h"
#include "converters/library_converter.h"
#include "factory/replacements.h"
#include "image/flags.h"
#include "image/plan_checks.h"
#include "image/refusal.h"
#include "image/views.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

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

bool Overlap(const void* source, std::size_t sourceBytes, const void* destination, std::size_t destinationBytes) {
  const auto from = reinterpret_cast<std::uintptr_t>(source);
  const auto to = reinterpret_cast<std::uintptr_t>(destination);
  return from < to ? to - from < sourceBytes : from - to < destinationBytes;
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
