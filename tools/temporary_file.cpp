#include "temporary_file.h"

#include <cerrno>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <thread>
#endif

namespace LmTool {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Fail(const std::string& reason) { throw std::runtime_error(reason); }

#ifdef _WIN32

std::string SystemError() { return std::system_category().message(static_cast<int>(GetLastError())); }

// The system removes a marked file when its last handle is closed, however the process ends.
void MarkForRemoval(HANDLE file, bool marked) {
  FILE_DISPOSITION_INFO disposition{};
  disposition.DeleteFile = marked ? TRUE : FALSE;
  if (SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition) == 0) Fail(SystemError());
}

File Create(const fs::path& path, const fs::path&) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                  CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) Fail("no new file in its folder: " + SystemError());
  File stream(_fdopen(_open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY), "wb"));
  if (stream == nullptr) Fail(std::strerror(errno));
  MarkForRemoval(file, true);
  return stream;
}

void Keep(std::FILE* file) { MarkForRemoval(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))), false); }
void RemoveOnSignal(const fs::path&) {}
void ForgetOnSignal(const fs::path&) {}
void CatchSignals() {}

#else

std::string SystemError() { return std::strerror(errno); }

// Takes over from the file that is to be replaced: its permissions, its owner and, if possible, its group.
void TakeOver(int file, const struct stat& replaced) {
  struct stat own {};
  if (fstat(file, &own) != 0) Fail(SystemError());
  mode_t permissions = replaced.st_mode & 0777;
  if (own.st_gid != replaced.st_gid && fchown(file, own.st_uid, replaced.st_gid) != 0) {
    permissions &= ~mode_t{070} | (permissions & 07) << 3;  // another group may do what everyone may
  }
  if (own.st_uid != replaced.st_uid && fchown(file, replaced.st_uid, static_cast<gid_t>(-1)) != 0) {
    Fail("it belongs to user " + std::to_string(replaced.st_uid) +
         ", to whom a new file cannot be given; allowed: a file of your own, or a new name");
  }
  if (fchmod(file, permissions) != 0) Fail("its permissions cannot be kept: " + SystemError());
}

// Held while a file is created. Signals wait meanwhile: those of this thread are blocked, those of others see the flag.
std::atomic_flag sCreating = ATOMIC_FLAG_INIT;
class Creation {
 public:
  Creation() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &mBefore);
    while (sCreating.test_and_set()) std::this_thread::yield();
  }
  Creation(const Creation&) = delete;
  Creation& operator=(const Creation&) = delete;
  ~Creation() {
    sCreating.clear();
    pthread_sigmask(SIG_SETMASK, &mBefore, nullptr);
  }

 private:
  sigset_t mBefore{};
};

int CreateNew(const fs::path& path, mode_t permissions) {
  const Creation creation;
  return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
}

File Create(const fs::path& path, const fs::path& target) {
  struct stat replaced {};
  const bool replaces = stat(target.c_str(), &replaced) == 0;
  if (replaces && faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
    Fail(SystemError() + "; allowed: a file with write permission, or a new name");
  }
  // A file that replaces a private one is private from the start.
  const int descriptor = CreateNew(path, replaces ? 0600 : 0666);
  if (descriptor < 0) Fail("no new file in its folder: " + SystemError());
  File file(fdopen(descriptor, "wb"));
  if (file == nullptr) Fail(SystemError());
  if (replaces) TakeOver(descriptor, replaced);
  return file;
}

void Keep(std::FILE*) {}

// The handler of a signal uses this table alone. A signal may come at any time, so each change is one step.
std::array<std::atomic<const char*>, 512> sNames;  // twice as many as files can be written at a time

// The first entry that has one value gets another.
bool Exchange(const char* from, const char* to) {
  return std::any_of(sNames.begin(), sNames.end(), [=](auto& entry) {
    const char* expected = from;
    return entry.compare_exchange_strong(expected, to);
  });
}

void RemoveOnSignal(const fs::path& path) {
  if (!Exchange(nullptr, path.c_str())) Fail("too many files are being written");
}
void ForgetOnSignal(const fs::path& path) { Exchange(path.c_str(), nullptr); }

extern "C" void RemoveNames(int signal) {
  while (sCreating.test_and_set()) {  // no thread creates a file from now on
  }
  for (const auto& entry : sNames) {
    if (const char* const name = entry.load(); name != nullptr) unlink(name);
  }
  raise(signal);  // with the default action, which ends the process when this function returns
}

void CatchSignals() {
  std::signal(SIGXFSZ, SIG_IGN);  // the write fails
  constexpr int kHarmless[] = {SIGCHLD, SIGCONT, SIGTSTP, SIGTTIN, SIGTTOU, SIGURG, SIGWINCH};
  struct sigaction removal {};
  removal.sa_handler = RemoveNames;
  removal.sa_flags = static_cast<int>(SA_RESETHAND);
  sigfillset(&removal.sa_mask);
  for (int signal = 1; signal <= SIGRTMAX; ++signal) {
    if (std::find(std::begin(kHarmless), std::end(kHarmless), signal) != std::end(kHarmless)) continue;
    // A signal that the caller has ignored, as nohup does, stays ignored.
    struct sigaction current {};
    if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_DFL) {
      sigaction(signal, &removal, nullptr);
    }
  }
}

#endif

// Of a length of its own: a name made from the target's could be too long.
fs::path NewName(const fs::path& folder) {
  std::random_device random;
  return folder / ("lmimaging-" + std::to_string(random()) + "-" + std::to_string(random()) + ".tmp");
}

}  // namespace

TemporaryFile::Name::Name(const fs::path& folder) : mPath(NewName(folder)) { RemoveOnSignal(mPath); }

TemporaryFile::Name::~Name() {
  std::error_code ignored;
  fs::remove(mPath, ignored);
  ForgetOnSignal(mPath);
}

TemporaryFile::TemporaryFile(const fs::path& target)
    : mTarget(target), mName(target.parent_path()), mFile(Create(mName.Path(), target)) {}

void TemporaryFile::ReplaceTarget() {
  Keep(mFile.get());
  if (std::fclose(mFile.release()) != 0) Fail(std::strerror(errno));
  std::error_code error;
  fs::rename(mName.Path(), mTarget, error);
  if (error) Fail(error.message());
}

void CatchEndingSignals() { CatchSignals(); }

}  // namespace LmTool
