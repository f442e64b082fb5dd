#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <stdexcept>

#include "LmImagingLib/Extended.h"
#include "commands/commands.h"
#include "temporary_file.h"
#include "terminal.h"

namespace {

int Run(int argc, char** argv) {
  if (!LmImagingLib::RegisterExtendedFormats().IsOK()) throw std::bad_alloc();
  CLI::App app{
      "Turns raw frames of machine-vision cameras into pictures.\n\n"
      "  lmimaging types                      lists the pixel types it knows\n"
      "  lmimaging info BayerRG12p            draws how its pixels lie in memory\n"
      "  lmimaging synth frame.raw --type BayerRG10 --size 640x480\n"
      "  lmimaging convert frame.raw picture.png --from BayerRG10 --size 640x480 --demosaic bilinear\n",
      "lmimaging"};
  app.set_version_flag("--version", "lmimaging " LM_VERSION);
  app.require_subcommand(0, 1);  // none is told below, by the help
  LmTool::AddTypesCommand(app);
  LmTool::AddInfoCommand(app);
  LmTool::AddConvertersCommand(app);
  LmTool::AddConvertCommand(app);
  LmTool::AddSynthCommand(app);
  LmTool::AddGalleryCommand(app);
  LmTool::AddBenchCommand(app);
  LmTool::AddCompletionCommand(app);
  LmTool::AddManualCommand(app);
  app.footer(
      "`lmimaging COMMAND --help` tells what a command takes.");  // behind the commands, which would take it over
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return LmTool::Printable(error.what()) + "\nRun with --help for more information.\n";
  });
  int exitCode = 0;
  try {
    app.parse(argc, argv);
    if (app.get_subcommands().empty()) {
      std::cerr << app.help();
      exitCode = 1;
    }
  } catch (const CLI::ParseError& error) {  // a request for help is one too
    exitCode = app.exit(error);
  }
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    LmTool::CatchEndingSignals();
    return Run(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("lmimaging: there is not enough memory\n", stderr);
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lmimaging: %s\n", LmTool::Printable(error.what()).c_str());
    return 1;
  }
}
