#include "progress.h"

#include <algorithm>
#include <iostream>

#include "terminal.h"

namespace LmTool {

namespace {

constexpr std::size_t kBarWidth = 30;
constexpr std::chrono::milliseconds kPause(50);  // that an eye does not notice, and a terminal does

}  // namespace

Progress::Progress(std::size_t steps) : mSteps(steps), mWatched(steps > 1 && ErrorStreamIsTerminal()) {}

void Progress::Step(const std::string& what) {
  const std::lock_guard<std::mutex> lock(mMutex);
  ++mDone;
  const auto now = std::chrono::steady_clock::now();
  if (!mWatched || (now < mNext && mDone < mSteps)) return;
  mNext = now + kPause;
  mShown = true;
  const std::size_t full = std::min(mDone, mSteps) * kBarWidth / mSteps;
  std::cerr << "\r[" << std::string(full, '#') << std::string(kBarWidth - full, '.') << "] " << mDone << '/' << mSteps
            << ' ' << Printable(what) << "\x1b[K" << std::flush;
}

void Progress::Hide() {
  const std::lock_guard<std::mutex> lock(mMutex);
  if (mShown) std::cerr << "\r\x1b[K" << std::flush;
  mShown = false;
}

}  // namespace LmTool
