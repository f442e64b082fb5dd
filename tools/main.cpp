#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>

#include "commands/commands.h"

namespace {

int Run(int argc, char** argv) {
  CLI::App app{
      "Turns raw frames of machine-vision cameras into pictures.\n\n"
      "  lmimaging types                      lists the pixel types it knows\n"
      "  lmimaging synth frame.raw --type BayerRGB10 --size 640x480\n"
      "  lmimaging convert frame.raw picture.bmp --from BayerRGB10 --size 640x480 --demosaic bilinear\n",
      "lmimaging"};
  app.set_version_flag("--version", "lmimaging " LM_VERSION);
  app.require_subcommand(0, 1);  // none is told below, by the help
  app.footer("`lmimaging COMMAND --help` tells what a command takes.");
  LmTool::AddTypesCommand(app);
  LmTool::AddConvertersCommand(app);
  LmTool::AddConvertCommand(app);
  LmTool::AddSynthCommand(app);
  LmTool::AddGalleryCommand(app);
  LmTool::AddBenchCommand(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error);
  }
  if (app.get_subcommands().empty()) {
    std::cerr << app.help();
    return 1;
  }
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lmimaging: %s\n", error.what());
    return 1;
  }
}
