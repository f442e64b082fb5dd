#include "image/stages.h"

#include <typeinfo>

namespace LmImagingLib {

ConverterStages StagesOf(const PixelConverter& converter) {
  // A class derived from the chain may do anything in between.
  if (typeid(converter) != typeid(ComplexConverter)) return {converter, nullptr};
  const auto& chain = static_cast<const ComplexConverter&>(converter);
  return {*chain.mFirst, chain.mSecond};
}

}  // namespace LmImagingLib
