#include "factory/factory_internal.h"

#include <new>

#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {

PixelTypeFactoryInternal* PixelTypeFactory::sInternal = nullptr;

LmBaseLib::Gate& FactoryGate() {
  // Never destroyed: another library's static objects may still ask for converters while the process ends.
  static auto* const sGate = new LmBaseLib::Gate;
  return *sGate;
}

// Called under the gate. Null if there is no memory for the registry.
PixelTypeFactoryInternal* PixelTypeFactory::Internal() {
  struct Release {
    ~Release() {
      const LmBaseLib::LockScope lock(FactoryGate());  // a thread may still be asking while the process ends
      delete sInternal;
      sInternal = nullptr;
    }
  };
  static const Release sReleaseAtUnload;
  if (sInternal == nullptr) sInternal = new (std::nothrow) PixelTypeFactoryInternal;
  return sInternal;
}

}  // namespace LmImagingLib
