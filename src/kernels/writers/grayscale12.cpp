// Grayscale12: 16-bit little-endian words of 12 bits; the 8 bits of the pixel are the top ones.
#include "kernels/writers/gray_words.h"

LM_EXPORT_WRITER(StoreGrayscale12, GrayWords<4>)
