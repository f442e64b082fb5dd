#include "walk/frame.h"

namespace LmImagingLib {

namespace {

#if defined(__GNUC__) && !defined(_WIN32)
[[gnu::tls_model("initial-exec")]]  // without a call of the dynamic linker's for each access
#endif
thread_local ThreadState tState;

}  // namespace

ThreadState& CurrentThread() { return tState; }

}  // namespace LmImagingLib
