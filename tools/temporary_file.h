#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

namespace LmTool {

struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != stdin && file != stdout) std::fclose(file);
  }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// A new file in the folder of a target, whose place it takes at the end. Until then it has a name of its own. It is
/// removed with the object, and when a signal ends the process. Faults are `std::runtime_error`s.
///
/// Not for more than one thread.
class TemporaryFile {
 public:
  /// Creates the file, empty. If the target exists, the file gets its permissions, its owner, and where the system
  /// permits it, its group.
  /// @param target  a file that may be missing; no symbolic link, which would be replaced itself
  explicit TemporaryFile(const std::filesystem::path& target);

  /// The file, open for writing. Null after `ReplaceTarget`.
  std::FILE* Stream() const { return mFile.get(); }

  /// Closes the file and renames it to the target.
  void ReplaceTarget();

 private:
  // A name that no file has any more when the object, or the process, ends.
  class Name {
   public:
    explicit Name(const std::filesystem::path& folder);
    Name(const Name&) = delete;
    Name& operator=(const Name&) = delete;
    ~Name();

    const std::filesystem::path& Path() const { return mPath; }

   private:
    std::filesystem::path mPath;
  };

  std::filesystem::path mTarget;
  Name mName;
  File mFile;  // closed before its name is removed
};

/// Makes each signal that would end the process remove its temporary files first. Turns the signal of the file size
/// limit into an error of writing.
void CatchEndingSignals();

}  // namespace LmTool
