#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "LmImagingLib/Development.h"
#include "LmImagingLib/RGBFilter.h"
#include "LmImagingLib/WhiteBalance.h"
#include "conversion.h"

namespace LmTool {

/// Red, green and blue.
struct Triple {
  double red, green, blue;
};

/// What is done to colours.
struct ColorArguments {
  Triple black{0, 0, 0};  ///< in steps of the samples
  Triple gain{1, 1, 1};
  Triple offset{0, 0, 0};  ///< in steps of 8-bit values
  LmImagingLib::ToneCurve tone;
  /// How to find the gains in the first frame of each file; empty to take those above.
  std::optional<LmImagingLib::WhiteBalanceOptions> balance;
  LmImagingLib::ColorMatrix matrix = LmImagingLib::kIdentityMatrix;
  std::optional<unsigned> defects;  ///< the threshold, 0 for the library's own; empty to leave defects alone
  bool develops = false;            ///< whether a development is needed, for more than tables do

  /// Whether they change colours.
  bool Change() const;
};

/// The tables of a file's frames.
class Colors {
 public:
  /// Estimates the white balance if that is asked for, and reports it as an option.
  /// @param frame  the first one of the file
  /// @param name  of the file
  /// @param notes  receives the report
  /// @throws ToolError
  Colors(const ColorArguments& arguments, LmImagingLib::ConversionDepth depth, const RawFrame& frame,
         const std::string& name, std::ostream& notes);

  Treatment AsTreatment() const;

 private:
  void MakeFilter(const ColorArguments& arguments, const Triple& gain, unsigned bits);
  void MakeDevelopment(const ColorArguments& arguments, const Triple& gain, unsigned long flags);

  const LmImagingLib::ConversionDepth mDepth;
  std::optional<LmImagingLib::RGBFilter> mFilter;
  std::optional<LmImagingLib::Development> mDevelopment;
};

}  // namespace LmTool
