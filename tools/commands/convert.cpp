#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "bmp.h"
#include "commands/commands.h"
#include "conversion.h"
#include "error.h"
#include "file_io.h"
#include "frame.h"
#include "options.h"
#include "pixel_type_names.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

struct Options {
  std::string source, destination;
  PixelTypeID from = 0;
  PixelTypeID to = 0;
  CLI::Option* toOption = nullptr;
  ImageSize size;
  unsigned long flags = 0;
  Triple gain{1, 1, 1};
  Triple offset{0, 0, 0};
};

constexpr PixelTypeID kDefaultPicture = 0x420006;

// Sizes that sensors and cameras commonly have.
constexpr ImageSize kCommonSizes[] = {
    {320, 240},   {640, 480},   {656, 492},   {752, 480},   {800, 600},   {1024, 768},  {1280, 720},
    {1280, 800},  {1280, 960},  {1280, 1024}, {1392, 1040}, {1440, 1080}, {1600, 1200}, {1624, 1234},
    {1920, 1080}, {1920, 1200}, {2048, 1088}, {2048, 1536}, {2048, 2048}, {2448, 2048}, {2592, 1944},
    {3072, 2048}, {3840, 2160}, {4096, 2160}, {4096, 3000}, {4112, 3008}, {5120, 5120}, {5472, 3648}};

std::string Reached(const PixelTypeID& from) {
  std::string list;
  PixelTypeID to = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverterTo(i, from, to); ++i) {
    list += (i == 0 ? "" : ", ") + Label(to);
  }
  return list;
}

// The sizes of a frame of `bytes` bytes, as far as they suggest themselves: the width asked for with another height,
// and common ones. "640x1920 or 1280x960"; empty if there is none.
std::string FittingSizes(const PixelTypeID& type, std::size_t width, std::size_t bytes) {
  std::vector<ImageSize> fitting;
  const std::size_t lineBytes = SourceLayout(type, {width, 1}).Bytes();
  if (lineBytes != 0 && bytes != 0 && bytes % lineBytes == 0) fitting.push_back({width, bytes / lineBytes});
  std::copy_if(std::begin(kCommonSizes), std::end(kCommonSizes), std::back_inserter(fitting),
               [&](const ImageSize& size) { return size.width != width && SourceLayout(type, size).Bytes() == bytes; });
  std::string text;
  for (const ImageSize& size : fitting) text += (text.empty() ? "" : " or ") + size.Text();
  return text;
}

RawFrame ReadFrame(const Options& options) {
  const std::size_t expected = SourceLayout(options.from, options.size).Bytes();
  FileContent content = ReadFile("SOURCE", options.source, expected + 1);
  if (content.fileSize != expected) {
    const std::string fitting = FittingSizes(options.from, options.size.width, content.fileSize);
    const std::string hint = fitting.empty() ? "" : "; the file would fit --size " + fitting;
    throw ToolError("SOURCE", "'" + options.source + "' has " + std::to_string(content.fileSize) + " bytes, but a " +
                                  options.size.Text() + " frame of " + Label(options.from) + " takes " +
                                  std::to_string(expected) + hint);
  }
  content.bytes.resize(expected + kSlackBytes);
  return {options.from, options.size, options.flags, std::move(content.bytes)};
}

bool IsBmp(const std::string& path) {
  std::string ending = std::filesystem::path(path).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending == ".bmp";
}

// The tables that the conversion looks colours up in; conversions use 8 bits, whatever the source has.
std::optional<RGBFilter> WhiteBalance(const Options& options) {
  const auto& [gain, offset] = std::tie(options.gain, options.offset);
  const bool changes =
      gain.red != 1 || gain.green != 1 || gain.blue != 1 || offset.red != 0 || offset.green != 0 || offset.blue != 0;
  if (!changes) return std::nullopt;
  const bool gray = (options.from & kColorSpaceMask) == kColorSpaceGrayscale;
  if (gray || options.to == options.from || HasOneSample(options.to)) {
    std::cerr << "lmimaging: note: --gain and --offset do nothing between " << Label(options.from) << " and "
              << Label(options.to) << ", because only colours are balanced\n";
  }
  std::optional<RGBFilter> filter(8);
  filter->SetMultipliers(gain.red, gain.green, gain.blue, static_cast<unsigned short>(offset.red),
                         static_cast<unsigned short>(offset.green), static_cast<unsigned short>(offset.blue));
  return filter;
}

void Run(Options& options) {
  const bool bmp = IsBmp(options.destination);
  if (options.toOption->empty()) {
    if (!bmp) throw ToolError("--to", "is missing; only a destination that ends in .bmp goes without it");
    options.to = kDefaultPicture;
  }
  if (!PixelTypeFactory::HasConverter(options.from, options.to)) {
    throw ToolError("--to", "there is no converter from " + Label(options.from) + " to " + Label(options.to) +
                                "; allowed: " + Reached(options.from));
  }
  const RawFrame frame = ReadFrame(options);
  const std::optional<RGBFilter> filter = WhiteBalance(options);
  const RGBFilter* const filterOrNull = filter ? &*filter : nullptr;
  WriteFile("DESTINATION", options.destination,
            bmp ? EncodeBmp(ConvertToPicture(frame, options.to, filterOrNull))
                : ConvertFrame(frame, options.to, filterOrNull));
}

}  // namespace

void AddConvertCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("convert", "Convert a raw frame to a picture or to another type");
  const auto options = std::make_shared<Options>();
  command->add_option("SOURCE", options->source, "The raw frame: its lines one after the other, nothing else")
      ->required();
  command
      ->add_option("DESTINATION", options->destination,
                   "A name that ends in .bmp makes a 24-bit picture, any other one a raw frame")
      ->required();
  AddTypeOption(*command, "--from", options->from, "Type of the raw frame: an id, a name or a class name")->required();
  options->toOption = AddTypeOption(
      *command, "--to", options->to,
      "Type to convert to (for .bmp by default 0x420006). A .bmp shows colour types in colour, gray types "
      "and mosaics in gray, by the top 8 bits of each sample");
  AddSizeOption(*command, options->size);
  AddLayoutOptions(*command, options->flags);
  AddDemosaicOption(*command, options->flags);
  AddTripleOption(*command, "--gain", options->gain, 1000, "Factors of the colour channels (default: 1,1,1)");
  AddTripleOption(*command, "--offset", options->offset, 255,
                  "Added to the colour channels after the factors, in steps of 8-bit values (default: 0,0,0)");
  command->footer(
      "Example: a 10-bit camera whose mosaic begins with red, brought to neutral gray\n"
      "  lmimaging convert frame.raw picture.bmp --from BayerRGB10 --size 1920x1080 --bayer RG \\\n"
      "      --demosaic bilinear --gain 1.6,1,1.09\n"
      "Layouts that share colours between pixels leave incomplete groups at the end of a line black, and interlaced\n"
      "types a last odd line.");
  command->callback([options] { Run(*options); });
}

}  // namespace LmTool
