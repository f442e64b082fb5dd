#include "file_io.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <utility>

#include "error.h"

namespace LmTool {

namespace {

namespace fs = std::filesystem;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

[[noreturn]] void Fail(const std::string& argument, const char* verb, const fs::path& path, const std::string& reason) {
  throw ToolError(argument, std::string("cannot ") + verb + " '" + path.string() + "': " + reason);
}

std::string LastError() { return std::strerror(errno); }

void WriteAndClose(const std::string& argument, const fs::path& path, File file, const Bytes& bytes) {
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  const std::string reason = LastError();
  if (std::fclose(file.release()) != 0) Fail(argument, "write", path, LastError());
  if (!written) Fail(argument, "write", path, reason);
}

// Removes the temporary file unless it has been given its final name.
struct TemporaryFile {
  fs::path path;
  bool renamed = false;

  explicit TemporaryFile(const fs::path& target) : path(target) {
    path += ".tmp" + std::to_string(std::random_device()());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    if (!renamed) fs::remove(path, ignored);
  }
};

}  // namespace

FileContent ReadFile(const std::string& argument, const fs::path& path, std::size_t limit) {
  std::error_code ignored;
  if (fs::is_directory(path, ignored)) Fail(argument, "read", path, "it is a directory");
  const File file(std::fopen(path.string().c_str(), "rb"));
  if (file == nullptr) Fail(argument, "read", path, LastError());
  const bool regular = fs::is_regular_file(path, ignored);
  const std::size_t fileSize = regular ? static_cast<std::size_t>(fs::file_size(path)) : 0;

  FileContent content{Bytes(regular ? std::min(fileSize, limit) : limit), fileSize};
  const std::size_t count = std::fread(content.bytes.data(), 1, content.bytes.size(), file.get());
  if (std::ferror(file.get()) != 0) Fail(argument, "read", path, LastError());
  content.bytes.resize(count);
  if (!regular) content.fileSize = count;
  return content;
}

void WriteFile(const std::string& argument, const fs::path& path, const Bytes& bytes) {
  std::error_code ignored;
  if (fs::is_directory(path, ignored)) Fail(argument, "write", path, "it is a directory");
  if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored)) {  // a device or a pipe keeps its name
    File file(std::fopen(path.string().c_str(), "wb"));
    if (file == nullptr) Fail(argument, "write", path, LastError());
    WriteAndClose(argument, path, std::move(file), bytes);
    return;
  }

  const fs::path target = fs::is_symlink(path, ignored) ? fs::weakly_canonical(path) : path;
  TemporaryFile temporary(target);
  File file(std::fopen(temporary.path.string().c_str(), "wbx"));
  if (file == nullptr) Fail(argument, "write", path, LastError());
  WriteAndClose(argument, path, std::move(file), bytes);
  std::error_code error;
  fs::rename(temporary.path, target, error);
  if (error) Fail(argument, "write", path, error.message());
  temporary.renamed = true;
}

}  // namespace LmTool
