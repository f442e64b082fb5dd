// The one registry of the process: its gate, when it is made and when it is released.
#include <new>

#if defined(__unix__)
#include <pthread.h>
#endif

#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "base/unload.h"
#include "factory/factory_internal.h"

namespace LmImagingLib {

using LmBaseLib::Gate;

PixelTypeFactoryInternal* PixelTypeFactory::sInternal = nullptr;

namespace {

// Never destroyed: static objects of other libraries, and other threads, may ask for converters while the process ends.
alignas(Gate) unsigned char sGateMemory[sizeof(Gate)];

#if defined(__unix__)
// A thread of the child would wait for ever for a gate that another thread of the parent held.
struct ForkHandlers {
  ForkHandlers() {
    pthread_atfork([] { FactoryGate().Lock(); }, [] { FactoryGate().Unlock(); }, [] { new (sGateMemory) Gate; });
  }
};
const ForkHandlers kForkHandlers;
#endif

}  // namespace

Gate& FactoryGate() {
  static Gate& sGate = *new (sGateMemory) Gate;
  return sGate;
}

/// Gives the registry back when the library is closed.
struct RegistryRelease {
  static void Release() {
    if (!LmBaseLib::IsBeingClosed()) return;
    delete PixelTypeFactory::sInternal;
    PixelTypeFactory::sInternal = nullptr;
  }
#if defined(_WIN32)
  ~RegistryRelease() { Release(); }
#endif
};

#if defined(_WIN32)
namespace {
const RegistryRelease kRelease;
}
#else
// Not a static object: at the end of the process those are destroyed before it is known that the process ends.
__attribute__((destructor)) static void ReleaseRegistry() { RegistryRelease::Release(); }
#endif

// Called under the gate. Null if there is no memory for the registry.
PixelTypeFactoryInternal* PixelTypeFactory::Internal() {
  if (sInternal == nullptr) sInternal = new (std::nothrow) PixelTypeFactoryInternal;
  return sInternal;
}

}  // namespace LmImagingLib
