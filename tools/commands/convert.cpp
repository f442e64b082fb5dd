#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <tuple>
#include <vector>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "commands/commands.h"
#include "convert_files.h"
#include "error.h"
#include "options.h"
#include "picture_file.h"
#include "pixel_type_names.h"
#include "terminal.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

namespace fs = std::filesystem;

struct Options {
  std::vector<std::string> files;
  std::string directory;
  std::string ending = "png";
  PixelTypeID from = 0x420006;  // that of pictures in colour
  PixelTypeID to = 0;
  ImageSize size;
  std::size_t lineSize = 0;
  std::optional<FrameRange> frames;
  MosaicLayout mosaic;
  unsigned long flags = 0;
  Triple gain{1, 1, 1};
  Triple offset{0, 0, 0};
  CLI::App* command = nullptr;

  bool Given(const char* option) const { return command->count(option) != 0; }
};

// The tables that the conversion looks colours up in; conversions use 8 bits, whatever the source has.
std::optional<RGBFilter> WhiteBalance(const Options& options, bool toPicture) {
  const auto& [gain, offset] = std::tie(options.gain, options.offset);
  const bool changes =
      gain.red != 1 || gain.green != 1 || gain.blue != 1 || offset.red != 0 || offset.green != 0 || offset.blue != 0;
  if (!changes) return std::nullopt;
  const bool fromGray = (options.from & kColorSpaceMask) == kColorSpaceGrayscale;
  const bool copied = options.to == options.from && !toPicture;
  if (fromGray || (options.Given("--to") && (copied || HasOneSample(options.to)))) {
    std::cerr << "lmimaging: note: --gain and --offset do nothing "
              << (fromGray ? "from " + Label(options.from) : "to " + Label(options.to))
              << ", because only colours are balanced, and not in copies\n";
  }
  std::optional<RGBFilter> filter(8);
  filter->SetMultipliers(gain.red, gain.green, gain.blue, static_cast<unsigned short>(offset.red),
                         static_cast<unsigned short>(offset.green), static_cast<unsigned short>(offset.blue));
  return filter;
}

// The sources with what each is to become.
std::vector<FilePair> Pairs(const Options& options) {
  const std::vector<std::string>& files = options.files;
  if (!options.Given("--output")) {
    if (options.Given("--as")) throw ToolError("--as", "goes with --output; without it DESTINATION's ending tells");
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
    const fs::path destination =
        fs::path(options.directory) / fs::path(source).filename().replace_extension(options.ending);
    std::error_code ignored;
    if (fs::equivalent(source, destination, ignored)) {
      throw ToolError("--output", "'" + options.directory + "' is where '" + source +
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

void CheckOptions(const Options& options, const std::vector<FilePair>& pairs) {
  const auto isPicture = [](const fs::path& path) { return PictureFormatOf(path).has_value(); };
  const auto raw = std::find_if(pairs.begin(), pairs.end(), [&](const FilePair& p) { return !isPicture(p.source); });
  if (raw == pairs.end()) {
    for (const char* const option : {"--from", "--size", "--line-size", "--frames"}) {
      if (options.Given(option)) {
        throw ToolError(option, "is for raw frames; '" + pairs.front().source.string() +
                                    "' is a picture, which tells "
                                    "its type and size itself");
      }
    }
  } else {
    for (const char* const option : {"--from", "--size"}) {
      if (!options.Given(option)) {
        throw ToolError(option, "is missing; '" + raw->source.string() +
                                    "' is a raw frame, for its name does not end "
                                    "in .png or .bmp");
      }
    }
  }
  if (!options.Given("--to") && !isPicture(pairs.front().destination)) {
    throw ToolError("--to", "is missing; only pictures, whose names end in .png or .bmp, go without it");
  }
  if (options.lineSize == 0) return;
  if (!RequiredSize(options.from, options.size.width, options.size.height, options.lineSize)) {
    throw ToolError("--line-size", "'" + std::to_string(options.lineSize) + "' is too small; a line of " +
                                       std::to_string(options.size.width) + " pixels of " + Label(options.from) +
                                       " takes " + std::to_string(*RequiredSize(options.from, options.size.width, 1)) +
                                       " bytes");
  }
}

// A layout is never guessed: a wrong one swaps red and blue.
void CheckMosaic(const Options& options) {
  if (IsMosaic(options.from)) {
    const bool demosaics = !options.Given("--to") || !IsMosaic(options.to);
    if (demosaics && options.mosaic.Flag() == 0) {
      throw ToolError("--bayer", "is missing; " + Label(options.from) +
                                     " does not say which colours its mosaic begins with; allowed: GR|RG|GB|BG, or a "
                                     "PFNC name as --from, such as BayerRG8");
    }
    return;
  }
  for (const char* const option : {"--bayer", "--demosaic"}) {
    if (options.Given(option)) {
      throw ToolError(option, "is for mosaics; " + Label(options.from) + " is none");
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

void MakeDirectory(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) throw ToolError("--output", "cannot make the directory '" + path + "': " + error.message());
}

void ConvertAll(const std::vector<FilePair>& pairs, const Conversion& conversion, Progress& progress) {
  std::size_t failures = 0;
  for (const FilePair& files : pairs) {
    try {
      ConvertFile(files, conversion, progress);
    } catch (const ToolError& error) {
      if (pairs.size() == 1) throw;
      progress.Hide();
      std::cerr << "lmimaging: " << Printable(error.what()) << '\n';
      ++failures;
    }
  }
  if (failures != 0) {
    throw std::runtime_error(std::to_string(failures) + " of " + std::to_string(pairs.size()) +
                             " files could not be converted");
  }
}

void Run(const Options& options) {
  const std::vector<FilePair> pairs = Pairs(options);
  CheckOptions(options, pairs);
  CheckMosaic(options);
  if (options.Given("--field-order") && (options.from & kInterlacedFlag) == 0) {
    throw ToolError("--field-order", "is for interlaced types; " + Label(options.from) + " is none");
  }
  const std::optional<RGBFilter> filter = WhiteBalance(options, PictureFormatOf(pairs.front().destination).has_value());
  Conversion conversion{{options.from, options.size, options.flags | options.mosaic.Flag(), options.lineSize},
                        options.frames,
                        std::nullopt,
                        filter ? &*filter : nullptr};
  if (options.Given("--to")) conversion.to = options.to;
  CheckFrameBytes(conversion.from);
  if (options.Given("--output")) MakeDirectory(options.directory);

  std::size_t frames = 0;
  for (const FilePair& files : pairs) frames += CountFrames(files.source, conversion);
  Progress progress(frames);
  ConvertAll(pairs, conversion, progress);
}

}  // namespace

void AddConvertCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("convert", "Convert raw frames and pictures to pictures or other types");
  const auto options = std::make_shared<Options>();
  options->command = command;
  command
      ->add_option("FILES", options->files,
                   "SOURCE DESTINATION, or with --output any number of sources. Files whose names end in .png or "
                   ".bmp are pictures of 8 bits a channel, all others raw frames: lines one after the other, nothing "
                   "else")
      ->type_name("FILE");
  command
      ->add_option("--output", options->directory,
                   "Write each source to this directory, under its own name with the ending of --as")
      ->type_name("DIR");
  command
      ->add_option_function<std::string>(
          "--as",
          [options](const std::string& text) {
            if (text != "png" && text != "bmp" && text != "raw") {
              throw ToolError("--as", "'" + text + "' is unknown; allowed: png|bmp|raw");
            }
            options->ending = text;
          },
          "What --output writes (default: png)")
      ->type_name("png|bmp|raw");
  AddTypeOption(
      *command, "--from", options->from, &options->mosaic,
      "Type of raw frames, which need it: an id, a name, a class name, or what a camera calls it, by PFNC name "
      "or code. Pictures are Grayscale8 or BGR24 (0x420006)");
  AddTypeOption(
      *command, "--to", options->to, &options->mosaic,
      "Type to convert to. A picture shows colour types in colour, gray types and mosaics in gray, by the top "
      "8 bits of each sample (default for pictures: gray for gray types, else colour)");
  AddSizeOption(*command, options->size, "Width and height of raw frames in pixels, which need it");
  AddLineSizeOption(*command, options->lineSize);
  AddFramesOption(*command, options->frames);
  AddLayoutOptions(*command, options->mosaic, options->flags);
  AddDemosaicOption(*command, options->flags);
  AddTripleOption(*command, "--gain", options->gain, 1000, "Factors of the colour channels (default: 1,1,1)");
  AddTripleOption(*command, "--offset", options->offset, 255,
                  "Added to the colour channels after the factors, in steps of 8-bit values (default: 0,0,0)");
  command->footer(
      "Examples:\n"
      "  A 10-bit camera whose mosaic begins with red, brought to neutral gray\n"
      "    lmimaging convert frame.raw picture.png --from BayerRG10 --size 1920x1080 \\\n"
      "        --demosaic bilinear --gain 1.6,1,1.09\n"
      "  A folder of frames\n"
      "    lmimaging convert frames/*.raw --output pictures --from Mono12p --size 640x480\n"
      "  A recording: all its frames as pictures movie-0000.png and so on, or as one raw file again\n"
      "    lmimaging convert movie.raw movie.png --from BayerRG8 --size 640x480 --frames all\n"
      "    lmimaging convert movie.raw rgb.raw --from BayerRG8 --to RGB8 --size 640x480 --frames all\n"
      "\n"
      "A file is written whole or not at all, also when a signal ends the tool. One that is replaced keeps its\n"
      "permissions and its owner. With --output, a source that fails is reported and the others are still converted;\n"
      "the exit code is 1 then. Numbered pictures that were made before a frame failed stay.\n"
      "Layouts that share colours between pixels leave incomplete groups at the end of a line black, and interlaced\n"
      "types a last odd line.");
  command->callback([options] { Run(*options); });
}

}  // namespace LmTool
