#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

namespace LmTool {

/// A bar on the error stream for a person who waits; absent where none watches, and for a single step. Any number of
/// threads may take steps.
class Progress {
 public:
  explicit Progress(std::size_t steps);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Hide(); }

  /// A step is done.
  void Step(const std::string& what);
  /// Takes the bar away, for a message; the next step brings it back.
  void Hide();

 private:
  std::mutex mMutex;
  std::size_t mSteps;
  std::size_t mDone = 0;
  bool mWatched;
  bool mShown = false;
  std::chrono::steady_clock::time_point mNext{};
};

}  // namespace LmTool
