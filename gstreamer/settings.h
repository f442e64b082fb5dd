#pragma once

#include <optional>
#include <string>

#include "colors.h"
#include "development_file.h"
#include "named_type.h"

namespace LmGst {

/// How the gains are found.
enum class Balance {
  kOff,    ///< they are given
  kGray,   ///< by the mean of the picture
  kWhite,  ///< by its brightest hundredth
};

/// A property that is a text, and what it means.
template <class Value>
struct Meaning {
  std::string text;
  std::optional<Value> value;  ///< empty for an empty text and for an invalid one
  std::string fault;           ///< why a text is invalid
};

/// The properties of the element.
struct Settings {
  Meaning<LmTool::NamedType> format;
  int width = 0, height = 0;  ///< where caps do not say them
  int framesNumerator = 0, framesDenominator = 1;
  unsigned stride = 0;  ///< 0 where caps or metadata of buffers say it
  Meaning<LmTool::DevelopmentFile> development;
  // What is given here wins over the file.
  std::optional<unsigned long> method;
  std::optional<double> red, green, blue, black;
  Meaning<LmImagingLib::ToneCurve> tone;
  Balance balance = Balance::kOff;
  unsigned threads = 1;

  /// Take a text, and keep its value, or why it is invalid.
  void SetFormat(const std::string& text);
  void SetDevelopment(const std::string& text);
  void SetTone(const std::string& text);

  /// Why they cannot be used; empty if they can.
  const std::string& Fault() const;
  /// The method of demosaicing, as a flag.
  unsigned long Method() const;
  /// The level of black, the gains and the rest.
  LmTool::ColorArguments Colors() const;
  LmImagingLib::ConversionDepth Depth() const;
};

}  // namespace LmGst
