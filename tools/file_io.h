#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "image.h"

namespace LmTool {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// Reads a file from its beginning to its end. Faults are `ToolError`s that name the argument and the file.
class FileReader {
 public:
  FileReader(std::string argument, std::filesystem::path path);

  /// The bytes of the whole file; nothing for a pipe or a device.
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

/// Writes a whole file or nothing: the bytes go to a temporary file beside it, which takes its name at the end. Devices
/// and pipes are written at once. Faults are `ToolError`s that name the argument and the file; nothing is left behind.
class FileWriter {
 public:
  FileWriter(std::string argument, std::filesystem::path path);
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;
  ~FileWriter();

  void Write(const Bytes& bytes);
  /// Gives the file its name. Without it there will be none.
  void Commit();

 private:
  std::string mArgument;
  std::filesystem::path mPath;
  std::filesystem::path mTarget;     // what a link leads to
  std::filesystem::path mTemporary;  // empty when written at once, and when done
  File mFile;
};

/// Writes a file of these bytes by a `FileWriter`.
void WriteFile(const std::string& argument, const std::filesystem::path& path, const Bytes& bytes);

}  // namespace LmTool
