#include "file_io.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <random>
#include <utility>

#include "error.h"

namespace LmTool {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr std::size_t kSeekStep = std::size_t{1} << 30;  // a `long` may have 32 bits

[[noreturn]] void Fail(const std::string& argument, const char* verb, const fs::path& path, const std::string& reason) {
  throw ToolError(argument, std::string("cannot ") + verb + " '" + path.string() + "': " + reason);
}

std::string LastError() { return std::strerror(errno); }

}  // namespace

FileReader::FileReader(std::string argument, fs::path path) : mArgument(std::move(argument)), mPath(std::move(path)) {
  std::error_code ignored;
  if (fs::is_directory(mPath, ignored)) Fail(mArgument, "read", mPath, "it is a directory");
  mFile.reset(std::fopen(mPath.string().c_str(), "rb"));
  if (mFile == nullptr) Fail(mArgument, "read", mPath, LastError());
  if (fs::is_regular_file(mPath, ignored)) mSize = static_cast<std::size_t>(fs::file_size(mPath));
}

std::size_t FileReader::Read(std::uint8_t* to, std::size_t count) {
  const std::size_t done = std::fread(to, 1, count, mFile.get());
  if (std::ferror(mFile.get()) != 0) Fail(mArgument, "read", mPath, LastError());
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
  std::error_code ignored;
  if (fs::is_directory(mPath, ignored)) Fail(mArgument, "write", mPath, "it is a directory");
  if (fs::exists(mPath, ignored) && !fs::is_regular_file(mPath, ignored)) {  // a device or a pipe keeps its name
    mFile.reset(std::fopen(mPath.string().c_str(), "wb"));
  } else {
    mTarget = fs::is_symlink(mPath, ignored) ? fs::weakly_canonical(mPath) : mPath;
    mTemporary = mTarget;
    mTemporary += ".tmp" + std::to_string(std::random_device()());
    mFile.reset(std::fopen(mTemporary.string().c_str(), "wbx"));
    if (mFile == nullptr) mTemporary.clear();
  }
  if (mFile == nullptr) Fail(mArgument, "write", mPath, LastError());
}

FileWriter::~FileWriter() {
  mFile.reset();
  std::error_code ignored;
  if (!mTemporary.empty()) fs::remove(mTemporary, ignored);
}

void FileWriter::Write(const Bytes& bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), mFile.get()) != bytes.size()) {
    Fail(mArgument, "write", mPath, LastError());
  }
}

void FileWriter::Commit() {
  if (std::fclose(mFile.release()) != 0) Fail(mArgument, "write", mPath, LastError());
  if (mTemporary.empty()) return;
  std::error_code error;
  fs::rename(mTemporary, mTarget, error);
  if (error) Fail(mArgument, "write", mPath, error.message());
  mTemporary.clear();
}

void WriteFile(const std::string& argument, const fs::path& path, const Bytes& bytes) {
  FileWriter writer(argument, path);
  writer.Write(bytes);
  writer.Commit();
}

}  // namespace LmTool
