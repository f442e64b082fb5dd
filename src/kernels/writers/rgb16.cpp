#include "kernels/writers/rgb16.h"

LM_EXPORT_WRITER(StoreRGB16, RGB16Writer)
