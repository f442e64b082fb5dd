#include "filter/sample_tables.h"

#include "filter/gain.h"
#include "filter/table_parts.h"

namespace LmImagingLib {

void SampleTables::Make(const LookupTables<std::uint16_t>& tables, unsigned depth, unsigned resultDepth) {
  mLookup.areGains = tables.areGains;
  mLookup.red = MakeTable(0, tables.red, depth, resultDepth);
  mLookup.green = MakeTable(1, tables.green, depth, resultDepth);
  mLookup.blue = MakeTable(2, tables.blue, depth, resultDepth);
}

SampleTable SampleTables::MakeTable(std::size_t channel, const ChannelTable<std::uint16_t>& table, unsigned depth,
                                    unsigned resultDepth) {
  SampleTable made{table.entries, nullptr, nullptr, {}, table.gain};
  if (resultDepth != 8) return made;
  std::vector<std::uint8_t>& bytes = mBytes[channel];
  for (std::size_t i = 0; i < std::size_t{1} << depth; ++i)
    bytes.push_back(static_cast<std::uint8_t>(table.entries[i]));
  made.bytes = bytes.data();
  if (depth == 8) {
    const std::optional<Gain> gain = FindGain(made.bytes);
    mLookup.areGains = mLookup.areGains && gain;
    if (gain) made.gain = *gain;
  } else if (depth <= 12) {
    mParts[channel] = FindSampleParts(bytes);
    made.parts = mParts[channel] ? &*mParts[channel] : nullptr;
  }
  return made;
}

}  // namespace LmImagingLib
