#pragma once

namespace LmTool {

/// Parses the command line and runs its command.
/// @return the exit code
/// @throws std::exception if a command fails in a way that its arguments do not explain
int RunTool(int argc, char** argv);

}  // namespace LmTool
