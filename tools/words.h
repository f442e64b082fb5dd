#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/ToneCurve.h"

namespace LmTool {

/// A word for conversion flags.
struct Choice {
  const char* word;
  unsigned long flag;
};

/// The methods of demosaicing.
inline constexpr Choice kDemosaics[] = {{"block", LmImagingLib::ConversionFlags::kNone},
                                        {"bilinear", LmImagingLib::ConversionFlags::kBilinear},
                                        {"mhc", LmImagingLib::ConversionFlags::kGradientCorrected},
                                        {"adaptive", LmImagingLib::ConversionFlags::kAdaptive},
                                        {"half", LmImagingLib::ConversionFlags::kHalfSize}};

/// The words of a table, between bars.
template <std::size_t kCount>
std::string WordsOf(const Choice (&choices)[kCount]) {
  std::string words;
  for (const Choice& choice : choices) words += (words.empty() ? "" : "|") + std::string(choice.word);
  return words;
}

/// The tone that a text names: linear, srgb, bt709 or a gamma. Empty for any other text.
std::optional<LmImagingLib::ToneCurve> ParseTone(const std::string& text);
inline constexpr const char* kTones = "linear, srgb, bt709, or a gamma of 0.1 to 10";

/// The flag of the method of demosaicing that a word names; empty for any other word.
std::optional<unsigned long> ParseMethod(const std::string& word);

}  // namespace LmTool
