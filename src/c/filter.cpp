// Filters, for C.
#include <cmath>

#include "c/handles.h"
#include "c/structs.h"
#include "image/refusal.h"

namespace LmImagingLib::C {

namespace {

using SetEntry = LmBaseLib::Result (RGBFilter::*)(unsigned long index, unsigned short value, bool update);
constexpr SetEntry kSetEntry[] = {&RGBFilter::SetRedValue, &RGBFilter::SetGreenValue, &RGBFilter::SetBlueValue};

/// Refuses numbers below `least`, and those that are not finite.
void CheckNumbers(const double* values, const char* name, double least) {
  for (std::size_t i = 0; i < 3; ++i) {
    if (values[i] >= least && std::isfinite(values[i])) continue;
    Refuse(std::string(name) + " has " + std::to_string(values[i]) + "; allowed: finite numbers" +
           (least == 0 ? ", 0 or more" : ""));
  }
}

}  // namespace

}  // namespace LmImagingLib::C

using namespace LmImagingLib;
using namespace LmImagingLib::C;

LmiCode lmiCreateFilter(uint32_t bitSize, LmiFilter** filter) {
  return Call([&]() -> ConversionResult {
    RequirePointer(filter, "filter");
    if (bitSize < 1 || bitSize > 16) return Refused("bitSize is " + std::to_string(bitSize) + "; allowed: 1 to 16");
    *filter = new LmiFilter{RGBFilter(bitSize)};
    return {};
  });
}

void lmiFreeFilter(LmiFilter* filter) { delete filter; }

LmiCode lmiSetGains(LmiFilter* filter, const double* gains, const uint16_t* offsets) {
  return Call([&]() -> ConversionResult {
    RequirePointer(filter, "filter");
    RequirePointer(gains, "gains");
    CheckNumbers(gains, "gains", 0);
    const auto offset = [offsets](std::size_t i) { return offsets != nullptr ? offsets[i] : std::uint16_t{0}; };
    return {filter->filter.SetMultipliers(gains[0], gains[1], gains[2], offset(0), offset(1), offset(2)), ""};
  });
}

LmiCode lmiSetTable(LmiFilter* filter, uint32_t channel, const uint16_t* values, size_t count) {
  return Call([&]() -> ConversionResult {
    RequirePointer(filter, "filter");
    RequirePointer(values, "values");
    CheckChoice(channel, "channel", {"LMI_RED", "LMI_GREEN", "LMI_BLUE"});
    const unsigned long entries = filter->filter.GetEntryCount();
    if (count != entries) {
      return Refused("count is " + std::to_string(count) + "; the table has " + std::to_string(entries) + " entries");
    }
    for (std::size_t i = 0; i < count; ++i) {
      if (values[i] < entries) continue;
      return Refused("values has " + std::to_string(values[i]) + " at index " + std::to_string(i) + "; allowed: 0 to " +
                     std::to_string(entries - 1));
    }
    const SetEntry setEntry = kSetEntry[channel];
    for (std::size_t i = 0; i < count; ++i) {
      (filter->filter.*setEntry)(static_cast<unsigned long>(i), values[i], i + 1 == count);
    }
    return {};
  });
}

LmiCode lmiSetCurve(LmiFilter* filter, const LmiCurve* curve) {
  return Call([&]() -> ConversionResult {
    RequirePointer(filter, "filter");
    const LmiCurve given = Known(curve, "curve");
    CheckNumbers(given.black, "curve.black", 0);
    CheckNumbers(given.gains, "curve.gains", 0);
    CheckNumbers(given.offsets, "curve.offsets", -HUGE_VAL);
    const ToneCurve tone = ToneOf(given.tone, ToneCurve::kLinear, "curve.tone");
    const RGBValues gains = GainsOf(given.gains);
    return {filter->filter.SetCurve({given.black[0], gains.red, given.offsets[0]},
                                    {given.black[1], gains.green, given.offsets[1]},
                                    {given.black[2], gains.blue, given.offsets[2]}, tone),
            ""};
  });
}
