#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

#include "LmImagingLib/Development.h"
#include "converters/bayer_converter.h"
#include "converters/color_developer.h"
#include "converters/line_decoder.h"
#include "filter/development_tables.h"
#include "image/bands.h"
#include "image/flags.h"
#include "image/frames.h"
#include "image/plan.h"
#include "image/refusal.h"
#include "walk/streams.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

constexpr unsigned long kMethods[] = {ConversionFlags::kNone, ConversionFlags::kBilinear,
                                      ConversionFlags::kGradientCorrected, ConversionFlags::kAdaptive,
                                      ConversionFlags::kHalfSize};

std::string Shown(double value) {
  std::string text = std::to_string(value);
  text.erase(text.find_last_not_of('0') + 1);
  if (!text.empty() && text.back() == '.') text.pop_back();
  return text;
}

ConversionResult CheckValues(const char* name, const RGBValues& values, double most) {
  for (const double value : {values.red, values.green, values.blue}) {
    if (!(value >= 0 && value <= most)) {
      return Refused(std::string("settings.") + name + " has " + Shown(value) + "; allowed: 0 to " + Shown(most));
    }
  }
  return {};
}

ConversionResult CheckMatrix(const ColorMatrix& matrix) {
  for (std::size_t row = 0; row < 3; ++row) {
    double sum = 0;
    for (std::size_t column = 0; column < 3; ++column) sum += std::abs(matrix[3 * row + column]);
    if (!(sum <= 7)) {
      return Refused("settings.matrix has row " + std::to_string(row + 1) + ", whose absolute values sum to " +
                     Shown(sum) + "; allowed: at most 7");
    }
  }
  return {};
}

ConversionResult CheckSettings(const DevelopmentSettings& settings) {
  if (std::find(std::begin(kMethods), std::end(kMethods), settings.method) == std::end(kMethods)) {
    return Refused("settings.method is " + Hex(settings.method) +
                   "; allowed: kNone (0), kBilinear (0x100), kGradientCorrected (0x200), kAdaptive (0x400) and "
                   "kHalfSize (0x10000)");
  }
  if (settings.defectThreshold > 65535) {
    return Refused("settings.defectThreshold is " + std::to_string(settings.defectThreshold) + "; allowed: 0 to 65535");
  }
  if (!settings.tone.IsValid()) {
    return Refused(settings.tone.kind == ToneCurve::kGamma
                       ? "settings.tone.gamma is " + Shown(settings.tone.gamma) + "; allowed: a number above 0"
                       : "settings.tone.kind is " + std::to_string(settings.tone.kind) +
                             "; allowed: kLinear (0), kSRGB (1), kBT709 (2) and kGamma (3)");
  }
  if (settings.depth != ConversionDepth::kFull && settings.depth != ConversionDepth::kEightBits) {
    return Refused("settings.depth is " + std::to_string(static_cast<int>(settings.depth)) +
                   "; allowed: kFull (0) and kEightBits (1)");
  }
  for (ConversionResult checked : {CheckValues("black", settings.black, 65535),
                                   CheckValues("gains", settings.gains, 1000), CheckMatrix(settings.matrix)}) {
    if (!checked.IsOK()) return checked;
  }
  return {};
}

constexpr char kOutOfMemory[] = "out of memory";  // short enough to need none

/// A development of an image that was found to be possible.
struct DevelopmentPlan {
  ConversionPlan conversion;
  ConvertOptions options;
  std::optional<SourceType> source;
  bool isMosaic = false;
  const Writer* writer = nullptr;
};

ConversionResult FindWays(const ConstImageView& source, const ImageView& destination, DevelopmentPlan& plan) {
  const TypeRow* const from = FindTypeRow(source.type);
  const TypeRow* const to = FindTypeRow(destination.type);
  if (from == nullptr || from->types->reach == Reach::kGrays) {
    return Refused("source.type is " + Label(source.type) +
                   "; a development takes a mosaic or colours, of the library's own types");
  }
  plan.source.emplace(*from);
  plan.isMosaic = from->types->reach == Reach::kMosaic;
  if (to != nullptr && to->types->reach != Reach::kMosaic) plan.writer = FindWriter(*from, destination.type);
  if (plan.writer != nullptr) return {};
  return {Result::NOT_IMPLEMENTED, "destination.type is " + Label(destination.type) +
                                       "; a development makes RGB, BGR and gray, of 8 bits or more"};
}

ConversionResult PlanDevelopment(const DevelopmentSettings& settings, const ConstImageView& source,
                                 const ImageView& destination, const DevelopOptions& options, DevelopmentPlan& plan) {
  if (ConversionResult checked =
          CheckFrameFlags(source, options.flags, ConversionFlags::kOpaque | ConversionFlags::kReadLater);
      !checked.IsOK()) {
    return checked;
  }
  const TypeRow* const row = FindTypeRow(source.type);
  const bool isMosaic = row != nullptr && row->types->reach == Reach::kMosaic;
  plan.options.flags = options.flags | (isMosaic ? settings.method : ConversionFlags::kNone);
  plan.options.depth = settings.depth;
  plan.options.firstLine = options.firstLine;
  plan.options.lines = options.lines;
  plan.options.threads = options.threads;
  plan.options.executor = options.executor;
  if (ConversionResult refused = PlanConversion(source, destination, plan.options, plan.conversion); !refused.IsOK()) {
    return refused;
  }
  return FindWays(source, destination, plan);
}

Frame FrameOf(const DevelopmentPlan& plan, const ConstImageView& source, const ImageView& destination) {
  const ConversionPlan& conversion = plan.conversion;
  Frame frame = SourceFrame(source, conversion.sourceLine, source.type);
  frame.destination = static_cast<std::uint8_t*>(destination.data);
  frame.destinationLine = static_cast<std::size_t>(conversion.destinationLine);
  frame.destinationHeight = conversion.DestinationHeight();
  frame.destinationPlanes = PlaneCount(destination.type);
  frame.pixels = conversion.DestinationWidth();
  frame.flags = static_cast<std::uint32_t>(FlagsOf(plan.options));
  return frame;
}

void Run(const DevelopmentPlan& plan, const DevelopmentTables& tables, unsigned depth, Frame frame) {
  const ConversionPlan& conversion = plan.conversion;
  const SourceType& source = *plan.source;
  const bool inFull = plan.options.depth == ConversionDepth::kFull;
  frame.development = &tables.Steps(depth, inFull ? std::max(plan.writer->depth, 8U) : 8);
  std::optional<BayerConverter> mosaic;
  if (plan.isMosaic) {
    mosaic.emplace(source, *plan.writer, conversion.converter->GetSourceTypeID(),
                   conversion.converter->GetDestinationTypeID());
  }
  const auto developBand = [&](std::uint32_t first, std::uint32_t end) {
    Frame own = frame;
    const StreamScope streams(own, conversion.end - conversion.first);
    if (mosaic) {
      mosaic->ConvertLines(own, first, end);
    } else {
      DevelopColors(source, *plan.writer, own, first, end);
    }
  };
  ConvertInBands(plan.options, conversion.DestinationFirst(), conversion.DestinationEnd(),
                 conversion.sourceLine + conversion.destinationLine, developBand);
}

}  // namespace

Development::Development() : mTables(std::make_shared<DevelopmentTables>(DevelopmentSettings{})) {}

Development::Development(const Development& other) = default;
Development& Development::operator=(const Development& other) = default;
Development::~Development() = default;

ConversionResult Development::Make(const DevelopmentSettings& settings, Development& made) {
  try {
    if (ConversionResult refused = CheckSettings(settings); !refused.IsOK()) return refused;
    made.mTables = std::make_shared<DevelopmentTables>(settings);
    return {};
  } catch (const std::bad_alloc&) {
    return {Result::NOT_ENOUGH_MEMORY, kOutOfMemory};
  }
}

const DevelopmentSettings& Development::Settings() const { return mTables->settings; }

ConversionResult Develop(const Development& development, const ConstImageView& source, const ImageView& destination,
                         const DevelopOptions& options) {
  try {
    const DevelopmentTables& tables = TablesOf(development);
    DevelopmentPlan plan;
    ConversionResult refused = PlanDevelopment(tables.settings, source, destination, options, plan);
    if (plan.writer == nullptr) return refused;  // the writer is found last
    Run(plan, tables, *SampleDepth(source.type), FrameOf(plan, source, destination));
    return {};
  } catch (const std::bad_alloc&) {
    return {Result::NOT_ENOUGH_MEMORY, kOutOfMemory};
  }
}

}  // namespace LmImagingLib
