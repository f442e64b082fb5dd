#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "colors.h"

namespace LmTool {

/// Adds an option of three numbers between commas, each from `least` to `most`.
/// @param one  whether a single number stands for three equal ones
CLI::Option* AddTripleOption(CLI::App& command, const std::string& name, Triple& value, double most,
                             const std::string& description, double least = 0, bool one = false);

/// Adds `--tone`, `--white-balance`, `--matrix` and `--defects`.
void AddColorOptions(CLI::App& command, ColorArguments& colors);

}  // namespace LmTool
