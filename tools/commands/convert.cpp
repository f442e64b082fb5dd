#include <CLI/CLI.hpp>
#include <atomic>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include "color_options.h"
#include "commands/commands.h"
#include "commands/convert_options.h"
#include "development_file.h"
#include "error.h"
#include "ordered_jobs.h"
#include "picture_file.h"
#include "terminal.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

namespace fs = std::filesystem;

constexpr const char* kEndings = "png|tif|tiff|pgm|ppm|bmp|raw";

void MakeDirectory(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) throw ToolError("--output", "cannot make the directory '" + path + "': " + error.message());
}

void ConvertAll(const std::vector<FilePair>& pairs, const Conversion& conversion, unsigned jobs, Progress& progress) {
  if (pairs.size() == 1) {  // a pipe reports while it goes on
    ConvertFile(pairs.front(), conversion, progress, std::cerr);
    return;
  }
  std::atomic<std::size_t> failures = 0;
  const auto convert = [&](std::size_t number, std::ostream& messages) {
    try {
      ConvertFile(pairs[number], conversion, progress, messages);
    } catch (const ToolError& error) {
      messages << "lmimaging: " << Printable(error.what()) << '\n';
      ++failures;
    }
  };
  RunInOrder(pairs.size(), jobs, convert, [&](const std::string& messages) {
    progress.Hide();
    std::cerr << messages << std::flush;
  });
  if (failures != 0) {
    throw std::runtime_error(std::to_string(failures) + " of " + std::to_string(pairs.size()) +
                             " files could not be converted");
  }
}

void Run(const ConvertArguments& arguments) {
  const std::vector<FilePair> pairs = FilePairsOf(arguments);
  CheckArguments(arguments, pairs);
  NoteUnusedColors(arguments, PictureFormatOf(pairs.front().destination).has_value());
  Conversion conversion{{arguments.from, arguments.size, FlagsOf(arguments), arguments.lineSize},
                        arguments.frames,
                        std::nullopt,
                        arguments.colors,
                        arguments.depth,
                        arguments.threads};
  if (arguments.Given("--to")) conversion.to = arguments.to;
  if (arguments.Given("--output")) MakeDirectory(arguments.directory);

  std::size_t frames = 0;
  for (const FilePair& files : pairs) frames += CountFrames(files.source, conversion);
  Progress progress(frames);
  ConvertAll(pairs, conversion, arguments.jobs == 0 ? Processors() : arguments.jobs, progress);
}

}  // namespace

void AddConvertCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("convert", "Convert raw frames and pictures to pictures or other types");
  const auto options = std::make_shared<ConvertArguments>();
  options->command = command;
  command
      ->add_option(
          "FILES", options->files,
          "SOURCE DESTINATION, or with --output any number of sources. Files whose names end in " + PictureEndings() +
              " are pictures, all others raw frames: lines one after the other, without a header. For raw frames "
              "- is the standard input or output")
      ->type_name("FILE");
  command
      ->add_option("--output", options->directory,
                   "Write each source to this directory, under its own name with the ending of --as")
      ->type_name("DIR");
  command
      ->add_option_function<std::string>(
          "--as",
          [options](const std::string& text) {
            if (text != "raw" && !PictureFormatOf("x." + text)) {
              throw ToolError("--as", "'" + text + "' is unknown; allowed: " + kEndings);
            }
            options->ending = text;
          },
          "What --output writes (default: png)")
      ->type_name(kEndings);
  AddThreadsOption(*command, "--jobs", options->jobs,
                   "Files that are converted at a time, each of which takes the memory of a frame and its picture "
                   "(default: the processors)");
  AddThreadsOption(*command, "--threads", options->threads,
                   "Threads that work on one frame, for single frames that are large (default: 1)");
  // Comes before the options that change something of it.
  ColorArguments& colors = options->colors;
  command
      ->add_option_function<std::string>(
          "--development",
          [options](const std::string& path) {
            const DevelopmentFile file = ReadDevelopmentFile("--development", path);
            options->colors = file.colors;
            options->method = file.method;
            options->depth = file.depth.value_or(ConversionDepth::kFull);
          },
          "How a camera's frames become pictures, as JSON: black, gains, matrix, tone (srgb where it is left out), "
          "demosaic, defects and depth. Options that are given too win over the file")
      ->type_name("FILE");
  AddTypeOption(*command, "--from", options->from, &options->mosaic,
                "Type of raw frames, which need it: an id, a name, a class name, or the name that a camera has for it: "
                "a PFNC name "
                "or code, or a V4L2 fourcc. Pictures are Grayscale8 or BGR24 (0x420006), those of 16 bits Grayscale16 "
                "or BGR48 (0x20A40)",
                &options->named);
  AddTypeOption(
      *command, "--to", options->to, &options->mosaic,
      "Type to convert to. A picture shows colour types in colour, gray types and mosaics in gray (default for "
      "pictures: gray for gray types and .pgm, else colour)");
  AddSizeOption(*command, options->size, "Width and height of raw frames in pixels, which need it");
  AddLineSizeOption(*command, options->lineSize);
  AddFramesOption(*command, options->frames);
  AddLayoutOptions(*command, options->mosaic, options->flags);
  AddDemosaicOptions(*command, options->flags);
  AddYuvOptions(*command, options->flags);
  AddDepthOption(*command, options->depth);
  AddTripleOption(
      *command, "--black", colors.black, 65535,
      "The level of black, which is taken off first, in steps of the samples as the camera counts (default: 0)", 0,
      true);
  AddTripleOption(*command, "--gain", colors.gain, 1000, "Factors of the colour channels (default: 1,1,1)");
  AddTripleOption(*command, "--offset", colors.offset, 255,
                  "Added to the colour channels after the factors, in steps of 8-bit values (default: 0,0,0)", -255);
  AddColorOptions(*command, colors);
  command->footer(
      "Examples:\n"
      "  A 10-bit camera whose mosaic begins with red, brought to neutral gray\n"
      "    lmimaging convert frame.raw picture.png --from BayerRG10 \\\n"
      "        --size 1920x1080 --gain 1.6,1,1.09\n"
      "  The same for a screen, with the gains from a gray card at 240,600\n"
      "    lmimaging convert frame.raw picture.png --from BayerRG10 \\\n"
      "        --size 1920x1080 --white-balance 240,600,160x160 --tone srgb\n"
      "  A camera's settings in a file, such as\n"
      "  {\"black\": 64, \"gains\": [1.6, 1, 1.09], \"tone\": \"srgb\", \"defects\": true,\n"
      "   \"matrix\": [[1.5, -0.3, -0.2], [-0.2, 1.4, -0.2], [0, -0.5, 1.5]]}\n"
      "    lmimaging convert frame.raw picture.png --from BayerRG10 \\\n"
      "        --size 1920x1080 --development camera.json\n"
      "  A folder of frames\n"
      "    lmimaging convert frames/*.raw --output pictures --from Mono12p \\\n"
      "        --size 640x480\n"
      "  All frames of a recording, as pictures movie-0000.png and so on\n"
      "    lmimaging convert movie.raw movie.png --from BayerRG8 --size 640x480 \\\n"
      "        --frames all\n"
      "  The same as one raw file again\n"
      "    lmimaging convert movie.raw rgb.raw --from BayerRG8 --to RGB8 \\\n"
      "        --size 640x480 --frames all\n"
      "  A pipe: frame by frame, as the frames come\n"
      "    ffmpeg -i movie.mkv -f rawvideo -pix_fmt bayer_rggb8 - |\n"
      "        lmimaging convert - - --from BayerRG8 --to RGB8 --size 640x480 \\\n"
      "        --frames all | ...\n"
      "\n"
      "No bit is lost that the destination has room for: values of fewer bits are shifted up, so that white is white, "
      "and those of more bits are cut. A picture of a source with more than 8 bits has 16 bits a sample, if its format "
      "has them (BMP has not) and --to names no type of 8 bits. `lmimaging converters` lists which pairs lose bits.\n"
      "\n"
      "A file is written whole or not at all, also when a signal ends the tool. A file that is replaced keeps its "
      "permissions and its owner. With --output, a source that fails is reported, and the rest are still converted; "
      "the exit code is 1 then. Numbered pictures made before a frame failed stay.\n"
      "\n"
      "In formats whose pixels share colours, an incomplete group at the end of a line is black. So is an odd last "
      "line of interlaced formats.");
  command->callback([options] { Run(*options); });
}

}  // namespace LmTool
