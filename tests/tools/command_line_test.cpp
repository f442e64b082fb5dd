#include <algorithm>
#include <sstream>

#include "tools/tool.h"

namespace {

class CommandLine : public ToolTest {
 protected:
  // What bash offers for the last of some words.
  std::string Completed(const std::string& words) const {
    return Run("completion bash > script; bash -c 'source ./script; compopt() { :; }; COMP_WORDS=(lmimaging " + words +
               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _lmimaging; echo \"${COMPREPLY[*]}\"'")
        .output;
  }
};

TEST_F(CommandLine, BashCompletesCommandsOptionsAndValues) {
  if (!Has("bash")) GTEST_SKIP() << "needs bash";
  Write("a frame.raw", {});
  std::filesystem::create_directory(Path("folder"));
  EXPECT_EQ(Completed("co"), "converters convert completion\n");
  EXPECT_EQ(Completed("convert --from BayerRG12"), "BayerRG12 BayerRG12Packed BayerRG12p\n");
  EXPECT_EQ(Completed("info Grayscale8"), "Grayscale8 Grayscale8Signed Grayscale8_DualQuadMultiplexed\n");
  EXPECT_EQ(Completed("info RGB16"), "RGB16 RGB16_Planar\n");
  EXPECT_EQ(Completed("convert x.raw --bayer \"\""), "GR GB RG BG\n");
  EXPECT_EQ(Completed("synth --t"), "--type\n");
  EXPECT_EQ(Completed("convert a"), "a frame.raw\n");
  EXPECT_EQ(Completed("convert --output \"\""), "folder\n");
  EXPECT_EQ(Completed("convert --gain 1"), "\n");
}

TEST_F(CommandLine, ZshTakesItsScript) {
  if (!Has("zsh")) GTEST_SKIP() << "needs zsh";
  RunSilently("completion zsh > script; zsh -n script");
  const ToolResult loaded =
      Run("completion zsh > script; zsh -fc 'autoload -U compinit; compinit -D; source ./script; "
          "print $_comps[lmimaging]'");
  EXPECT_EQ(loaded.output, "_lmimaging\n");
}

// The manual has every option of the help, which fits a terminal, and no macro that the formatter does not know.
TEST_F(CommandLine, HelpAndManualListEveryOption) {
  std::string manual = Run("manual").output;
  if (Has("man")) {
    EXPECT_EQ(Run("manual > page; man --warnings -l -Tutf8 page 2>&1 >/dev/null").output, "");
  }
  for (std::size_t at; (at = manual.find("\\-")) != std::string::npos;) manual.erase(at, 1);
  int options = 0;
  for (const std::string command :
       {"types", "info", "converters", "convert", "synth", "gallery", "bench", "completion", "manual"}) {
    const std::size_t begin =
        std::min(manual.find(".SS lmimaging " + command + "\n"), manual.find(".SS lmimaging " + command + " "));
    ASSERT_NE(begin, std::string::npos) << command;
    const std::string section = manual.substr(begin, manual.find(".S", begin + 1) - begin);
    const ToolResult result = Run(command + " --help");
    EXPECT_EQ(result.exitCode, 0) << command;
    std::istringstream help(result.output);
    for (std::string line; std::getline(help, line);) {
      EXPECT_LE(line.size(), 80U) << line;
      if (line.rfind("  --", 0) != 0) continue;
      const std::string name = line.substr(2, line.find(' ', 2) - 2);
      EXPECT_NE(section.find("\\fB" + name + "\\fR"), std::string::npos) << command << " " << name;
      ++options;
    }
  }
  EXPECT_GT(options, 15);
  EXPECT_EQ(Run("--help").exitCode, 0);
  EXPECT_EQ(Run("--version").exitCode, 0);
}

}  // namespace
