#include "filter/default_filters.h"

#include "LmImagingLib/RGBFilter.h"

namespace LmImagingLib {

const RGBFilter& DefaultFilter(unsigned bitSize) {
  static const RGBFilter sFilters[] = {RGBFilter(16), RGBFilter(8), RGBFilter(10), RGBFilter(12), RGBFilter(14)};
  for (const RGBFilter& filter : sFilters) {
    if (filter.GetBitSize() == bitSize) return filter;
  }
  return sFilters[0];
}

}  // namespace LmImagingLib
