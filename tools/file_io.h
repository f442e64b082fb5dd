#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "image.h"
#include "temporary_file.h"

namespace LmTool {

/// Whether a name stands for the standard input or the standard output.
inline bool IsStandardStream(const std::filesystem::path& path) { return path == "-"; }

/// Reads a file, or the standard input, from its beginning to its end. Faults are `ToolError`s that name the argument
/// and the file.
class FileReader {
 public:
  FileReader(std::string argument, std::filesystem::path path);

  /// The bytes of the whole file; empty for a pipe or a device.
  const std::optional<std::size_t>& Size() const { return mSize; }

  /// Reads the next bytes, as many as there are up to `count`.
  std::size_t Read(std::uint8_t* to, std::size_t count);
  /// Reads the rest of the file, but not more than `limit` bytes.
  Bytes ReadUpTo(std::size_t limit);
  /// Passes over bytes.
  void Skip(std::size_t count);

 private:
  std::string mArgument;
  std::filesystem::path mPath;
  std::optional<std::size_t> mSize;
  File mFile;
};

/// Writes a whole file or none: the bytes go to a `TemporaryFile`. A symbolic link stays, and the file is the one
/// that it leads to. Devices, pipes and the standard
/// output are written at once. Faults are `ToolError`s that name the argument and the
/// file.
class FileWriter {
 public:
  FileWriter(std::string argument, std::filesystem::path path);

  void Write(const Bytes& bytes);
  /// Gives the file its name. Without it there will be none.
  void Commit();

 private:
  std::FILE* Stream() const { return mTemporary ? mTemporary->Stream() : mDevice.get(); }

  std::string mArgument;
  std::filesystem::path mPath;
  std::optional<TemporaryFile> mTemporary;
  File mDevice;  // where there is no temporary file
};

/// Writes a file of these bytes by a `FileWriter`.
void WriteFile(const std::string& argument, const std::filesystem::path& path, const Bytes& bytes);

}  // namespace LmTool
