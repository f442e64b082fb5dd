#include "type_variants.h"

#include <algorithm>

namespace LmTool {

using LmImagingLib::PixelTypeID;

std::vector<TypeWithVariants> Folded(const std::vector<PixelTypeID>& types) {
  std::vector<TypeWithVariants> folded;
  for (const PixelTypeID type : types) {
    const auto first = std::find_if(folded.begin(), folded.end(), [&](const TypeWithVariants& other) {
      return (other.type & ~kVariantFlags) == (type & ~kVariantFlags);
    });
    if (first == folded.end()) {
      folded.push_back({type, {}});
    } else {
      first->variants.push_back(type);
    }
  }
  return folded;
}

}  // namespace LmTool
