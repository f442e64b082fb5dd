// White balance, for C.
#include "LmImagingLib/WhiteBalance.h"
#include "c/structs.h"

namespace LmImagingLib::C {

namespace {

WhiteBalanceOptions KnownOptions(const LmiWhiteBalanceOptions* given) {
  const LmiWhiteBalanceOptions known = KnownOrDefault(given, "options");
  CheckChoice(known.method, "options.method", {"LMI_GRAY_WORLD", "LMI_WHITE_PATCH", "LMI_RECTANGLE"});
  constexpr WhiteBalanceOptions::Method kMethods[] = {WhiteBalanceOptions::kGrayWorld, WhiteBalanceOptions::kWhitePatch,
                                                      WhiteBalanceOptions::kRectangle};
  return {kMethods[known.method], Narrow(known.x), Narrow(known.y),      Narrow(known.width),
          Narrow(known.height),   known.flags,     ValuesOf(known.black)};
}

}  // namespace

}  // namespace LmImagingLib::C

using namespace LmImagingLib;
using namespace LmImagingLib::C;

LmiCode lmiEstimateWhiteBalance(const LmiImage* source, const LmiWhiteBalanceOptions* options,
                                LmiWhiteBalance* estimate) {
  return Call([&]() -> ConversionResult {
    CheckStruct(estimate, "estimate");
    WhiteBalance found = EstimateWhiteBalance(C::ViewOf(source, "source"), KnownOptions(options));
    if (found.result.IsOK()) {
      Give({0,
            {found.gains.red, found.gains.green, found.gains.blue},
            found.cells,
            found.usableCells,
            found.IsFound() ? 1U : 0U,
            0},
           estimate);
    }
    return {found.result, std::move(found.message)};
  });
}
