#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "command_line.h"
#include "commands/commands.h"
#include "help_format.h"

namespace LmTool {

namespace {

// Text as the formatter prints it: no letter of it is a command, and hyphens can be copied into a shell.
std::string Roff(const std::string& text) {
  std::string escaped;
  bool begin = true;
  for (const char c : text) {
    if (begin && (c == '.' || c == '\'')) escaped += "\\&";
    escaped += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    begin = c == '\n';
  }
  return escaped;
}

// Lines that are to stay as they are.
std::string Verbatim(const std::string& text) { return ".PP\n.nf\n" + Roff(text) + ".fi\n"; }

std::string ManualOf(const ArgumentText& argument) {
  std::string names;
  for (const std::string& name : argument.names) names += (names.empty() ? "" : ", ") + name;
  std::string text = ".TP\n\\fB" + Roff(names) + "\\fR";
  if (!argument.value.empty() && !argument.positional) text += " \\fI" + Roff(argument.value) + "\\fR";
  return text + "\n" + Roff(argument.description) + (argument.required ? " (required).\n" : ".\n");
}

std::string ManualOf(const CLI::App& command) {
  std::string synopsis;
  std::string arguments;
  for (const ArgumentText& argument : ArgumentsOf(command)) {
    if (argument.positional) synopsis += " " + argument.names.front();
    if (argument.names.back() != "--help") arguments += ManualOf(argument);
  }
  std::string text = ".SS lmimaging " + command.get_name() + Roff(synopsis) + "\n" + Roff(command.get_description()) +
                     ".\n" + arguments;
  if (!command.get_footer().empty()) text += Verbatim(WrappedFooter(command));
  return text;
}

std::string Manual(const CLI::App& app) {
  std::string text =
      ".TH LMIMAGING 1 \"\" \"lmimaging " LM_VERSION
      "\" \"User Commands\"\n"
      ".SH NAME\nlmimaging \\- turn raw frames of machine\\-vision cameras into pictures\n"
      ".SH SYNOPSIS\n.B lmimaging\n.I COMMAND\n[\\fIOPTION\\fR...] [\\fIARGUMENT\\fR...]\n"
      ".SH DESCRIPTION\n"
      "Converts between the pixel types of cameras, which \\fBlmimaging types\\fR lists, and pictures. "
      "\\fBlmimaging \\fICOMMAND\\fB \\-\\-help\\fR lists the options of a command.\n"
      ".SH PIXEL TYPES\n"
      "Where a type is asked for, it may be named by its id (0x20011 or 131089), its registered name (\"Bayer "
      "RGB10\\-bits\"), its class name (BayerRGB10), or the name or code that the GenICam Pixel Format Naming "
      "Convention "
      "has for it (BayerRG10 or 0x0110000D). Such a name of a mosaic says its layout too, which \\fB\\-\\-bayer\\fR "
      "then "
      "need not. Where a camera's name and a class share one (RGB16), the camera's wins: RGB16 is 3 x 16 bits "
      "(0x20004); "
      "the 5-6-5 type is RGB565. Formats of cameras that no type can show in their colours are refused.\n"
      ".SH COMMANDS\n";
  for (const CLI::App* const command : CommandsOf(app)) text += ManualOf(*command);
  return text +
         ".SH EXIT STATUS\n"
         "0 if everything that was asked for was done, otherwise another number, with a message on the standard "
         "error.\n"
         ".SH FILES\n"
         "A file is written whole or not at all, also when a signal ends the tool. One that is replaced keeps its "
         "permissions, its owner and, where the system permits it, its group. It is refused if it may not be written, "
         "or if its owner cannot be kept.\n";
}

}  // namespace

void AddManualCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("manual", "Print this tool's manual page");
  command->footer("To read it: lmimaging manual | man -l -");
  command->callback([&app] { std::cout << Manual(app); });
}

}  // namespace LmTool
