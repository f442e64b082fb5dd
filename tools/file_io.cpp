#include "file_io.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "error.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <csignal>
#endif

namespace LmTool {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr std::size_t kSeekStep = std::size_t{1} << 30;  // a `long` may have 32 bits

constexpr const char* kRead = "read";
constexpr const char* kWrite = "write";

[[noreturn]] void Fail(const std::string& argument, const char* verb, const fs::path& path, const std::string& reason) {
  const std::string stream = std::string("the standard ") + (verb == kRead ? "input" : "output");
  throw ToolError(argument, std::string("cannot ") + verb + " " +
                                (IsStandardStream(path) ? stream : "'" + path.string() + "'") + ": " + reason);
}

std::string LastError() {
  if (errno == EFBIG) return "it would exceed the limit for the size of files, of `ulimit -f` or of the file system";
  return std::strerror(errno);
}

// The path that a chain of symbolic links leads to, where a file may be missing.
fs::path FollowLinks(fs::path path) {
  constexpr int kMostLinks = 40;
  std::error_code ignored;
  for (int links = 0; fs::is_symlink(path, ignored); ++links) {
    if (links == kMostLinks) throw std::runtime_error(std::strerror(ELOOP));
    path = path.parent_path() / fs::read_symlink(path);
  }
  return path;
}

// The stream for frames, whose bytes stay as they are. A reader that closes its end makes writing fail instead of
// ending the process.
std::FILE* StandardStream(std::FILE* stream) {
#ifdef _WIN32
  _setmode(_fileno(stream), _O_BINARY);
#else
  if (stream == stdout) std::signal(SIGPIPE, SIG_IGN);
#endif
  return stream;
}

}  // namespace

FileReader::FileReader(std::string argument, fs::path path) : mArgument(std::move(argument)), mPath(std::move(path)) {
  if (IsStandardStream(mPath)) {
    mFile.reset(StandardStream(stdin));
    return;
  }
  std::error_code ignored;
  if (fs::is_directory(mPath, ignored)) Fail(mArgument, kRead, mPath, "it is a directory");
  mFile.reset(std::fopen(mPath.string().c_str(), "rb"));
  if (mFile == nullptr) Fail(mArgument, kRead, mPath, LastError());
  if (fs::is_regular_file(mPath, ignored)) mSize = static_cast<std::size_t>(fs::file_size(mPath));
}

std::size_t FileReader::Read(std::uint8_t* to, std::size_t count) {
  const std::size_t done = std::fread(to, 1, count, mFile.get());
  if (std::ferror(mFile.get()) != 0) Fail(mArgument, kRead, mPath, LastError());
  return done;
}

Bytes FileReader::ReadUpTo(std::size_t limit) {
  Bytes bytes;
  for (std::size_t end = 0; end < limit;) {  // in growing steps: nobody knows how much a pipe holds
    const std::size_t wanted = std::min(limit - end, std::max(mSize.value_or(0) + 1, std::max(kBlock, end)));
    bytes.resize(end + wanted);
    const std::size_t count = Read(bytes.data() + end, wanted);
    end += count;
    bytes.resize(end);
    if (count < wanted) break;
  }
  return bytes;
}

void FileReader::Skip(std::size_t count) {
  Bytes block(mSize ? 0 : std::min(count, kBlock));
  while (count != 0) {
    const std::size_t part = std::min(count, mSize ? kSeekStep : kBlock);
    const bool done =
        mSize ? std::fseek(mFile.get(), static_cast<long>(part), SEEK_CUR) == 0 : Read(block.data(), part) == part;
    if (!done) return;  // the next read finds the end
    count -= part;
  }
}

FileWriter::FileWriter(std::string argument, fs::path path) : mArgument(std::move(argument)), mPath(std::move(path)) {
  if (IsStandardStream(mPath)) {
    mDevice.reset(StandardStream(stdout));
    return;
  }
  std::error_code ignored;
  if (fs::is_directory(mPath, ignored)) Fail(mArgument, kWrite, mPath, "it is a directory");
  if (fs::exists(mPath, ignored) && !fs::is_regular_file(mPath, ignored)) {  // a device or a pipe keeps its name
    mDevice.reset(std::fopen(mPath.string().c_str(), "wb"));
    if (mDevice == nullptr) Fail(mArgument, kWrite, mPath, LastError());
    return;
  }
  try {
    mTemporary.emplace(FollowLinks(mPath));
  } catch (const std::runtime_error& error) {
    Fail(mArgument, kWrite, mPath, error.what());
  }
}

void FileWriter::Write(const Bytes& bytes) {
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), Stream()) == bytes.size();
  if (!written || (mDevice != nullptr && std::fflush(Stream()) != 0)) {  // a reader waits for the whole frame
    Fail(mArgument, kWrite, mPath, LastError());
  }
}

void FileWriter::Commit() {
  if (std::fflush(Stream()) != 0) Fail(mArgument, kWrite, mPath, LastError());
  if (!mTemporary) return;
  try {
    mTemporary->ReplaceTarget();
  } catch (const std::runtime_error& error) {
    Fail(mArgument, kWrite, mPath, error.what());
  }
}

void WriteFile(const std::string& argument, const fs::path& path, const Bytes& bytes) {
  FileWriter writer(argument, path);
  writer.Write(bytes);
  writer.Commit();
}

}  // namespace LmTool
