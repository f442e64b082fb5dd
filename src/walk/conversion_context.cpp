#include "walk/conversion_context.h"

#include <map>
#include <utility>

#include "LmBaseLib/Gate.h"
#include "LmBaseLib/LockScope.h"
#include "LmUserLib/Thread.h"

namespace LmImagingLib {

namespace {

using LmBaseLib::LockScope;
using LmUserLib::Thread;

using Entries = std::map<unsigned long, ConversionContext>;

struct ContextMap {
  LmBaseLib::Gate gate;
  Entries contexts;
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
  // Entries are made and destroyed where no other thread waits for it.
  Entries made;
  auto entry = made.extract(made.try_emplace(Thread::GetCurrentThreadID()).first);
  tContext = &entry.mapped();
  ContextMap& map = Contexts();
  const LockScope lock(map.gate);
  map.contexts.insert(std::move(entry));
  return tContext;
}

void ReleaseConversionContext(ConversionContext* context) {
  if (--context->references != 0) return;
  tContext = nullptr;
  Entries::node_type entry;
  ContextMap& map = Contexts();
  const LockScope lock(map.gate);
  entry = map.contexts.extract(Thread::GetCurrentThreadID());
}

std::size_t CountConversionContexts() {
  ContextMap& map = Contexts();
  const LockScope lock(map.gate);
  return map.contexts.size();
}

}  // namespace LmImagingLib
