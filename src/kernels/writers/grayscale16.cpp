// Grayscale16: 16-bit little-endian words from 0 to 255: the value is not widened, applications scale it themselves.
#include "kernels/writers/gray_words.h"

LM_EXPORT_WRITER(StoreGrayscale16, GrayWords<0>)
