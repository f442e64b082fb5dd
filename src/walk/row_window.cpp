#include "walk/row_window.h"

#include <algorithm>
#include <memory>

#include "simd/kernel.h"
#include "simd/mosaic.h"
#include "walk/row_lookup.h"
#include "walk/strips.h"
#include "walk/tap_strips.h"

namespace LmImagingLib {

namespace {

// Whether the lines of the source are rows: samples in bytes or words of their own, in their order.
template <class Sample>
bool HasRows(const SourceType& source, const Frame& frame) {
  return source.format->groupPixels == 1 && source.format->groupBits == 8 * sizeof(Sample) &&
         source.readout.taps == Readout::Taps::kOne && !frame.interlaced;
}

// Whether such samples have all the bits of their bytes or words.
template <class Sample>
bool IsRows(const SourceType& source, const Frame& frame) {
  return HasRows<Sample>(source, frame) && source.depth == 8 * sizeof(Sample);
}

}  // namespace

std::size_t RowBytesRead(const SourceType& source, std::uint32_t width) {
  const Format& format = *source.format;
  if (HasLastGroup(format, width)) return static_cast<std::size_t>(LineBytesOf(format, width));
  const std::uint32_t unit = source.readout.taps == Readout::Taps::kTwo ? 2 : format.groupPixels;
  return std::size_t{width / unit * unit} / format.groupPixels * (format.groupBits / 8);
}

template <class Sample>
RowWindow<Sample>::RowWindow(const SourceType& source, const Frame& frame, std::uint32_t width, std::uint32_t rows,
                             std::uint32_t end, const RowLookup& lookup, bool takesWords)
    : mSource(source),
      mFrame(frame),
      mWidth(width),
      mRows(rows),
      mEnd(end),
      mLookup(lookup),
      mIsSource(lookup.tables == nullptr &&
                (IsRows<Sample>(source, frame) || (takesWords && HasRows<std::uint16_t>(source, frame)))) {
  if (mIsSource) return;
  constexpr std::size_t kLineSamples = kCacheLine / sizeof(Sample);
  // A last group may have more pixels than the line.
  const std::size_t spare = HasLastGroup(*source.format, width) ? source.format->groupPixels : 0;
  mStride = (width + spare + kLineSamples - 1) / kLineSamples * kLineSamples;
  std::uint32_t kept = 2;
  while (kept < rows) kept *= 2;
  // Narrow rows are decoded some at a time.
  while (2 * kept * mStride * sizeof(Sample) <= kInsideBytes) kept *= 2;
  mRowMask = kept - 1;
  const std::size_t bytes = kept * mStride * sizeof(Sample);
  void* room = mInside;
  if (bytes > kInsideBytes) {
    std::size_t space = bytes + kCacheLine;
    mOutside.reset(new std::uint8_t[space]);
    room = mOutside.get();
    std::align(kCacheLine, bytes, room, space);
  }
  mFirst = static_cast<Sample*>(room);
  if (mLookup.tables == nullptr) return;
  mDecodedRow.resize(width + spare);
  if (!mLookup.correctsDefects) return;
  if (source.depth == 8) {
    mDefectBytes.emplace(width, frame.sourceHeight, mLookup.defectThreshold, spare);
  } else {
    mDefectWords.emplace(width, frame.sourceHeight, mLookup.defectThreshold, spare);
  }
}

// Decodes rows from one on that is not there, as many as leave those that are still needed in the ring.
template <class Sample>
void RowWindow<Sample>::Decode(std::uint32_t row) {
  const std::uint32_t room = std::max(mRowMask + 2 - mRows, 1U);
  const std::uint32_t count = std::max(std::min(room, mEnd - std::min(row, mEnd)), 1U);
  if (!DecodeJoined(row, count)) {
    for (std::uint32_t k = 0; k < count; ++k) {
      Sample* const to = mFirst + ((row + k) & mRowMask) * mStride;
      mLookup.tables != nullptr ? LookUpRow(row + k, to) : DecodeRow(row + k, to);
    }
  }
  mDecoded = row + count;
}

// In one go, where no gap is between the rows, neither in the source nor in the ring.
template <class Sample>
bool RowWindow<Sample>::DecodeJoined(std::uint32_t row, std::uint32_t count) {
  const Format& format = *mSource.format;
  if (count == 1 || mLookup.tables != nullptr || mStride != mWidth || mWidth % format.groupPixels != 0 ||
      mFrame.interlaced || mSource.readout.taps != Readout::Taps::kOne || format.Is(kBytes) ||
      mFrame.sourceLine != DenseLineBytes(format, mWidth)) {
    return false;
  }
  while (count != 0) {
    const std::uint32_t first = row & mRowMask;
    const std::uint32_t some = std::min(count, mRowMask + 1 - first);
    Sample* const to = mFirst + first * mStride;
    format.decode.template Of<Sample>().Active()(mSource.Lines<Sample>(SourceLineAt(mFrame, row), 0, mFrame.fetchAhead),
                                                 0, std::size_t{some} * mWidth, {to, to, to});
    row += some;
    count -= some;
  }
  return true;
}

template <class Sample>
void RowWindow<Sample>::LookUpRow(std::uint32_t line, Sample* row) {
  if constexpr (sizeof(Sample) == 1) {
    if (mSource.depth == 8) return LookUpDecoded(line, mDefectBytes ? &*mDefectBytes : nullptr, row);
  }
  LookUpDecoded(line, mDefectWords ? &*mDefectWords : nullptr, row);
}

template <class Sample>
template <class Decoded>
void RowWindow<Sample>::LookUpDecoded(std::uint32_t line, DefectRows<Decoded>* defects, Sample* row) {
  const Site site = Below(mLookup.site, line);
  const MosaicLookup& lookup = *mLookup.tables;
  const SampleTable& color = IsInRedRow(site) ? lookup.red : lookup.blue;
  RowTables tables{IsGreen(site) ? lookup.green : color, IsGreen(site) ? color : lookup.green, lookup.areGains};
  if (defects == nullptr && mSource.ShiftOf<std::uint16_t>() == 0 && HasRows<Decoded>(mSource, mFrame)) {
    tables.ahead = mFrame.fetchAhead;
    tables.mask = mSource.MaskOf<std::uint16_t>();
    return LmImagingLib::LookUpRow<Decoded>(SourceLineAt(mFrame, line), mWidth, tables, row);
  }
  auto* const decoded = reinterpret_cast<Decoded*>(mDecodedRow.data());
  const auto decode = [this](std::uint32_t from, Decoded* to) { DecodeRow(from, to); };
  defects != nullptr ? defects->Correct(line, decode, decoded) : decode(line, decoded);
  LookUpSamples(decoded, mWidth, tables, row);
}

template <class Sample>
template <class Decoded>
void RowWindow<Sample>::DecodeRow(std::uint32_t line, Decoded* row) const {
  const std::uint32_t width = mWidth;
  const std::uint8_t* const source = SourceLineAt(mFrame, line);
  const Format& format = *mSource.format;
  const std::uint32_t pixels = width - width % format.groupPixels;
  std::fill(row + pixels, row + width, Decoded{0});
  if (source == nullptr) {
    std::fill_n(row, width, Decoded{0});
  } else if (mSource.readout.taps == Readout::Taps::kTwo) {
    DecodeTaps(source, row);
  } else {
    DecodeKernel<Decoded>* const decode = format.decode.template Of<Decoded>().Active();
    const Channels<Decoded> samples =
        decode(mSource.Lines<Decoded>(source, 0, mFrame.fetchAhead), 0, pixels, {row, row, row});
    if (samples.red != row) std::copy_n(samples.red, pixels, row);
    if (!HasLastGroup(format, width)) return;
    // The bytes of the last samples, and none after them.
    std::uint8_t group[kMostGroupBytes] = {};
    const std::size_t offset = std::size_t{pixels} / format.groupPixels * (format.groupBits / 8);
    CopyLastGroup(format, width - pixels, source + offset,
                  static_cast<std::size_t>(LineBytesOf(format, width)) - offset, group);
    Decoded* const rest = row + pixels;
    decode(mSource.Lines<Decoded>(group, 0, 0), 0, format.groupPixels, {rest, rest, rest});
  }
}

template <class Sample>
template <class Decoded>
void RowWindow<Sample>::DecodeTaps(const std::uint8_t* source, Decoded* row) const {
  const std::uint32_t pairs = mWidth / 2;
  std::fill(row + 2 * pairs, row + mWidth, Decoded{0});
  ForEachTapStrip(mSource.format->decode.template Of<Decoded>().Active(),
                  mSource.Lines<Decoded>(source, 0, mFrame.fetchAhead), pairs, mSource.readout,
                  [row](const Decoded* samples, std::size_t count, std::size_t first) {
                    std::copy_n(samples, count, row + first);
                  });
}

template class RowWindow<std::uint8_t>;
template class RowWindow<std::uint16_t>;

}  // namespace LmImagingLib
