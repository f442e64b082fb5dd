#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

struct ToolResult {
  int exitCode;
  std::string output;  // of both streams
};

// Runs the tool in a directory of its own, which is gone after the test.
class ToolTest : public ::testing::Test {
 protected:
  ToolTest() { std::filesystem::create_directories(mDirectory); }
  ~ToolTest() override { std::filesystem::remove_all(mDirectory); }

  ToolResult Run(const std::string& arguments) const { return Shell("'" LM_TOOL "' " + arguments); }

  ToolResult Shell(const std::string& commands) const {
    const std::string inDirectory = "exec 2>&1; cd '" + mDirectory.string() + "' && " + commands;
    std::FILE* const pipe = popen(inDirectory.c_str(), "r");
    ToolResult result{-1, {}};
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, pipe)) != 0;) {
      result.output.append(buffer, count);
    }
    const int status = pclose(pipe);
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    return result;
  }

  // Runs a command that is to succeed without a word.
  void RunSilently(const std::string& arguments) const {
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments << "\n" << result.output;
    EXPECT_EQ(result.output, "") << arguments;
  }

  bool Has(const std::string& program) const { return Shell("command -v " + program).exitCode == 0; }

  std::filesystem::path Path(const std::string& name) const { return mDirectory / name; }

  Bytes Read(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  void Write(const std::string& name, const Bytes& bytes) const {
    std::ofstream(Path(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }

  // The names of all files in the directory, or one in it, in their order.
  std::vector<std::string> Files(const std::string& name = ".") const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path(name))) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  const std::filesystem::path mDirectory =
      std::filesystem::temp_directory_path() / ("lmimaging-test-" + std::to_string(getpid()));
};
