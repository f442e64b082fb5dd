// Every grayscale type to every colour and every other gray type.
#include "builtin/builtin.h"
#include "builtin/catalogue.h"

namespace LmImagingLib::Builtin {

namespace {

constexpr PixelTypeID k8Bit[] = {0x10001, 0x210001, 0x1010001, 0x2010001, 0x4010001, 0x8010001};
constexpr PixelTypeID k8BitSigned = 0x10401;
constexpr PixelTypeID kGev[] = {0x10008, 0x10009};

constexpr PixelTypeID kBase10Bit = 0x10002;
constexpr PixelTypeID kBase12Bit = 0x10003;
constexpr PixelTypeID kBase14Bit = 0x10004;
constexpr PixelTypeID kBase16Bit = 0x10005;

// Flags of the variants of a base id.
constexpr PixelTypeID kSingleTapVariants[] = {0, 0x200000, 0x100000, 0x300000};
constexpr PixelTypeID kDualVariants[] = {0x1000000, 0x1100000, 0x2000000, 0x2100000,
                                         0x4000000, 0x4100000, 0x8000000, 0x8100000};
constexpr PixelTypeID kPackedVariants[] = {0x400000,  0x600000,  0x1400000, 0x1600000, 0x2400000,
                                           0x2600000, 0x4400000, 0x4600000, 0x8400000, 0x8600000};

// A word image whose samples need no change but the order of its lines: the destination takes it as it is.
void AddLineOrder(const PixelTypeID& from, const PixelTypeID& base) {
  const bool normalized = (from & kNormalizedFlag) != 0;
  const PixelTypeID to = normalized ? kBase16Bit : base;
  if (from != to) AddIdentity(from, to);
}

// What is registered already, by the order of its lines, stays.
template <template <class> class Family, class... Arguments>
void AddGray(const PixelTypeID& from, Arguments... arguments) {
  AddColor<Family>(from, arguments...);
  Add<Family<OutputGrayscale8>>(from, 0x10001, arguments...);
  Add<Family<OutputGrayscale10>>(from, 0x10002, arguments...);
  Add<Family<OutputGrayscale12>>(from, 0x10003, arguments...);
  Add<Family<OutputGrayscale14>>(from, 0x10004, arguments...);
  Add<Family<OutputGrayscale16>>(from, 0x10005, arguments...);
}

void AddWords(const PixelTypeID& base, unsigned long bits, PixelTypeID variant) {
  const PixelTypeID from = base | variant;
  if (TapOrderOf(from).left == 0) AddLineOrder(from, base);
  AddGray<Grayscale16To>(from, ShiftOf(from, bits), TapOrderOf(from));
}

void AddPacked(const PixelTypeID& base, unsigned long bits, PixelTypeID variant) {
  const PixelTypeID from = base | variant;
  AddGray<Grayscale12PackedTo>(from, bits - 8, TapOrderOf(from));
}

// A readout that a reordering converter brings to `ordered`, and everything that reaches.
template <class Reorder>
void AddReordered(const PixelTypeID& from, const PixelTypeID& ordered) {
  Add<Reorder>(from, ordered);
  for (const PixelTypeID to : kColorDestinations) AddChain(from, ordered, to);
  for (const PixelTypeID to : kGrayDestinations) {
    if (to != ordered) AddChain(from, ordered, to);
  }
}

}  // namespace

void RegisterGrayscaleConverters() {
  for (const PixelTypeID from : k8Bit) AddGray<Grayscale8To>(from, 0UL, TapOrderOf(from));
  AddGray<Grayscale8SignedTo>(k8BitSigned);
  for (const PixelTypeID from : kGev) AddGray<GrayscalePackedGEVTo>(from);
  for (const PixelTypeID variant : kSingleTapVariants) {
    AddWords(kBase10Bit, 10, variant);
    AddWords(kBase12Bit, 12, variant);
    AddWords(kBase14Bit, 14, variant);
    AddWords(kBase16Bit, 16, variant);
  }
  for (const PixelTypeID variant : kDualVariants) {
    AddWords(kBase10Bit, 10, variant);
    AddWords(kBase12Bit, 12, variant);
  }
  for (const PixelTypeID variant : kPackedVariants) {
    AddPacked(kBase10Bit, 10, variant);
    AddPacked(kBase12Bit, 12, variant);
  }
  AddReordered<Dalsa4x8ToGrayscale8>(0x10006, 0x10001);
  AddReordered<Dalsa4x16ToGrayscale16>(0x10007, 0x10002);
  AddReordered<Dalsa4x16ToGrayscale16>(0x110007, 0x110002);
  AddReordered<DualLinesGrayscale8ToGrayscale8>(0x10010001, 0x10001);
}

}  // namespace LmImagingLib::Builtin
