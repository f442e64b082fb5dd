#include "base/unload.h"

#include <cstdlib>  // for __GLIBC__

#if defined(__GLIBC__)
#include <dlfcn.h>
#include <link.h>

// Of the C++ ABI for static objects: `exit` calls every registered function, the last one first; `__cxa_finalize` calls
// those of one library, and forgets them.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
int __cxa_atexit(void (*function)(void*), void* argument, void* library);
void __cxa_finalize(void* library);
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)
}
#endif

namespace LmBaseLib {

#if defined(__GLIBC__)

namespace {

bool sProcessEnds = false;
bool sIsClosing = false;
char sToken;  // its address identifies a library that only `exit` finalises

void OnExit(void* /*argument*/) { sProcessEnds = !sIsClosing; }

// Whether this code is part of the program, or of a library that it was started with, which is in the program's own
// scope: a library that is being opened is not there yet. Neither is closed before the process ends.
bool IsStartedWithProgram() {
  void* const program = dlopen(nullptr, RTLD_LAZY);
  if (program == nullptr) return false;
  link_map *own = nullptr, *first = nullptr;
  Dl_info ignored;
  dladdr1(&sToken, &ignored, reinterpret_cast<void**>(&own), RTLD_DL_LINKMAP);
  dlinfo(program, RTLD_DI_LINKMAP, &first);
  link_map* found = nullptr;
  const void* const version = dlsym(program, "_ZN12LmImagingLib10GetVersionEv");
  if (version != nullptr) dladdr1(version, &ignored, reinterpret_cast<void**>(&found), RTLD_DL_LINKMAP);
  dlclose(program);
  return own != nullptr && (own == first || own == found);
}

struct Watch {
  Watch() : canBeClosed(!IsStartedWithProgram()) { __cxa_atexit(OnExit, nullptr, &sToken); }

  bool canBeClosed;
};
const Watch kWatch;

}  // namespace

bool IsBeingClosed() {
  if (!kWatch.canBeClosed || sProcessEnds) return false;
  sIsClosing = true;
  __cxa_finalize(&sToken);
  return true;
}

#elif defined(_WIN32)

// When a process ends here, its other threads have ended before.
bool IsBeingClosed() { return true; }

#else

bool IsBeingClosed() { return false; }

#endif

}  // namespace LmBaseLib
