#pragma once

#include "model/line.h"

namespace model {

void CopyLine(Line& line);

void Gray8(Line& line);
void Gray8Signed(Line& line);
void Gray16(Line& line);
void GrayPackedGEV(Line& line);
void GrayPacked(Line& line);
void FewBits(Line& line);
void BitStream(Line& line);
void CSI2(Line& line);

void QuadTaps8(Line& line);
void QuadTaps16(Line& line);
void DualLines(Line& line);

void Bayer8(Line& line);
void Bayer16(Line& line);

void RGB24(Line& line);
void BGR24(Line& line);
void RGB32(Line& line);
void BGR32(Line& line);
void RGB16(Line& line);
void RGB48(Line& line);
void BGR48(Line& line);
void RGB64(Line& line);
void BGR64(Line& line);
void RGBPlanar8(Line& line);
void RGBPlanar16(Line& line);
void BGR10PackedV1(Line& line);
void BGR10PackedV2(Line& line);
void RGB12PackedV1(Line& line);
void RGBStream(Line& line);
void BGRStream(Line& line);
void RGB10V1(Line& line);
void RGB10p32(Line& line);
void RGB565p(Line& line);

void YUV8(Line& line);
void YUV8GEV(Line& line);
void YUV10(Line& line);
void YUV444(Line& line);
void YUV444GEV(Line& line);
void YCrCb(Line& line);
void YUV411(Line& line);

}  // namespace model
