// The properties of the element, and what they mean together.
#include "settings.h"

#include "conversion.h"
#include "error.h"
#include "words.h"

namespace LmGst {

using namespace LmImagingLib;

namespace {

// Keeps what `parse` returns, or the message of its fault.
template <class Value, class Parse>
void SetMeaning(Meaning<Value>& meaning, const std::string& text, Parse parse) {
  meaning = {text, std::nullopt, {}};
  if (text.empty()) return;
  try {
    meaning.value = parse();
  } catch (const LmTool::ToolError& error) {
    meaning.fault = error.what();
  }
}

}  // namespace

void Settings::SetFormat(const std::string& text) {
  SetMeaning(format, text, [&] {
    const LmTool::NamedType named = LmTool::FindNamedType("format", text);
    if (LmTool::IsMosaic(named.id) && named.mosaic == 0) {
      throw LmTool::ToolError("format", "'" + text +
                                            "' does not say which colours its mosaic begins with; allowed: a PFNC "
                                            "name, such as BayerRG12p");
    }
    return named;
  });
}

void Settings::SetDevelopment(const std::string& text) {
  SetMeaning(development, text, [&] { return LmTool::ReadDevelopmentFile("development-file", text); });
}

void Settings::SetTone(const std::string& text) {
  SetMeaning(tone, text, [&] {
    const std::optional<ToneCurve> curve = LmTool::ParseTone(text);
    if (!curve) throw LmTool::ToolError("tone", "'" + text + "' is unknown; allowed: " + LmTool::kTones);
    return *curve;
  });
}

const std::string& Settings::Fault() const {
  return !format.fault.empty() ? format.fault : !development.fault.empty() ? development.fault : tone.fault;
}

unsigned long Settings::Method() const {
  const std::optional<unsigned long> inFile = development.value ? development.value->method : std::nullopt;
  return method ? *method : inFile.value_or(ConversionFlags::kAdaptive);
}

LmTool::ColorArguments Settings::Colors() const {
  LmTool::ColorArguments colors = development.value ? development.value->colors : LmTool::ColorArguments{};
  colors.gain = {red.value_or(colors.gain.red), green.value_or(colors.gain.green), blue.value_or(colors.gain.blue)};
  if (black) colors.black = {*black, *black, *black};
  colors.tone = tone.value.value_or(colors.tone);
  return colors;
}

ConversionDepth Settings::Depth() const {
  return development.value ? development.value->depth.value_or(ConversionDepth::kFull) : ConversionDepth::kFull;
}

}  // namespace LmGst
