#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "convert_files.h"
#include "options.h"

namespace LmTool {

/// The arguments of `convert`.
struct ConvertArguments {
  std::vector<std::string> files;
  std::string directory;
  std::string ending = "png";
  LmImagingLib::PixelTypeID from = 0x420006;  // that of pictures in colour
  LmImagingLib::PixelTypeID to = 0;
  ImageSize size;
  std::size_t lineSize = 0;
  std::optional<FrameRange> frames;
  MosaicLayout mosaic;
  unsigned long flags = 0;
  unsigned long named = 0;  // range and matrix of YUV, by the name of the source's type
  ColorArguments colors;
  std::optional<unsigned long> method;  ///< of demosaicing, as --development says
  LmImagingLib::ConversionDepth depth = LmImagingLib::ConversionDepth::kFull;
  unsigned jobs = 0;  ///< 0 for the processors
  unsigned threads = 1;
  CLI::App* command = nullptr;

  bool Given(const char* option) const { return command->count(option) != 0; }
};

/// The sources with what each is to become.
/// @throws ToolError
std::vector<FilePair> FilePairsOf(const ConvertArguments& arguments);

/// Refuses arguments that do not fit each other.
/// @throws ToolError
void CheckArguments(const ConvertArguments& arguments, const std::vector<FilePair>& pairs);

/// The flags of the conversion: those of the options, with the best method for a mosaic unless one is given.
unsigned long FlagsOf(const ConvertArguments& arguments);

/// Prints a note if options that change colours do nothing.
void NoteUnusedColors(const ConvertArguments& arguments, bool toPicture);

}  // namespace LmTool
