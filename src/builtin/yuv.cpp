// Every YUV type to every colour type.
#include "builtin/builtin.h"
#include "builtin/catalogue.h"

namespace LmImagingLib::Builtin {

void RegisterYUVConverters() {
  for (const PixelTypeID from : {0x40001, 0x240001}) AddColor<YUV8To>(from);
  AddColor<YUV8422GEVTo>(0x40008);
  for (const PixelTypeID from : {0x40002, 0x240002, 0x140002, 0x340002}) AddColor<YUV10To>(from, ShiftOf(from, 10));
  for (const PixelTypeID from : {0x440003, 0x640003}) AddColor<YUV8444To>(from);
  AddColor<YUV8444GEVTo>(0x440007);
  for (const PixelTypeID from : {0x440005, 0x640005}) AddColor<YCrCbTo>(from);
  for (const PixelTypeID from : {0x440006, 0x640006}) AddColor<YUV8411To>(from);
}

}  // namespace LmImagingLib::Builtin
