#include "terminal.h"

#include "tools/tool.h"

namespace {

using Terminal = ToolTest;

TEST_F(Terminal, ControlCharactersAreEscaped) {
  const std::pair<std::string, std::string> cases[] = {
      {"frame 1~.raw", "frame 1~.raw"},
      {"\xC2\xA0\xC3\xBC\xDF\xBF \xE0\xA0\x80\xE2\x82\xAC\xED\x9F\xBF\xEF\xBF\xBD \xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
       "\xC2\xA0\xC3\xBC\xDF\xBF \xE0\xA0\x80\xE2\x82\xAC\xED\x9F\xBF\xEF\xBF\xBD \xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
      {std::string("\0\x1B[2J\n\x1F\x7F", 8), "\\x00\\x1b[2J\\x0a\\x1f\\x7f"},
      {"\xC2\x80\xC2\x9B\xC2\x9F", "\\xc2\\x80\\xc2\\x9b\\xc2\\x9f"},
      {"\x9B"
       "a\xFF",
       "\\x9ba\\xff"},                                                                            // no UTF-8
      {"\xC1\x9B\xE0\x82\x9B\xF0\x80\x82\x9B", "\\xc1\\x9b\\xe0\\x82\\x9b\\xf0\\x80\\x82\\x9b"},  // too long
      {"\xED\xA0\x80\xF4\x90\x80\x80", "\\xed\\xa0\\x80\\xf4\\x90\\x80\\x80"},  // surrogate, past the last character
      {"\xE2\x82", "\\xe2\\x82"},                                               // cut off
      {"\xE2\x82z\xC3\xC3\xBC", "\\xe2\\x82z\\xc3\xC3\xBC"},
  };
  for (const auto& [text, printable] : cases) EXPECT_EQ(LmTool::Printable(text), printable);
}

// Wherever the tool prints a name that it was given.
TEST_F(Terminal, NamesSendNoCommands) {
  const std::string name = "m\x1B[31m\xC2\x9B\xC3\xBC.raw";
  const std::string quoted = "'" + name + "'";
  const std::string format = " --from Mono8 --to Mono8 --size 1x1 ";
  Write(name, {1, 2, 3});
  std::vector<std::string> commands = {"convert " + quoted + " out.raw" + format,
                                       "convert " + quoted + " missing --output out --as raw" + format, "--" + quoted,
                                       "info " + quoted};
  if (Has("script")) {
    const std::string watched = "--version; script -qec \"'" LM_TOOL "' ";
    commands.push_back(watched + "convert " + quoted + " out.raw --frames all" + format + "\" /dev/null");
    commands.push_back(watched + "gallery " + quoted + "gallery\" /dev/null");
  }
  for (const std::string& command : commands) {
    const std::string output = Run(command).output;
    EXPECT_NE(output.find("m\\x1b[31m\\xc2\\x9b\xC3\xBC.raw"), std::string::npos) << output;
    EXPECT_EQ(output.find("m\x1B"), std::string::npos) << command;
  }
}

}  // namespace
