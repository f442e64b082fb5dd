#include "commands/convert_options.h"

#include <algorithm>
#include <iostream>
#include <set>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "error.h"
#include "picture_file.h"
#include "pixel_type_names.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

namespace fs = std::filesystem;

// All destinations have one ending.
void CheckDestination(const ConvertArguments& arguments, const fs::path& destination) {
  const std::optional<PictureFormat> format = PictureFormatOf(destination);
  const bool isStream = IsStandardStream(destination);
  if (!arguments.Given("--to") && !format) {
    throw ToolError("--to", "is missing; only pictures go without it, whose names end in " + PictureEndings() +
                                (isStream ? "; the standard output takes raw frames" : ""));
  }
  if (format && IsGrayOnly(*format) && arguments.Given("--to") && !IsGray(arguments.to) && !IsMosaic(arguments.to)) {
    throw ToolError("DESTINATION", "'" + destination.string() + "' holds grays, but --to " + Label(arguments.to) +
                                       " has colours; allowed: a gray --to, or " + PictureEndings() + " without .pgm");
  }
}

void CheckFiles(const ConvertArguments& arguments, const std::vector<FilePair>& pairs) {
  const auto isPicture = [](const fs::path& path) { return PictureFormatOf(path).has_value(); };
  for (const FilePair& files : pairs) {
    CheckEnding("SOURCE", files.source);
    CheckEnding("DESTINATION", files.destination);
  }
  const auto raw = std::find_if(pairs.begin(), pairs.end(), [&](const FilePair& p) { return !isPicture(p.source); });
  if (raw == pairs.end()) {
    for (const char* const option : {"--from", "--size", "--line-size", "--frames"}) {
      if (arguments.Given(option)) {
        throw ToolError(option, "is for raw frames; '" + pairs.front().source.string() +
                                    "' is a picture, which has "
                                    "a type and a size of its own");
      }
    }
  } else {
    for (const char* const option : {"--from", "--size"}) {
      if (!arguments.Given(option)) {
        throw ToolError(option, "is missing; '" + raw->source.string() +
                                    "' is a raw frame, for its name ends in none of " + PictureEndings());
      }
    }
  }
  CheckDestination(arguments, pairs.front().destination);
  if (arguments.lineSize == 0) return;
  if (!RequiredSize(arguments.from, arguments.size.width, arguments.size.height, arguments.lineSize)) {
    throw ToolError("--line-size",
                    "'" + std::to_string(arguments.lineSize) + "' is too small; a line of " +
                        std::to_string(arguments.size.width) + " pixels of " + Label(arguments.from) + " takes " +
                        std::to_string(*RequiredSize(arguments.from, arguments.size.width, 1)) + " bytes");
  }
}

bool Demosaics(const ConvertArguments& arguments) {
  return IsMosaic(arguments.from) && (!arguments.Given("--to") || !IsMosaic(arguments.to));
}

// A layout is never guessed: a wrong one swaps red and blue.
void CheckMosaic(const ConvertArguments& arguments) {
  if (IsMosaic(arguments.from)) {
    if (Demosaics(arguments) && arguments.mosaic.Flag() == 0) {
      throw ToolError("--bayer", "is missing; " + Label(arguments.from) +
                                     " does not say which colours its mosaic begins with; allowed: GR|RG|GB|BG, or a "
                                     "PFNC name as --from, such as BayerRG8");
    }
    return;
  }
  for (const char* const option : {"--bayer", "--demosaic", "--filter-order", "--defects"}) {
    if (arguments.Given(option)) {
      throw ToolError(option, "is for mosaics; " + Label(arguments.from) + " is none");
    }
  }
}

void CheckColors(const ConvertArguments& arguments) {
  if (arguments.colors.balance && arguments.Given("--gain")) {
    throw ToolError("--white-balance", "finds the gains, and --gain gives them; allowed: one of the two");
  }
  for (const char* const option : {"--white-balance", "--matrix", "--development"}) {
    if (arguments.Given(option) && IsGray(arguments.from)) {
      throw ToolError(option, "is for colours and mosaics; " + Label(arguments.from) + " is gray");
    }
  }
  if (!arguments.colors.develops) return;
  for (const char* const option : {"--offset", "--filter-order"}) {
    if (arguments.Given(option)) {
      throw ToolError(option, "does not go with --matrix, --defects and --development; allowed: without them");
    }
  }
}

void CheckFrameBytes(const RawFormat& format) {
  if (format.lineSize != 0 && format.FrameBytes() > kMostFrameBytes) {
    throw ToolError("--line-size", "'" + std::to_string(format.lineSize) + "' makes frames of " +
                                       std::to_string(format.FrameBytes()) + " bytes; allowed: at most " +
                                       std::to_string(kMostFrameBytes));
  }
}

}  // namespace

std::vector<FilePair> FilePairsOf(const ConvertArguments& arguments) {
  const std::vector<std::string>& files = arguments.files;
  if (!arguments.Given("--output")) {
    if (arguments.Given("--as")) throw ToolError("--as", "goes with --output; without it DESTINATION's ending decides");
    if (files.empty()) throw ToolError("SOURCE", "is missing; allowed: SOURCE DESTINATION, or SOURCE... --output DIR");
    if (files.size() == 1) throw ToolError("DESTINATION", "is missing; name a file, or a directory by --output DIR");
    if (files.size() > 2) {
      throw ToolError("DESTINATION", "'" + files[2] +
                                         "' is one file name too many; allowed: SOURCE DESTINATION, or "
                                         "SOURCE... --output DIR");
    }
    return {{files[0], files[1]}};
  }
  if (files.empty()) throw ToolError("SOURCE", "is missing; --output takes one file or more to read");
  std::vector<FilePair> pairs;
  std::set<fs::path> destinations;
  for (const std::string& source : files) {
    if (IsStandardStream(source)) {
      throw ToolError("SOURCE",
                      "'-' is the standard input, which has no name for --output; allowed: SOURCE DESTINATION");
    }
    const fs::path destination =
        fs::path(arguments.directory) / fs::path(source).filename().replace_extension(arguments.ending);
    std::error_code ignored;
    if (fs::equivalent(source, destination, ignored)) {
      throw ToolError("--output", "'" + arguments.directory + "' is where '" + source +
                                      "' lies, which would be replaced; "
                                      "allowed: another directory, or another ending by --as");
    }
    if (!destinations.insert(destination).second) {
      throw ToolError("SOURCE", "'" + source + "' and another source would both become '" + destination.string() +
                                    "'; allowed: sources whose names differ before their ending");
    }
    pairs.push_back({source, destination});
  }
  return pairs;
}

void CheckArguments(const ConvertArguments& arguments, const std::vector<FilePair>& pairs) {
  CheckFiles(arguments, pairs);
  CheckMosaic(arguments);
  CheckColors(arguments);
  for (const char* const option : {"--yuv-range", "--yuv-matrix"}) {
    if (arguments.Given(option) && (arguments.from & kColorSpaceMask) != kColorSpaceYUV) {
      throw ToolError(option, "is for YUV types; " + Label(arguments.from) + " is none");
    }
  }
  if (arguments.Given("--field-order") && (arguments.from & kInterlacedFlag) == 0) {
    throw ToolError("--field-order", "is for interlaced types; " + Label(arguments.from) + " is none");
  }
  CheckFrameBytes({arguments.from, arguments.size, 0, arguments.lineSize});
}

unsigned long FlagsOf(const ConvertArguments& arguments) {
  unsigned long flags = arguments.flags | arguments.mosaic.Flag();
  if (!arguments.Given("--yuv-range")) flags |= arguments.named & ConversionFlags::kFullRange;
  if (!arguments.Given("--yuv-matrix")) flags |= arguments.named & ConversionFlags::kBT709;
  if (!Demosaics(arguments)) return flags;
  if (!arguments.Given("--demosaic")) flags |= arguments.method.value_or(ConversionFlags::kAdaptive);
  if (!arguments.Given("--filter-order")) flags |= ConversionFlags::kFilterFirst;
  return flags;
}

void NoteUnusedColors(const ConvertArguments& arguments, bool toPicture) {
  if (!arguments.colors.Change() || arguments.colors.develops) return;
  const bool fromGray = IsGray(arguments.from);
  const bool copied = arguments.to == arguments.from && !toPicture;
  if (fromGray || (arguments.Given("--to") && (copied || IsMosaic(arguments.to)))) {
    std::cerr << "lmimaging: note: --gain, --offset and the like do nothing "
              << (fromGray ? "from " + Label(arguments.from) : "to " + Label(arguments.to))
              << ", because only colours are balanced, and not in copies\n";
  }
}

}  // namespace LmTool
