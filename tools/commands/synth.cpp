#include <CLI/CLI.hpp>
#include <memory>

#include "commands/commands.h"
#include "encode/encode_scene.h"
#include "file_io.h"
#include "frame.h"
#include "options.h"

namespace LmTool {

namespace {

struct Options {
  std::string destination;
  LmImagingLib::PixelTypeID type = 0;
  ImageSize size;
  unsigned long flags = 0;
};

void Run(const Options& options) {
  RawFrame frame = EncodeScene(options.type, options.size, options.flags);
  frame.bytes.resize(frame.bytes.size() - kSlackBytes);
  WriteFile("DESTINATION", options.destination, frame.bytes);
}

}  // namespace

void AddSynthCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("synth", "Make a raw frame of a test scene");
  const auto options = std::make_shared<Options>();
  command->add_option("DESTINATION", options->destination, "The raw frame to write")->required();
  AddTypeOption(*command, "--type", options->type, "Type of the frame: an id, a name or a class name")->required();
  AddSizeOption(*command, options->size);
  AddLayoutOptions(*command, options->flags);
  command->footer(
      "The scene shows colour bars, grays, hues, rings, edges and fine lines. `lmimaging convert` with the same type,\n"
      "size, --bayer and --field-order turns the frame back into a picture.");
  command->callback([options] { Run(*options); });
}

}  // namespace LmTool
