#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>

#include "command_line.h"
#include "commands/commands.h"
#include "error.h"
#include "named_type.h"
#include "pixel_type_names.h"
#include "text_columns.h"

namespace LmTool {

namespace {

// Everything short that names a single type.
std::string TypeWords() {
  std::set<std::string> words;
  for (const LmImagingLib::PixelTypeID id : RegisteredTypes()) words.insert({HexID(id), ClassName(id)});
  for (std::size_t i = 0; const auto* const format = LmImagingLib::EnumPFNC(i); ++i) words.insert(format->name);
  std::string text;
  for (const std::string& word : words) {
    try {
      FindNamedType({}, word);
      text += (text.empty() ? "" : " ") + word;
    } catch (const ToolError&) {  // a name with two meanings
    }
  }
  return text;
}

std::string Quoted(const std::string& text) {
  std::string quoted;
  for (const char c : text) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return "'" + quoted + "'";
}

// How bash completes a value.
std::string BashAction(const ArgumentText& argument) {
  if (argument.value == "TYPE") return "_lmimaging_words \"$types\"";
  if (argument.value == "DIR") return "mapfile -t COMPREPLY < <(compgen -d -- \"$cur\"); compopt -o filenames";
  if (argument.value == "FILE") return "mapfile -t COMPREPLY < <(compgen -f -- \"$cur\"); compopt -o filenames";
  return "_lmimaging_words " + Quoted(Joined(argument.Words(), " "));
}

std::string BashCommand(const CLI::App& command) {
  std::ostringstream values;
  std::string options;
  std::string positional = ":";
  for (const ArgumentText& argument : ArgumentsOf(command)) {
    if (argument.positional) {
      positional = BashAction(argument);
      continue;
    }
    for (const std::string& name : argument.names) options += (options.empty() ? "" : " ") + name;
    if (argument.value.empty()) continue;
    values << "        " << Joined(argument.names, " | ") << ") " << BashAction(argument) << "; return ;;\n";
  }
  std::ostringstream text;
  text << "    " << command.get_name() << ")\n      case $prev in\n"
       << values.str() << "      esac\n      if [[ $cur == -* ]]; then\n        _lmimaging_words " << Quoted(options)
       << "\n      else\n        " << positional << "\n      fi\n      ;;\n";
  return text.str();
}

std::string Bash(const CLI::App& app) {
  std::string names;
  std::string commands;
  for (const CLI::App* const command : CommandsOf(app)) {
    names += command->get_name() + ' ';
    commands += BashCommand(*command);
  }
  return "# Completion of lmimaging for bash, made by `lmimaging completion bash`.\n"
         "_lmimaging_words() {\n"
         "  mapfile -t COMPREPLY < <(compgen -W \"$1\" -- \"$cur\")\n"
         "}\n\n"
         "_lmimaging() {\n"
         "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}\n"
         "  local types=" +
         Quoted(TypeWords()) +
         "\n"
         "  COMPREPLY=()\n"
         "  if [[ $COMP_CWORD -eq 1 ]]; then\n"
         "    _lmimaging_words " +
         Quoted(names + "--help --version") +
         "\n"
         "    return\n"
         "  fi\n"
         "  case ${COMP_WORDS[1]} in\n" +
         commands +
         "  esac\n"
         "}\n"
         "complete -F _lmimaging lmimaging\n";
}

// How zsh completes a value: a message and an action.
std::string ZshAction(const ArgumentText& argument) {
  const std::string message = ":" + argument.names.front() + ":";
  if (argument.value == "TYPE") return message + "{compadd -a pixel_types}";
  if (argument.value == "DIR") return message + "_files -/";
  if (argument.value == "FILE") return message + "_files";
  const std::vector<std::string> words = argument.Words();
  return message + (words.empty() ? " " : "(" + Joined(words, " ") + ")");
}

// A description between brackets.
std::string ZshDescription(const std::string& text) {
  std::string description;
  for (const char c : text) description += (c == '[' || c == ']' ? "\\" : "") + std::string(1, c);
  return "[" + description + "]";
}

std::string ZshCommand(const CLI::App& command) {
  std::string text = "    " + command.get_name() + ")\n      _arguments";
  for (const ArgumentText& argument : ArgumentsOf(command)) {
    if (argument.positional) {
      text += " \\\n        " + Quoted("*" + ZshAction(argument));
      continue;
    }
    for (const std::string& name : argument.names) {
      text += " \\\n        " +
              Quoted(name + ZshDescription(argument.description) + (argument.value.empty() ? "" : ZshAction(argument)));
    }
  }
  return text + "\n      ;;\n";
}

std::string Zsh(const CLI::App& app) {
  std::string names;
  std::string commands;
  for (const CLI::App* const command : CommandsOf(app)) {
    names += "    " + Quoted(command->get_name() + ":" + command->get_description()) + "\n";
    commands += ZshCommand(*command);
  }
  return "#compdef lmimaging\n"
         "# Completion of lmimaging for zsh, made by `lmimaging completion zsh`.\n"
         "_lmimaging() {\n"
         "  local -a commands pixel_types\n"
         "  pixel_types=(" +
         TypeWords() +
         ")\n"
         "  commands=(\n" +
         names +
         "  )\n"
         "  if (( CURRENT == 2 )); then\n"
         "    _describe command commands\n"
         "    return\n"
         "  fi\n"
         "  shift words\n"
         "  (( CURRENT-- ))\n"
         "  case $words[1] in\n" +
         commands +
         "  esac\n"
         "}\n"
         "# Loaded by the completion system the file is the function, sourced it announces it.\n"
         "if [[ $funcstack[1] == _lmimaging ]]; then _lmimaging \"$@\"; else compdef _lmimaging lmimaging; fi\n";
}

struct Shell {
  const char* name;
  std::string (*script)(const CLI::App& app);
};
constexpr Shell kShells[] = {{"bash", Bash}, {"zsh", Zsh}};

}  // namespace

void AddCompletionCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("completion", "Print a script that completes lmimaging's arguments");
  const auto run = [&app](const std::string& name) {
    const auto* const shell =
        std::find_if(std::begin(kShells), std::end(kShells), [&](const Shell& s) { return name == s.name; });
    if (shell == std::end(kShells)) throw ToolError("SHELL", "'" + name + "' is unknown; allowed: bash|zsh");
    std::cout << shell->script(app);
  };
  command->add_option_function<std::string>("SHELL", run, "For which shell")->required()->type_name("bash|zsh");
  command->footer(
      "Where lmimaging is installed as a package, shells find the script themselves. Elsewhere:\n"
      "  bash  source <(lmimaging completion bash)   in ~/.bashrc\n"
      "  zsh   source <(lmimaging completion zsh)    in ~/.zshrc, after compinit");
}

}  // namespace LmTool
