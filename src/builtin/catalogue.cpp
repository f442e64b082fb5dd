#include "builtin/catalogue.h"

namespace LmImagingLib::Builtin {

std::vector<std::unique_ptr<const PixelConverter>>& Converters() {
  static std::vector<std::unique_ptr<const PixelConverter>> sConverters;
  return sConverters;
}

void AddChain(const PixelTypeID& from, const PixelTypeID& between, const PixelTypeID& to) {
  const PixelConverter& first = *PixelTypeFactory::FindConverter(from, between);
  const PixelConverter& second = *PixelTypeFactory::FindConverter(between, to);
  Converters().push_back(std::make_unique<const ComplexConverter>(first, second));
  PixelTypeFactory::RegisterPixelConverter(from, to, Converters().back().get());
}

void AddIdentity(const PixelTypeID& from, const PixelTypeID& to) {
  PixelTypeFactory::RegisterPixelConverter(from, to, PixelTypeFactory::FindConverter(from, from));
}

TapOrder TapOrderOf(const PixelTypeID& id) {
  switch (id & kDualOutputMask) {
    case kDualLeftRight:
      return {1, 1};
    case kDualLeftRightInverted:
      return {1, -1};
    case kDualLeftInvertedRight:
      return {-1, 1};
    case kDualLeftInvertedRightInverted:
      return {-1, -1};
    default:
      return {};
  }
}

}  // namespace LmImagingLib::Builtin
