// Grayscale10: 16-bit little-endian words of 10 bits; the 8 bits of the pixel are the top ones.
#include "kernels/writers/gray_words.h"

LM_EXPORT_WRITER(StoreGrayscale10, GrayWords<2>)
