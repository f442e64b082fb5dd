#include "c/call.h"

#include <cstdio>

#include "LmImagingLib/Version.h"

namespace LmImagingLib::C {

namespace {

// Plain bytes, so that threads that outlive static objects still have them.
char (&MessageOfThread())[1024] {
  thread_local char message[1024] = {};
  return message;
}

}  // namespace

LmiCode Report(int code, const char* message) noexcept {
  std::snprintf(MessageOfThread(), sizeof MessageOfThread(), "%s", message);
  return code;
}

}  // namespace LmImagingLib::C

const char* lmiVersion() { return LmImagingLib::GetVersion(); }

const char* lmiMessage() { return LmImagingLib::C::MessageOfThread(); }
