#include "LmUserLib/Thread.h"

#include <atomic>

namespace LmUserLib {

std::uint32_t Thread::GetCurrentThreadID() {
  // Counted rather than asked of the system: no call into the kernel, and the same on every platform.
  static std::atomic<std::uint32_t> sLast{0};
  thread_local const std::uint32_t tThreadID = ++sLast;
  return tThreadID;
}

}  // namespace LmUserLib
