#pragma once

#include <cstdint>

#include "LmBaseLib/Export.h"

/// The operating system, as far as the libraries need it.
namespace LmUserLib {

/// Facts about threads.
class LM_EXPORT Thread {
 public:
  /// A number that no other running thread of this process has. It is not the operating system's thread id.
  static std::uint32_t GetCurrentThreadID();
};

}  // namespace LmUserLib
