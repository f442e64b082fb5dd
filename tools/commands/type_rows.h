#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"
#include "type_variants.h"

namespace LmTool {

/// Each type as one that has no variants, or variants folded into the first type of their format.
std::vector<TypeWithVariants> RowsOf(const std::vector<LmImagingLib::PixelTypeID>& types, bool all);

/// The registered name, and after it how many variants are folded into the row: "Grayscale8-bits +6".
std::string NameOfRow(const TypeWithVariants& row);

/// Prints a list of types with the names that cameras have for them.
/// @param loss  the bits that a conversion to or from a type loses, in words
/// @return the number of types that have no row
std::size_t PrintTypes(const std::vector<LmImagingLib::PixelTypeID>& types, bool all,
                       const std::function<std::string(const LmImagingLib::PixelTypeID&)>& loss);

/// Says how many types or pairs a list has left out, and how to see them; prints nothing where it has all.
void PrintOmitted(std::size_t omitted, const char* things);

/// Adds `--all`, which gives variants rows of their own.
void AddAllOption(CLI::App& command, bool& all);

}  // namespace LmTool
