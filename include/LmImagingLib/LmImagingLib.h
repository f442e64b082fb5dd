#pragma once

/// Everything that the library offers.
#include "LmImagingLib/BMPSaver.h"
#include "LmImagingLib/Development.h"
#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/ImageViews.h"
#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/PixelTypeID.h"
#include "LmImagingLib/RGBFilter.h"
#include "LmImagingLib/ToneCurve.h"
#include "LmImagingLib/V4L2.h"
#include "LmImagingLib/Version.h"
#include "LmImagingLib/WhiteBalance.h"
