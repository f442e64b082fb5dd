#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"
#include "colors.h"
#include "conversion.h"
#include "progress.h"
#include "raw_file.h"

namespace LmTool {

/// How files are converted.
struct Conversion {
  RawFormat from;                               ///< of sources that are no pictures
  std::optional<FrameRange> frames;             ///< of those; empty where a file is one frame
  std::optional<LmImagingLib::PixelTypeID> to;  ///< empty for the type that shows the source best, in a picture
  ColorArguments colors;
  LmImagingLib::ConversionDepth depth = LmImagingLib::ConversionDepth::kFull;
  unsigned threads = 1;  ///< the most that work on one frame
};

/// A file to read and the one to write.
struct FilePair {
  std::filesystem::path source, destination;
};

/// Converts the frames of a file, one at a time. Raw frames go to one file, one after the other. Pictures of `frames`
/// are numbered, "name-0007.png", unless a single one is asked for.
/// Any number of threads may convert different files at the same time.
/// @param notes  receives reports, such as the white balance that was found
/// @throws ToolError; the file that was being written is not there then
void ConvertFile(const FilePair& files, const Conversion& conversion, Progress& progress, std::ostream& notes);

/// The frames that `ConvertFile` would convert, for showing progress; 0 if that is unknown.
std::size_t CountFrames(const std::filesystem::path& source, const Conversion& conversion);

}  // namespace LmTool
