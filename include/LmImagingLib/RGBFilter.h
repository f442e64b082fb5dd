#pragma once

#include <memory>

#include "LmBaseLib/Export.h"
#include "LmBaseLib/Result.h"
#include "LmImagingLib/ToneCurve.h"

namespace LmImagingLib {

struct RGBFilterTables;

/// One lookup table for each colour channel: white balance (a gain and an offset a channel), black level and tone, or
/// any other curve.
///
/// A filter of b bits has 1 << b entries a channel, 16 bits each, and a second table of the first 256 entries clamped
/// to 8 bits. Conversions of 8 bits look each channel up in its 8-bit table.
///
/// Conversions at full depth (`ConversionFlags::kFullDepth`) look samples of S bits up in tables of 1 << S entries that
/// the library derives from this filter. If `SetMultipliers` wrote the tables last, they are those of a filter of S
/// bits with the same gains, and offsets << (S - b). If `SetCurve` did, they are computed from the curve itself at the
/// bits of the sample or of the result, whichever are more, so that a curve loses nothing that the destination has room
/// for. Otherwise entry i is the filter's entry at the same place between black and white, linear between entries.
/// Derived tables are built once, and dropped when the filter changes.
///
/// Copies share their tables: a change made through one is seen by all. The tables live as long as the last copy.
///
/// Not synchronised: do not change a filter, or a copy of it, while a conversion uses it. Any number of threads may
/// convert with the same filter while it does not change.
class LM_EXPORT RGBFilter {
 public:
  /// An identity filter of `bitSize` bits (1 to 16).
  explicit RGBFilter(unsigned long bitSize);
  /// Shares the tables of `other`.
  RGBFilter(const RGBFilter& other);
  /// Shares the tables of `other` from now on. Its former tables are released with the last filter that shares them.
  RGBFilter& operator=(const RGBFilter& other);
  virtual ~RGBFilter();

  /// The constructor's argument, in bits.
  virtual unsigned long GetBitSize() const;
  /// Entries of a 16-bit table: 1 << bit size.
  virtual unsigned long GetEntryCount() const;

  /// Makes entry i of each channel min(multiplier * i + offset, entry count - 1), truncated to an integer.
  /// @param red, green, blue  gains, 0.0 or more
  /// @param redOffset, greenOffset, blueOffset  added after the gain, in steps of the table's own width
  /// @return `INVALID_PARAMETER` if a gain is negative, and nothing is changed
  virtual LmBaseLib::Result SetMultipliers(double red, double green, double blue, unsigned short redOffset,
                                           unsigned short greenOffset, unsigned short blueOffset);
  /// The same with offsets of 0.
  virtual LmBaseLib::Result SetMultipliers(double red, double green, double blue);

  /// Makes entry i of each channel the rounded value of M * tone(light / M), where light is
  /// max(i - black, 0) * gain + offset, limited to 0 to M = entry count - 1.
  /// @param red, green, blue  black level and offset in steps of the table's own width; fractions count. For an 8-bit
  ///   filter, a black level of 64 in 10 bits is 16.
  /// @param tone  the curve from light to values
  /// @return `INVALID_PARAMETER` if a black level or a gain is negative, if a number is not finite, or if `tone` is not
  ///   valid, and nothing is changed
  LmBaseLib::Result SetCurve(const ChannelCurve& red, const ChannelCurve& green, const ChannelCurve& blue,
                             const ToneCurve& tone = {});

  /// Sets one entry of the red tables.
  /// @param index, value  0 to entry count - 1
  /// @param update  whether `IsIdentity` is brought up to date; pass false while filling a table
  /// @return `INVALID_PARAMETER` if index or value is out of range, and nothing is changed
  virtual LmBaseLib::Result SetRedValue(unsigned long index, unsigned short value, bool update);
  /// Sets one entry of the green tables; as `SetRedValue`.
  virtual LmBaseLib::Result SetGreenValue(unsigned long index, unsigned short value, bool update);
  /// Sets one entry of the blue tables; as `SetRedValue`.
  virtual LmBaseLib::Result SetBlueValue(unsigned long index, unsigned short value, bool update);

  /// Makes every table the identity.
  void SetIdentity();

  /// Whether the filter is known to be the identity.
  ///
  /// Exact for 8-bit filters whose last change was made with `update`. A wider filter reads true only after
  /// construction or `SetIdentity`: any other change, even one that restores the identity, leaves it false.
  /// Conversions do not rely on it; they compare the 8-bit tables themselves.
  bool IsIdentity() const;

  /// Entry `index` & 0xFF of the 8-bit table.
  unsigned char GetRedValue8(unsigned long index) const;
  /// As `GetRedValue8`.
  unsigned char GetGreenValue8(unsigned long index) const;
  /// As `GetRedValue8`.
  unsigned char GetBlueValue8(unsigned long index) const;

  /// Entry `index` & (entry count - 1) of the 16-bit table.
  unsigned short GetRedValue16(unsigned long index) const;
  /// As `GetRedValue16`.
  unsigned short GetGreenValue16(unsigned long index) const;
  /// As `GetRedValue16`.
  unsigned short GetBlueValue16(unsigned long index) const;

 protected:
  /// Compares the tables with the identity and sets the result of `IsIdentity`.
  void UpdateIdentity();

 private:
  friend const RGBFilterTables& TablesOf(const RGBFilter& filter);

  enum Channel { RED, GREEN, BLUE };
  template <class EntryOf>
  bool SetEntries(const EntryOf& entryOf);
  LmBaseLib::Result SetValue(Channel channel, unsigned long index, unsigned short value, bool update);

  unsigned long mBitSize;
  unsigned long mEntryCount;
  unsigned long mIndexMask;
  bool mIdentity = true;
  std::shared_ptr<RGBFilterTables> mTables;
};

}  // namespace LmImagingLib
