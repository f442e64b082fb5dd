// Two lines read out together: their bytes alternate between the upper and the lower line.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

ReorderKernel TakeEverySecondByte;
void TakeEverySecondByte(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels) {
  for (std::size_t i = 0; i < pixels; ++i) destination[i] = source[2 * i];
}

}  // namespace LmImagingLib::LM_ISA
