#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "colors.h"

namespace LmTool {

/// Adds an option of three numbers between commas, each from `least` to `most`.
/// @param one  whether a single number stands for three equal ones
CLI::Option* AddTripleOption(CLI::App& command, const std::string& name, Triple& value, double most,
                             const std::string& description, double least = 0, bool one = false);

/// The tone that a text names: linear, srgb, bt709 or a gamma. Empty for any other text.
std::optional<LmImagingLib::ToneCurve> ParseTone(const std::string& text);
inline constexpr const char* kTones = "linear, srgb, bt709, or a gamma of 0.1 to 10";

/// Adds `--tone`, `--white-balance`, `--matrix` and `--defects`.
void AddColorOptions(CLI::App& command, ColorArguments& colors);

}  // namespace LmTool
