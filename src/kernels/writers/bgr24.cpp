// BGR24: the bytes blue, green, red.
#include "kernels/writers/interleaved.h"

LM_EXPORT_WRITER(StoreBGR24, Interleaved<First::kBlue, 3>)
