#pragma once

#include "model/line.h"

namespace model {

KernelFunction CopyLine;
KernelFunction Gray8, Gray8Signed, Gray16, GrayPackedGEV, GrayPacked, FewBits, BitStream, CSI2;
KernelFunction QuadTaps8, QuadTaps16, DualLines;
KernelFunction Bayer8, Bayer16;
KernelFunction RGB24, BGR24, RGB32, BGR32, RGB16, RGB48, BGR48, RGB64, BGR64, RGBPlanar8, RGBPlanar16, BGR10PackedV1,
    BGR10PackedV2, RGB12PackedV1, RGBStream, BGRStream, RGB10V1, RGB10p32, RGB565p;
KernelFunction YUV8, YUV8GEV, YUV10, YUV444, YUV444GEV, YCrCb, YUV411;

}  // namespace model
