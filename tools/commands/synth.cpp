#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "LmImagingLib/PixelConverter.h"
#include "commands/commands.h"
#include "encode/encode_scene.h"
#include "encode/layout.h"
#include "error.h"
#include "file_io.h"
#include "options.h"
#include "picture_file.h"

namespace LmTool {

namespace {

struct SynthOptions {
  std::string destination;
  LmImagingLib::PixelTypeID type = 0x420006;
  CLI::Option* typeOption = nullptr;
  ImageSize size;
  MosaicLayout mosaic;
  unsigned long flags = 0;
};

void Run(const SynthOptions& options) {
  CheckEnding("DESTINATION", options.destination);
  const std::optional<PictureFormat> picture = PictureFormatOf(options.destination);
  if (!picture && options.typeOption->empty()) {
    throw ToolError("--type", "is missing; only a picture goes without it, whose name ends in " + PictureEndings());
  }
  unsigned long flags = options.flags | options.mosaic.Flag();
  if (IsMosaic(options.type)) {
    flags |= LmImagingLib::ConversionFlags::kAdaptive;  // for a picture
    if (options.mosaic.Flag() == 0) flags |= LmImagingLib::ConversionFlags::kBayerGR;
  }
  const RawFrame frame = EncodeScene(options.type, options.size, flags);
  if (!picture) {
    WriteFile("DESTINATION", options.destination, frame.bytes);
    return;
  }
  const LmImagingLib::PixelTypeID shown = IsGrayOnly(*picture) ? 0x10001 : PictureTypeOf(frame.type);
  const unsigned bits = HoldsWords(*picture) && LayoutOf(frame.type).bits > 8 ? 16 : 8;
  WriteFile("DESTINATION", options.destination, EncodePicture(*picture, ConvertToPicture(frame, shown, bits, {})));
}

}  // namespace

void AddSynthCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("synth", "Make a raw frame or a picture of a test scene");
  const auto options = std::make_shared<SynthOptions>();
  command
      ->add_option("DESTINATION", options->destination,
                   "The file to write: a picture if its name ends in " + PictureEndings() +
                       ", else a raw frame; - is the standard output")
      ->required()
      ->type_name("FILE");
  options->typeOption = AddTypeOption(*command, "--type", options->type, &options->mosaic,
                                      "Type of the frame. A picture shows it as `convert` would (default for pictures: "
                                      "the scene as it is)",
                                      &options->flags);
  AddSizeOption(*command, options->size, "Width and height in pixels")->required();
  AddLayoutOptions(*command, options->mosaic, options->flags);
  command->footer(
      "The scene shows colour bars, grays, hues, rings, edges and fine lines. `lmimaging convert` with the same type, "
      "size, "
      "--bayer and --field-order turns the frame back into a picture.");
  command->callback([options] { Run(*options); });
}

}  // namespace LmTool
