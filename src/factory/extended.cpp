#include "LmImagingLib/Extended.h"

#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/factory_internal.h"

namespace LmImagingLib {

/// A friend of the factory. The function below cannot be one, because it is imported on Windows.
struct RegistryExtension {
  static LmBaseLib::Result Register() {
    const LmBaseLib::LockScope lock(FactoryGate());
    PixelTypeFactoryInternal* const state = PixelTypeFactory::Internal();
    if (state == nullptr) return LmBaseLib::Result::NOT_ENOUGH_MEMORY;
    state->Extend();
    return LmBaseLib::Result::OK;
  }
};

LmBaseLib::Result RegisterExtendedFormats() { return RegistryExtension::Register(); }

}  // namespace LmImagingLib
