#pragma once

namespace LmImagingLib {

class RGBFilter;

/// The identity filter that stands in for a missing one: of 8, 10, 12 or 14 bits for a source of that many, else of 16.
const RGBFilter& DefaultFilter(unsigned bitSize);

}  // namespace LmImagingLib
