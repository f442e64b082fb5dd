#include "colors.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "error.h"
#include "numbers.h"
#include "terminal.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

RGBValues ValuesOf(const Triple& triple) { return {triple.red, triple.green, triple.blue}; }

bool IsAll(const Triple& triple, double value) {
  return triple.red == value && triple.green == value && triple.blue == value;
}

// As `--gain` is given again, so that the printed gains make the same picture.
double Kept(double gain) { return std::round(gain * 10000) / 10000; }

Triple EstimatedGain(const ColorArguments& arguments, const RawFrame& frame, const std::string& name,
                     std::ostream& notes) {
  WhiteBalanceOptions options = *arguments.balance;
  options.flags = frame.flags & kFrameFlags;
  options.black = ValuesOf(arguments.black);
  const WhiteBalance found = EstimateWhiteBalance(ViewOf(frame), options);
  if (!found.result.IsOK()) throw ToolError("--white-balance", found.message);
  if (!found.IsFound()) {
    notes << "lmimaging: note: the white balance of '" << Printable(name) << "' stays as it is, because "
          << found.message << '\n';
  }
  const Triple gain{Kept(found.gains.red), Kept(found.gains.green), Kept(found.gains.blue)};
  if (found.IsFound()) {
    notes << "lmimaging: white balance of '" << Printable(name) << "': --gain " << ShortText(gain.red) << ','
          << ShortText(gain.green) << ',' << ShortText(gain.blue) << '\n';
  }
  return gain;
}

}  // namespace

bool ColorArguments::Change() const {
  return develops || balance || tone.kind != ToneCurve::kLinear || !IsAll(gain, 1) || !IsAll(offset, 0) ||
         !IsAll(black, 0);
}

Colors::Colors(const ColorArguments& arguments, ConversionDepth depth, const RawFrame& frame, const std::string& name,
               std::ostream& notes)
    : mDepth(depth) {
  if (!arguments.Change()) return;
  const Triple gain = arguments.balance ? EstimatedGain(arguments, frame, name, notes) : arguments.gain;
  if (arguments.develops) {
    MakeDevelopment(arguments, gain, frame.flags);
  } else {
    MakeFilter(arguments, gain, SampleDepth(frame.type).value_or(8));
  }
}

Treatment Colors::AsTreatment() const {
  return {mFilter ? &*mFilter : nullptr, mDevelopment ? &*mDevelopment : nullptr, mDepth};
}

void Colors::MakeFilter(const ColorArguments& arguments, const Triple& gain, unsigned bits) {
  const auto& [black, offset] = std::tie(arguments.black, arguments.offset);
  mFilter.emplace(8);  // offsets are in 8-bit steps; conversions derive tables of other depths
  const bool isCurve = !IsAll(black, 0) || arguments.tone.kind != ToneCurve::kLinear ||
                       std::min({offset.red, offset.green, offset.blue}) < 0;
  if (isCurve) {
    const double step = std::ldexp(1.0, 8 - static_cast<int>(bits));
    mFilter->SetCurve({black.red * step, gain.red, offset.red}, {black.green * step, gain.green, offset.green},
                      {black.blue * step, gain.blue, offset.blue}, arguments.tone);
  } else {
    mFilter->SetMultipliers(gain.red, gain.green, gain.blue, static_cast<unsigned short>(offset.red),
                            static_cast<unsigned short>(offset.green), static_cast<unsigned short>(offset.blue));
  }
}

void Colors::MakeDevelopment(const ColorArguments& arguments, const Triple& gain, unsigned long flags) {
  DevelopmentSettings settings;
  settings.correctsDefects = arguments.defects.has_value();
  settings.defectThreshold = arguments.defects.value_or(0);
  settings.black = ValuesOf(arguments.black);
  settings.gains = ValuesOf(gain);
  settings.method = flags & kMethodFlags;
  settings.matrix = arguments.matrix;
  settings.tone = arguments.tone;
  settings.depth = mDepth;
  mDevelopment.emplace();
  if (const ConversionResult made = Development::Make(settings, *mDevelopment); !made.IsOK()) {
    throw ToolError("--development", made.message);
  }
}

}  // namespace LmTool
