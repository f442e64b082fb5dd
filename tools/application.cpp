#include "application.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>

#include "LmImagingLib/Extended.h"
#include "commands/commands.h"
#include "help_format.h"
#include "terminal.h"

namespace LmTool {

int RunTool(int argc, char** argv) {
  if (!LmImagingLib::RegisterExtendedFormats().IsOK()) throw std::bad_alloc();
  CLI::App app{
      "Turns raw frames of machine-vision cameras into pictures.\n\n"
      "  lmimaging types                      lists the pixel types it knows\n"
      "  lmimaging info BayerRG12p            draws how its pixels lie in memory\n"
      "  lmimaging synth frame.raw --type BayerRG10 --size 640x480\n"
      "  lmimaging convert frame.raw picture.png --from BayerRG10 --size 640x480\n",
      "lmimaging"};
  app.formatter(std::make_shared<HelpFormat>());
  app.set_version_flag("--version", "lmimaging " LM_VERSION);
  app.require_subcommand(0, 1);  // without a command, the help is printed below
  AddTypesCommand(app);
  AddInfoCommand(app);
  AddConvertersCommand(app);
  AddConvertCommand(app);
  AddSynthCommand(app);
  AddGalleryCommand(app);
  AddBenchCommand(app);
  AddCompletionCommand(app);
  AddManualCommand(app);
  // Set after the commands, which would inherit it.
  app.footer("`lmimaging COMMAND --help` lists the options of a command.");
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return Printable(error.what()) + "\nRun with --help for more information.\n";
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

}  // namespace LmTool
