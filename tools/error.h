#pragma once

#include <stdexcept>
#include <string>

namespace LmTool {

/// A fault the user can mend. The message names the argument, its value and what is allowed.
class ToolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  ToolError(const std::string& argument, const std::string& message) : std::runtime_error(argument + ": " + message) {}
};

}  // namespace LmTool
