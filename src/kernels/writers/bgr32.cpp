// BGR32: the bytes blue, green, red, 0.
#include "kernels/writers/interleaved.h"

LM_EXPORT_WRITER(StoreBGR32, Interleaved<First::kBlue, 4>)
