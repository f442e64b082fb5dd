#include "LmImagingLib/Extended.h"

#include "LmBaseLib/LockScope.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/factory_internal.h"

namespace LmImagingLib {

LmBaseLib::Result RegisterExtendedFormats() {
  const LmBaseLib::LockScope lock(FactoryGate());
  PixelTypeFactoryInternal* const state = PixelTypeFactory::Internal();
  if (state == nullptr) return LmBaseLib::Result::NOT_ENOUGH_MEMORY;
  state->Extend();
  return LmBaseLib::Result::OK;
}

}  // namespace LmImagingLib
