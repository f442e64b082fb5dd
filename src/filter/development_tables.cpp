#include "filter/development_tables.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "filter/tone_lines.h"

namespace LmImagingLib {

namespace {

double White(std::uint32_t depth) { return std::ldexp(1.0, static_cast<int>(depth)) - 1; }

template <class Entry>
Entry Rounded(double value, std::uint32_t depth) {
  return static_cast<Entry>(std::lround(value * White(depth)));
}

void Point(LookupTables<std::uint16_t>& lookup, const std::uint16_t* red, const std::uint16_t* green,
           const std::uint16_t* blue) {
  lookup.red.entries = red;
  lookup.green.entries = green;
  lookup.blue.entries = blue;
  lookup.areGains = false;
}

// Light of 16 bits at a place of a table of bytes, in the middle of all the light that comes there.
double LightAt(std::uint32_t index) { return index < 4096 ? index : (index - 3840) * 16 + 7.5; }

}  // namespace

std::int16_t FactorOf(double factor) { return static_cast<std::int16_t>(std::lround(factor * 4096)); }

DevelopSteps::DevelopSteps(const DevelopmentSettings& settings, std::uint32_t depth, std::uint32_t resultDepth)
    : mDepth(depth),
      mResultDepth(resultDepth),
      mDefectThreshold(kNoDefects),
      mHasMatrix(settings.matrix != kIdentityMatrix) {
  const std::uint32_t most = (1U << depth) - 1;
  if (settings.correctsDefects) {
    mDefectThreshold = settings.defectThreshold == 0 ? most >> 6 : std::min(settings.defectThreshold, most);
  }
  const double blacks[] = {settings.black.red, settings.black.green, settings.black.blue};
  const double gains[] = {settings.gains.red, settings.gains.green, settings.gains.blue};
  const ToneCurve& tone = settings.tone;
  for (std::size_t k = 0; k < 3; ++k) {
    mEntries[k].resize(std::size_t{most} + 1);
    for (std::uint32_t i = 0; i <= most; ++i) {
      const double light = std::clamp((i - blacks[k]) * gains[k] / most, 0.0, 1.0);
      mEntries[k][i] = Rounded<std::uint16_t>(mHasMatrix ? std::sqrt(light) : tone.At(light), EntryDepth());
    }
  }
  LookupTables<std::uint16_t> lookup{};
  Point(lookup, mEntries[0].data(), mEntries[1].data(), mEntries[2].data());
  mSamples.Make(lookup, depth, EntryDepth());
  if (mHasMatrix) MakeMatrix(settings.matrix, tone);
  if (EntryDepth() == resultDepth) return;
  mWide.resize(256);
  for (std::size_t i = 0; i < mWide.size(); ++i) {
    mWide[i] = Rounded<std::uint16_t>(static_cast<double>(i) / 255, resultDepth);
  }
  Point(mWidening, mWide.data(), mWide.data(), mWide.data());
}

void DevelopSteps::MakeMatrix(const ColorMatrix& matrix, const ToneCurve& tone) {
  for (std::size_t row = 0; row < 3; ++row) {
    std::int32_t sum = 0;
    for (std::size_t column = 0; column < 3; ++column) {
      mMatrix.factors[row][column] = FactorOf(matrix[3 * row + column]);
      sum += mMatrix.factors[row][column];
    }
    mMatrix.constants[row] = 32768 * sum + 2048;
  }
  mMatrix.depth = EntryDepth();
  if (EntryDepth() == 8) {
    mToneBytes.resize(kToneIndices);
    for (std::uint32_t i = 0; i < kToneIndices; ++i) {
      mToneBytes[i] = Rounded<std::uint8_t>(tone.At(LightAt(i) / 65535), 8);
    }
    mMatrix.isLinear = true;
    for (std::uint32_t i = 0; i < kToneIndices; ++i) {
      mMatrix.isLinear = mMatrix.isLinear && mToneBytes[i] == LinearTone(i);
    }
    if (!mMatrix.isLinear) mToneLines = FindToneLines(mToneBytes);
  } else {
    mToneWords.resize(65536);
    for (std::uint32_t i = 0; i < 65536; ++i)
      mToneWords[i] = Rounded<std::uint16_t>(tone.At(i / 65535.0), mResultDepth);
  }
  mMatrix.bytes = mToneBytes.data();
  mMatrix.lines = mToneLines ? &*mToneLines : nullptr;
  mMatrix.words = mToneWords.data();
}

const DevelopSteps& DevelopmentTables::Steps(std::uint32_t depth, std::uint32_t resultDepth) const {
  return mSteps.FindOrMake([=](const DevelopSteps& steps) { return steps.Serves(depth, resultDepth); },
                           [=] { return DevelopSteps(settings, depth, resultDepth); });
}

const DevelopmentTables& TablesOf(const Development& development) { return *development.mTables; }

}  // namespace LmImagingLib
