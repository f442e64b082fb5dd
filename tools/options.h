#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "LmImagingLib/PixelTypeID.h"
#include "image.h"

namespace LmTool {

/// Adds an option whose value names a pixel type.
CLI::Option* AddTypeOption(CLI::App& command, const std::string& name, LmImagingLib::PixelTypeID& value,
                           const std::string& description);

/// Adds the required `--size WIDTHxHEIGHT`.
CLI::Option* AddSizeOption(CLI::App& command, ImageSize& size);

/// Adds `--bayer` and `--field-order`, which set bits of the conversion flags.
void AddLayoutOptions(CLI::App& command, unsigned long& flags);

/// Adds `--demosaic`, which sets a bit of the conversion flags.
void AddDemosaicOption(CLI::App& command, unsigned long& flags);

/// Red, green and blue.
struct Triple {
  double red, green, blue;
};

/// Adds an option of three numbers between commas, each from 0 to `most`.
CLI::Option* AddTripleOption(CLI::App& command, const std::string& name, Triple& value, double most,
                             const std::string& description);

}  // namespace LmTool
