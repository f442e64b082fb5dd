#include <sstream>

#include "tools/tool.h"

namespace {

using Bench = ToolTest;

TEST_F(Bench, GivesFourFiguresForEachConversion) {
  const ToolResult result = Run("bench --size 33x17");
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(result.output.rfind("Processor: ", 0), 0U) << result.output;
  std::istringstream lines(result.output);
  int conversions = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.find(" to ") == std::string::npos) continue;
    ++conversions;
    std::istringstream figures(line.substr(43));
    for (int i = 0; i < 4; ++i) {
      double figure = -1;
      figures >> figure;
      EXPECT_GE(figure, 0) << line;
    }
    EXPECT_FALSE(figures.fail()) << line;
  }
  EXPECT_EQ(conversions, 10) << result.output;
}

}  // namespace
