#include "convert/conversion_context.h"

#include <map>
#include <memory>

#include "LmBaseLib/Gate.h"
#include "LmBaseLib/LockScope.h"
#include "LmUserLib/Thread.h"

namespace LmImagingLib {

namespace {

using LmBaseLib::LockScope;
using LmUserLib::Thread;

struct ContextMap {
  LmBaseLib::Gate gate;
  std::map<unsigned long, std::unique_ptr<ConversionContext>> contexts;
};

ContextMap& Contexts() {
  static ContextMap sContexts;
  return sContexts;
}

// Kernels acquire the context for every line; this keeps them away from the gate, where all threads would meet.
#if defined(__GNUC__) && !defined(_WIN32)
[[gnu::tls_model("initial-exec")]]  // without a call of the dynamic linker's for each access
#endif
thread_local ConversionContext* tContext = nullptr;

}  // namespace

ConversionContext* AcquireConversionContext() {
  if (tContext != nullptr) {
    ++tContext->references;
    return tContext;
  }
  ContextMap& map = Contexts();
  const LockScope lock(map.gate);
  auto& entry = map.contexts[Thread::GetCurrentThreadID()];
  if (entry == nullptr) entry = std::make_unique<ConversionContext>();
  tContext = entry.get();
  return tContext;
}

void ReleaseConversionContext(ConversionContext* context) {
  if (--context->references != 0) return;
  ContextMap& map = Contexts();
  const LockScope lock(map.gate);
  tContext = nullptr;
  map.contexts.erase(Thread::GetCurrentThreadID());
}

std::size_t CountConversionContexts() {
  ContextMap& map = Contexts();
  const LockScope lock(map.gate);
  return map.contexts.size();
}

}  // namespace LmImagingLib
