// Every RGB and BGR type to every other colour type.
#include "builtin/builtin.h"
#include "builtin/catalogue.h"

namespace LmImagingLib::Builtin {

namespace {

template <class Output>
using RGBPlanar8To = RGBPlanarTo<unsigned char, Output>;
template <class Output>
using RGBPlanar16To = RGBPlanarTo<unsigned short, Output>;

}  // namespace

void RegisterRGBConverters() {
  for (const PixelTypeID from : {0x20002, 0x420002, 0x2000A, 0x42000A}) AddColor<RGB24PackedTo>(from);
  for (const PixelTypeID from : {0x20006, 0x420006}) AddColor<BGR24PackedTo>(from);
  for (const PixelTypeID from : {0x20003, 0x2000B, 0x42000B}) AddColor<RGB32To>(from);
  AddColor<BGR32To>(0x20007);
  AddColor<RGB16To>(0x20001);

  for (const PixelTypeID from : {0x20008, 0x120008}) AddColor<RGB48To>(from, ShiftOf(from, 10));
  for (const PixelTypeID from : {0x2000C, 0x12000C}) AddColor<RGB48To>(from, ShiftOf(from, 12));
  for (const PixelTypeID from : {0x20004, 0x120004}) AddColor<RGB48To>(from, ShiftOf(from, 16));
  AddColor<BGR48To>(0x20042, ShiftOf(0x20042, 10));
  AddColor<BGR48To>(0x20043, ShiftOf(0x20043, 12));
  for (const PixelTypeID from : {0x20009, 0x120009}) AddColor<RGB64To>(from, ShiftOf(from, 10));
  for (const PixelTypeID from : {0x2000D, 0x12000D}) AddColor<RGB64To>(from, ShiftOf(from, 12));
  for (const PixelTypeID from : {0x20005, 0x120005}) AddColor<RGB64To>(from, ShiftOf(from, 16));

  // The fourth plane of 0x82000B is ignored.
  for (const PixelTypeID from : {0x820002, 0x82000A, 0x82000B}) AddColor<RGBPlanar8To>(from);
  AddColor<RGBPlanar16To>(0x820008, ShiftOf(0x820008, 10));
  AddColor<RGBPlanar16To>(0x82000C, ShiftOf(0x82000C, 12));
  AddColor<RGBPlanar16To>(0x820004, ShiftOf(0x820004, 16));

  AddColor<BGR10PackedV1To>(0x20044);
  AddColor<BGR10PackedV2To>(0x20045);
  AddColor<RGB12PackedV1To>(0x20046);
}

}  // namespace LmImagingLib::Builtin
