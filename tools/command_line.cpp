#include "command_line.h"

#include "numbers.h"

namespace LmTool {

std::vector<std::string> ArgumentText::Words() const {
  return value.find('|') == std::string::npos ? std::vector<std::string>() : Split(value, '|');
}

std::vector<ArgumentText> ArgumentsOf(const CLI::App& command) {
  std::vector<ArgumentText> arguments;
  for (const CLI::Option* const option : command.get_options({})) {
    ArgumentText text{{}, option->get_positional(), option->get_required(), {}, option->get_description()};
    for (const std::string& name : option->get_snames()) text.names.push_back("-" + name);
    for (const std::string& name : option->get_lnames()) text.names.push_back("--" + name);
    if (text.positional) text.names = {option->get_name(true)};
    if (option->get_items_expected_max() != 0) text.value = option->get_type_name();
    arguments.push_back(text);
  }
  return arguments;
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& app) {
  return app.get_subcommands(std::function<bool(const CLI::App*)>());
}

}  // namespace LmTool
