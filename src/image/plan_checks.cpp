#include "image/plan_checks.h"

#include <algorithm>

#include "converters/chain.h"
#include "converters/library_converter.h"
#include "formats/source_type.h"
#include "image/flags.h"
#include "image/refusal.h"
#include "image/views.h"

namespace LmImagingLib {

namespace {

// The traits of a stage; of an application's converter none.
ConverterTraits TraitsOf(const PixelConverter& converter) {
  const LibraryConverter* const library = AsLibraryConverter(converter);
  return library != nullptr ? library->Traits() : ConverterTraits{};
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

}  // namespace

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

}  // namespace LmImagingLib
