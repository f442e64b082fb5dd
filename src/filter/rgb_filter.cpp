#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>

#include "LmImagingLib/RGBFilter.h"
#include "filter/filter_tables.h"
#include "filter/gain.h"

namespace LmImagingLib {

namespace {

using LmBaseLib::Result;

constexpr unsigned long kEntries8 = 256;

}  // namespace

RGBFilterTables::RGBFilterTables(unsigned long bitSize)
    : bits(static_cast<unsigned>(bitSize)), red16(std::size_t{1} << bitSize) {
  std::iota(std::begin(red8), std::end(red8), static_cast<unsigned char>(0));
  std::copy(std::begin(red8), std::end(red8), std::begin(green8));
  std::copy(std::begin(red8), std::end(red8), std::begin(blue8));
  std::iota(red16.begin(), red16.end(), static_cast<unsigned short>(0));
  green16 = red16;
  blue16 = red16;
}

void RGBFilterTables::FindGains() {
  const std::optional<Gain> red = FindGain(red8);
  const std::optional<Gain> green = FindGain(green8);
  const std::optional<Gain> blue = FindGain(blue8);
  lookup.areGains = red && green && blue;
  if (!lookup.areGains) return;
  lookup.red.gain = *red;
  lookup.green.gain = *green;
  lookup.blue.gain = *blue;
}

const WideTables& RGBFilterTables::Derived(unsigned depth, unsigned resultDepth) const {
  return mDerived.FindOrMake([=](const WideTables& tables) { return tables.Serves(depth, resultDepth); },
                             [=] { return WideTables(*this, depth, resultDepth); });
}

const LookupTables<std::uint16_t>* RGBFilterTables::Lookup(unsigned depth, unsigned resultDepth) const {
  return Derived(depth, resultDepth).Lookup();
}

const MosaicLookup* RGBFilterTables::OfMosaics(unsigned depth, unsigned resultDepth) const {
  return Derived(depth, resultDepth).OfMosaics();
}

const RGBFilterTables& TablesOf(const RGBFilter& filter) { return *filter.mTables; }

// The tables start as the identity without a pass through the setters.
RGBFilter::RGBFilter(unsigned long bitSize)
    : mBitSize(bitSize),
      mEntryCount(std::uint32_t{1} << (bitSize & 31)),
      mIndexMask(mEntryCount - 1),
      mTables(std::make_shared<RGBFilterTables>(bitSize & 31)) {}

RGBFilter::RGBFilter(const RGBFilter& other) = default;
RGBFilter& RGBFilter::operator=(const RGBFilter& other) = default;
RGBFilter::~RGBFilter() = default;

unsigned long RGBFilter::GetBitSize() const { return mBitSize; }
unsigned long RGBFilter::GetEntryCount() const { return mEntryCount; }

// Sets all entries to `entryOf(channel, i)`. False if a class that derives from this one has set other values.
template <class EntryOf>
bool RGBFilter::SetEntries(const EntryOf& entryOf) {
  bool asSet = true;
  for (unsigned long i = 0; i < mEntryCount; ++i) {
    const unsigned short red = entryOf(RED, i), green = entryOf(GREEN, i), blue = entryOf(BLUE, i);
    SetRedValue(i, red, false);
    SetGreenValue(i, green, false);
    SetBlueValue(i, blue, false);
    asSet = asSet && mTables->red16[i] == red && mTables->green16[i] == green && mTables->blue16[i] == blue;
  }
  return asSet;
}

Result RGBFilter::SetMultipliers(double red, double green, double blue, unsigned short redOffset,
                                 unsigned short greenOffset, unsigned short blueOffset) {
  if (red < 0.0 || green < 0.0 || blue < 0.0) return Result::INVALID_PARAMETER;
  const double gains[] = {red, green, blue};
  const unsigned short offsets[] = {redOffset, greenOffset, blueOffset};
  const bool asSet = SetEntries(
      [&](Channel channel, unsigned long i) { return ScaledEntry(gains[channel], i, offsets[channel], mEntryCount); });
  if (asSet) mTables->multipliers = Multipliers{red, green, blue, redOffset, greenOffset, blueOffset};
  mTables->FindGains();
  UpdateIdentity();
  return Result::OK;
}

Result RGBFilter::SetCurve(const ChannelCurve& red, const ChannelCurve& green, const ChannelCurve& blue,
                           const ToneCurve& tone) {
  const FilterCurve curve{{red, green, blue}, tone};
  if (!curve.IsValid()) return Result::INVALID_PARAMETER;
  const bool asSet = SetEntries(
      [&](Channel channel, unsigned long i) { return curve.Entry(channel, i, mTables->bits, mTables->bits, 0); });
  if (asSet) mTables->curve = curve;
  mTables->FindGains();
  UpdateIdentity();
  return Result::OK;
}

Result RGBFilter::SetMultipliers(double red, double green, double blue) {
  return SetMultipliers(red, green, blue, 0, 0, 0);
}

Result RGBFilter::SetRedValue(unsigned long index, unsigned short value, bool update) {
  return SetValue(RED, index, value, update);
}
Result RGBFilter::SetGreenValue(unsigned long index, unsigned short value, bool update) {
  return SetValue(GREEN, index, value, update);
}
Result RGBFilter::SetBlueValue(unsigned long index, unsigned short value, bool update) {
  return SetValue(BLUE, index, value, update);
}

void RGBFilter::SetIdentity() {
  for (unsigned long i = 0; i < mEntryCount; ++i) {
    const auto value = static_cast<unsigned short>(i);
    SetRedValue(i, value, false);
    SetGreenValue(i, value, false);
    SetBlueValue(i, value, false);
  }
  mIdentity = true;
}

bool RGBFilter::IsIdentity() const { return mIdentity; }

unsigned char RGBFilter::GetRedValue8(unsigned long index) const { return mTables->red8[index & 0xFF]; }
unsigned char RGBFilter::GetGreenValue8(unsigned long index) const { return mTables->green8[index & 0xFF]; }
unsigned char RGBFilter::GetBlueValue8(unsigned long index) const { return mTables->blue8[index & 0xFF]; }

unsigned short RGBFilter::GetRedValue16(unsigned long index) const { return mTables->red16[index & mIndexMask]; }
unsigned short RGBFilter::GetGreenValue16(unsigned long index) const { return mTables->green16[index & mIndexMask]; }
unsigned short RGBFilter::GetBlueValue16(unsigned long index) const { return mTables->blue16[index & mIndexMask]; }

// Red is compared in its 16-bit table, green and blue in their 8-bit ones, which cannot match from index 256 on.
// So a filter of more than 8 bits never passes: applications rely on it reading as "changed" after any update.
void RGBFilter::UpdateIdentity() {
  const RGBFilterTables& tables = *mTables;
  mIdentity = mEntryCount <= kEntries8;
  for (unsigned long i = 0; mIdentity && i < mEntryCount; ++i) {
    mIdentity = tables.red16[i] == i && tables.red8[i] == i && tables.green8[i] == i && tables.blue8[i] == i;
  }
}

Result RGBFilter::SetValue(Channel channel, unsigned long index, unsigned short value, bool update) {
  if (index >= mEntryCount || value >= mEntryCount) return Result::INVALID_PARAMETER;
  RGBFilterTables& tables = *mTables;
  tables.ForgetDerived();
  tables.multipliers.reset();
  tables.curve.reset();
  std::vector<unsigned short>* const tables16[] = {&tables.red16, &tables.green16, &tables.blue16};
  (*tables16[channel])[index] = value;
  if (index < kEntries8) {
    unsigned char* const tables8[] = {tables.red8, tables.green8, tables.blue8};
    unsigned char& entry = tables8[channel][index];
    const bool differed = entry != index;
    entry = static_cast<unsigned char>(std::min<unsigned>(value, 255));
    tables.lookup.areGains = false;
    const bool differs = entry != index;
    if (differs && !differed) ++tables.mismatches8;
    if (differed && !differs) --tables.mismatches8;
  }
  if (update) {
    if (index == value) {
      UpdateIdentity();
    } else {
      mIdentity = false;
    }
  }
  return Result::OK;
}

}  // namespace LmImagingLib
