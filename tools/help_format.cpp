#include "help_format.h"

#include <sstream>

#include "text_columns.h"

namespace LmTool {

namespace {

constexpr std::size_t kNameColumns = 25;

std::string Row(const std::string& name, const std::string& description) {
  std::ostringstream out;
  PrintRow(out, {{"", 1}, {name, kNameColumns}, {description, kTerminalColumns - kNameColumns - 3}});
  return out.str();
}

}  // namespace

std::string HelpFormat::make_option(const CLI::Option* option, bool positional) const {
  return Row(make_option_name(option, positional) + make_option_opts(option), make_option_desc(option));
}

std::string HelpFormat::make_subcommand(const CLI::App* command) const {
  return Row(command->get_name(), command->get_description());
}

std::string HelpFormat::make_footer(const CLI::App* app) const { return WrappedFooter(*app); }

std::string WrappedFooter(const CLI::App& app) {
  std::istringstream paragraphs(app.get_footer());
  std::string text;
  for (std::string paragraph; std::getline(paragraphs, paragraph);) {
    const bool stays = paragraph.empty() || paragraph.front() == ' ';
    text += (stays ? paragraph : Joined(Wrapped(paragraph, kTerminalColumns), "\n")) + '\n';
  }
  return text;
}

}  // namespace LmTool
