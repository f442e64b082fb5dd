#pragma once

#include "LmImagingLib/Development.h"
#include "LmImagingLib/RGBFilter.h"
#include "LmImagingLib/lmimaging.h"

// The objects behind the handles of the interface for C.

struct LmiFilter {
  LmImagingLib::RGBFilter filter;
};

struct LmiDevelopment {
  LmImagingLib::Development development;
};
