// Every Bayer mosaic to every colour type, and to the mosaic of 8 bits.
#include "builtin/builtin.h"
#include "builtin/catalogue.h"

namespace LmImagingLib::Builtin {

namespace {

constexpr PixelTypeID kMosaic8 = 0x20010;

// Words that are demosaiced as they are.
struct DirectMosaic {
  PixelTypeID id;
  unsigned long bits;
};
constexpr DirectMosaic kDirect[] = {{0x20011, 10}, {0x120011, 10}, {0x20012, 12}, {0x120012, 12},
                                    {0x20016, 14}, {0x120016, 14}, {0x20020, 16}};

// All others reach the colours through the 8-bit mosaic.
constexpr PixelTypeID k8BitDual[] = {0x1020010, 0x2020010, 0x4020010, 0x8020010};
constexpr PixelTypeID k10BitWords[] = {0x220011,  0x320011,  0x1020011, 0x1120011, 0x2020011,
                                       0x2120011, 0x4020011, 0x4120011, 0x8020011, 0x8120011};
constexpr PixelTypeID k12BitWords[] = {0x1020012, 0x1120012, 0x2020012, 0x2120012,
                                       0x4020012, 0x4120012, 0x8020012, 0x8120012};
constexpr PixelTypeID k10BitPacked[] = {0x420011, 0x1420011, 0x2420011, 0x4420011, 0x8420011};
constexpr PixelTypeID k12BitPacked[] = {0x420012, 0x1420012, 0x2420012, 0x4420012, 0x8420012};
constexpr PixelTypeID kGev[] = {0x20040, 0x20041};

template <class Output>
using Bayer8To = BayerTo<unsigned char, Output>;
template <class Output>
using Bayer16To = BayerTo<unsigned short, Output>;

template <template <class> class Family, class... Arguments>
void AddThroughMosaic8(const PixelTypeID& from, Arguments... arguments) {
  Add<Family<OutputGrayscale8>>(from, kMosaic8, arguments...);
  for (const PixelTypeID to : kColorDestinations) AddChain(from, kMosaic8, to);
}

}  // namespace

void RegisterBayerConverters() {
  AddColor<Bayer8To>(kMosaic8, 0UL);
  for (const DirectMosaic& mosaic : kDirect) {
    AddColor<Bayer16To>(mosaic.id, ShiftOf(mosaic.id, mosaic.bits));
    Add<Grayscale16To<OutputGrayscale8>>(mosaic.id, kMosaic8, ShiftOf(mosaic.id, mosaic.bits));
  }
  for (const PixelTypeID from : k8BitDual) AddThroughMosaic8<Grayscale8To>(from, 0UL, TapOrderOf(from));
  for (const PixelTypeID from : k10BitWords) {
    AddThroughMosaic8<Grayscale16To>(from, ShiftOf(from, 10), TapOrderOf(from));
  }
  for (const PixelTypeID from : k12BitWords) {
    AddThroughMosaic8<Grayscale16To>(from, ShiftOf(from, 12), TapOrderOf(from));
  }
  for (const PixelTypeID from : k10BitPacked) AddThroughMosaic8<Grayscale12PackedTo>(from, 2UL, TapOrderOf(from));
  for (const PixelTypeID from : k12BitPacked) AddThroughMosaic8<Grayscale12PackedTo>(from, 4UL, TapOrderOf(from));
  for (const PixelTypeID from : kGev) AddThroughMosaic8<GrayscalePackedGEVTo>(from);
}

}  // namespace LmImagingLib::Builtin
