#include "words.h"

#include "numbers.h"

namespace LmTool {

using namespace LmImagingLib;

std::optional<ToneCurve> ParseTone(const std::string& text) {
  if (text == "linear") return ToneCurve{ToneCurve::kLinear};
  if (text == "srgb") return ToneCurve{ToneCurve::kSRGB};
  if (text == "bt709") return ToneCurve{ToneCurve::kBT709};
  double gamma = 0;
  if (!ParseNumber(text, gamma) || !(gamma >= 0.1 && gamma <= 10)) return std::nullopt;
  return ToneCurve{ToneCurve::kGamma, gamma};
}

std::optional<unsigned long> ParseMethod(const std::string& word) {
  for (const Choice& choice : kDemosaics) {
    if (word == choice.word) return choice.flag;
  }
  return std::nullopt;
}

}  // namespace LmTool
