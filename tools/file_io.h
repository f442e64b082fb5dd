#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "image.h"

namespace LmTool {

/// What a file holds, as far as it was asked for.
struct FileContent {
  Bytes bytes;
  std::size_t fileSize;  ///< of the whole file; of a pipe, the bytes read
};

/// Reads up to `limit` bytes.
/// @throws ToolError naming `argument` if the file cannot be read
FileContent ReadFile(const std::string& argument, const std::filesystem::path& path, std::size_t limit);

/// Writes a whole file or nothing: the bytes go to a temporary file beside it, which then takes its name.
/// @throws ToolError naming `argument` if the file cannot be written; nothing is left behind
void WriteFile(const std::string& argument, const std::filesystem::path& path, const Bytes& bytes);

}  // namespace LmTool
