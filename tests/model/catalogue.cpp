#include "model/catalogue.h"

#include <map>
#include <vector>

#include "model/kernels.h"

namespace model {
namespace {

constexpr Id kMosaic8 = 0x20010;

bool IsExtended(Id id) { return (id & 0xFF00) >= 0x0800; }

enum class Taps { ONE, TWO };

/// Types that are read alike. With two taps the ids stand for the four modes that a sensor with two outputs has.
struct Row {
  std::vector<Id> ids;
  Family family;
  unsigned bits, bytes;
  unsigned depth;  ///< bits of a sample; of YUV those that are used
  Kernel kernel;
  unsigned sourceBits;  ///< that a pixel takes in memory
  unsigned shift;       ///< below the lowest bit of a sample in its word
  Taps taps = Taps::ONE;
  bool demosaiced = false;
  Id reorderedType = 0;
};

const Row kRows[] = {
    {{0x10001, 0x210001}, Family::GRAY, 8, 1, 8, Gray8, 8, 0},
    {{0x10001}, Family::GRAY, 8, 1, 8, Gray8, 8, 0, Taps::TWO},
    {{0x10010001}, Family::GRAY, 8, 1, 8, DualLines, 8, 0, Taps::ONE, false, 0x10001},
    {{0x10006}, Family::GRAY, 8, 1, 8, QuadTaps8, 8, 0, Taps::ONE, false, 0x10001},
    {{0x10401}, Family::GRAY, 8, 1, 8, Gray8Signed, 8, 0},
    {{0x10002, 0x210002}, Family::GRAY, 10, 2, 10, Gray16, 16, 0},
    {{0x110002, 0x310002}, Family::GRAY, 10, 2, 10, Gray16, 16, 6},
    {{0x10002}, Family::GRAY, 10, 2, 10, Gray16, 16, 0, Taps::TWO},
    {{0x110002}, Family::GRAY, 10, 2, 10, Gray16, 16, 6, Taps::TWO},
    {{0x410002, 0x610002}, Family::GRAY, 10, 2, 10, GrayPacked, 12, 0},
    {{0x410002, 0x610002}, Family::GRAY, 10, 2, 10, GrayPacked, 12, 0, Taps::TWO},
    {{0x10007}, Family::GRAY, 10, 2, 10, QuadTaps16, 16, 0, Taps::ONE, false, 0x10002},
    {{0x110007}, Family::GRAY, 10, 2, 10, QuadTaps16, 16, 6, Taps::ONE, false, 0x110002},
    {{0x10008}, Family::GRAY, 10, 2, 10, GrayPackedGEV, 12, 0},
    {{0x10003, 0x210003}, Family::GRAY, 12, 2, 12, Gray16, 16, 0},
    {{0x110003, 0x310003}, Family::GRAY, 12, 2, 12, Gray16, 16, 4},
    {{0x10003}, Family::GRAY, 12, 2, 12, Gray16, 16, 0, Taps::TWO},
    {{0x110003}, Family::GRAY, 12, 2, 12, Gray16, 16, 4, Taps::TWO},
    {{0x410003, 0x610003}, Family::GRAY, 12, 2, 12, GrayPacked, 12, 0},
    {{0x410003, 0x610003}, Family::GRAY, 12, 2, 12, GrayPacked, 12, 0, Taps::TWO},
    {{0x10009}, Family::GRAY, 12, 2, 12, GrayPackedGEV, 12, 0},
    {{0x10004, 0x210004}, Family::GRAY, 14, 2, 14, Gray16, 16, 0},
    {{0x110004, 0x310004}, Family::GRAY, 14, 2, 14, Gray16, 16, 2},
    {{0x10005, 0x210005, 0x110005, 0x310005}, Family::GRAY, 16, 2, 16, Gray16, 16, 0},

    {{0x410801}, Family::GRAY, 1, 1, 16, FewBits, 1, 0},
    {{0x410802}, Family::GRAY, 2, 1, 16, FewBits, 2, 0},
    {{0x410804}, Family::GRAY, 4, 1, 16, FewBits, 4, 0},
    {{0x41080A}, Family::GRAY, 10, 2, 10, BitStream, 10, 0},
    {{0x41080E}, Family::GRAY, 14, 2, 14, BitStream, 14, 0},
    {{0x41084A}, Family::GRAY, 10, 2, 10, CSI2, 10, 0},
    {{0x41084C}, Family::GRAY, 12, 2, 12, CSI2, 12, 0},
    {{0x41084E}, Family::GRAY, 14, 2, 14, CSI2, 14, 0},

    {{0x20010}, Family::BAYER, 8, 1, 8, Gray8, 8, 0, Taps::ONE, true},
    {{0x20010}, Family::BAYER, 8, 1, 8, Gray8, 8, 0, Taps::TWO},
    {{0x20011}, Family::BAYER, 10, 2, 10, Gray16, 16, 0, Taps::ONE, true},
    {{0x120011}, Family::BAYER, 10, 2, 10, Gray16, 16, 6, Taps::ONE, true},
    {{0x220011}, Family::BAYER, 10, 2, 10, Gray16, 16, 0},
    {{0x320011}, Family::BAYER, 10, 2, 10, Gray16, 16, 6},
    {{0x20011}, Family::BAYER, 10, 2, 10, Gray16, 16, 0, Taps::TWO},
    {{0x120011}, Family::BAYER, 10, 2, 10, Gray16, 16, 6, Taps::TWO},
    {{0x420011}, Family::BAYER, 10, 2, 10, GrayPacked, 12, 0},
    {{0x420011}, Family::BAYER, 10, 2, 10, GrayPacked, 12, 0, Taps::TWO},
    {{0x20041}, Family::BAYER, 10, 2, 10, GrayPackedGEV, 12, 0},
    {{0x20012}, Family::BAYER, 12, 2, 12, Gray16, 16, 0, Taps::ONE, true},
    {{0x120012}, Family::BAYER, 12, 2, 12, Gray16, 16, 4, Taps::ONE, true},
    {{0x20012}, Family::BAYER, 12, 2, 12, Gray16, 16, 0, Taps::TWO},
    {{0x120012}, Family::BAYER, 12, 2, 12, Gray16, 16, 4, Taps::TWO},
    {{0x420012}, Family::BAYER, 12, 2, 12, GrayPacked, 12, 0},
    {{0x420012}, Family::BAYER, 12, 2, 12, GrayPacked, 12, 0, Taps::TWO},
    {{0x20040}, Family::BAYER, 12, 2, 12, GrayPackedGEV, 12, 0},
    {{0x42090A}, Family::BAYER, 10, 2, 10, BitStream, 10, 0},
    {{0x42090E}, Family::BAYER, 14, 2, 14, BitStream, 14, 0},
    {{0x42094A}, Family::BAYER, 10, 2, 10, CSI2, 10, 0},
    {{0x42094C}, Family::BAYER, 12, 2, 12, CSI2, 12, 0},
    {{0x42094E}, Family::BAYER, 14, 2, 14, CSI2, 14, 0},
    {{0x20016}, Family::BAYER, 14, 2, 14, Gray16, 16, 0, Taps::ONE, true},
    {{0x120016}, Family::BAYER, 14, 2, 14, Gray16, 16, 2, Taps::ONE, true},
    {{0x20020}, Family::BAYER, 14, 2, 16, Gray16, 16, 0, Taps::ONE, true},

    {{0x20001}, Family::COLOR, 16, 2, 8, RGB16, 16, 0},
    {{0x20002, 0x420002}, Family::COLOR, 24, 3, 8, RGB24, 24, 0},
    {{0x2000A, 0x42000A}, Family::COLOR, 8, 3, 8, RGB24, 24, 0},
    {{0x20006, 0x420006}, Family::COLOR, 24, 3, 8, BGR24, 24, 0},
    {{0x20003}, Family::COLOR, 32, 4, 8, RGB32, 32, 0},
    {{0x2000B, 0x42000B}, Family::COLOR, 8, 4, 8, RGB32, 32, 0},
    {{0x20007}, Family::COLOR, 32, 4, 8, BGR32, 32, 0},
    {{0x820002}, Family::COLOR, 24, 3, 8, RGBPlanar8, 8, 0},
    {{0x82000A}, Family::COLOR, 8, 3, 8, RGBPlanar8, 8, 0},
    {{0x82000B}, Family::COLOR, 8, 4, 8, RGBPlanar8, 8, 0},
    {{0x820008}, Family::COLOR, 10, 6, 10, RGBPlanar16, 16, 0},
    {{0x82000C}, Family::COLOR, 12, 6, 12, RGBPlanar16, 16, 0},
    {{0x820004}, Family::COLOR, 48, 6, 16, RGBPlanar16, 16, 0},
    {{0x20008}, Family::COLOR, 10, 6, 10, RGB48, 48, 0},
    {{0x120008}, Family::COLOR, 10, 6, 10, RGB48, 48, 6},
    {{0x2000C}, Family::COLOR, 12, 6, 12, RGB48, 48, 0},
    {{0x12000C}, Family::COLOR, 12, 6, 12, RGB48, 48, 4},
    {{0x20004, 0x120004}, Family::COLOR, 48, 6, 16, RGB48, 48, 0},
    {{0x20042}, Family::COLOR, 10, 6, 10, BGR48, 48, 0},
    {{0x20043}, Family::COLOR, 12, 6, 12, BGR48, 48, 0},
    {{0x20009}, Family::COLOR, 10, 8, 10, RGB64, 64, 0},
    {{0x120009}, Family::COLOR, 10, 8, 10, RGB64, 64, 6},
    {{0x2000D}, Family::COLOR, 12, 8, 12, RGB64, 64, 0},
    {{0x12000D}, Family::COLOR, 12, 8, 12, RGB64, 64, 4},
    {{0x20005, 0x120005}, Family::COLOR, 64, 8, 16, RGB64, 64, 0},
    {{0x20A40}, Family::COLOR, 48, 6, 16, BGR48, 48, 0},
    {{0x20A41}, Family::COLOR, 64, 8, 16, BGR64, 64, 0},
    {{0x20044}, Family::COLOR, 32, 4, 10, BGR10PackedV1, 32, 0},
    {{0x20045}, Family::COLOR, 32, 4, 10, BGR10PackedV2, 32, 0},
    {{0x20A20}, Family::COLOR, 32, 4, 10, RGB10p32, 32, 0},
    {{0x20A21}, Family::COLOR, 32, 4, 10, RGB10V1, 32, 0},
    {{0x20A30}, Family::COLOR, 16, 2, 8, RGB565p, 16, 0},
    {{0x420A0A}, Family::COLOR, 30, 4, 10, RGBStream, 30, 0},
    {{0x420A1A}, Family::COLOR, 30, 4, 10, BGRStream, 30, 0},
    {{0x420A0C}, Family::COLOR, 36, 5, 12, RGBStream, 36, 0},
    {{0x420A1C}, Family::COLOR, 36, 5, 12, BGRStream, 36, 0},
    {{0x20046}, Family::COLOR, 36, 5, 12, RGB12PackedV1, 36, 0},

    {{0x40001, 0x240001}, Family::COLOR, 16, 2, 8, YUV8, 16, 0},
    {{0x40008}, Family::COLOR, 16, 2, 8, YUV8GEV, 16, 0},
    {{0x40002, 0x240002}, Family::COLOR, 20, 4, 8, YUV10, 32, 2},
    {{0x140002, 0x340002}, Family::COLOR, 20, 4, 8, YUV10, 32, 8},
    {{0x440003, 0x640003}, Family::COLOR, 24, 3, 8, YUV444, 24, 0},
    {{0x440007}, Family::COLOR, 24, 3, 8, YUV444GEV, 24, 0},
    {{0x440005, 0x640005}, Family::COLOR, 24, 3, 8, YCrCb, 24, 0},
    {{0x440006, 0x640006}, Family::COLOR, 12, 2, 8, YUV411, 12, 0},
};

const std::map<Id, Destination> kColorDestinations = {
    {0x20001, {Writer::RGB16, 2}},   {0x20002, {Writer::RGB24, 3}},  {0x420002, {Writer::RGB24, 3}},
    {0x2000A, {Writer::RGB24, 3}},   {0x42000A, {Writer::RGB24, 3}}, {0x20006, {Writer::BGR24, 3}},
    {0x420006, {Writer::BGR24, 3}},  {0x20003, {Writer::RGB32, 4}},  {0x2000B, {Writer::RGB32, 4}},
    {0x42000B, {Writer::RGB32, 4}},  {0x20007, {Writer::BGR32, 4}},  {0x820002, {Writer::PLANAR, 1}},
    {0x82000A, {Writer::PLANAR, 1}},
};

const std::map<Id, Destination> kDeepColorDestinations = {
    {0x20004, {Writer::RGB48, 6, 16, 8}}, {0x20008, {Writer::RGB48, 6, 10, 2}},   {0x2000C, {Writer::RGB48, 6, 12, 4}},
    {0x20A40, {Writer::BGR48, 6, 16, 8}}, {0x20042, {Writer::BGR48, 6, 10, 2}},   {0x20043, {Writer::BGR48, 6, 12, 4}},
    {0x20005, {Writer::RGB64, 8, 16, 8}}, {0x820004, {Writer::PLANAR, 2, 16, 8}}, {0x20A41, {Writer::BGR64, 8, 16, 8}},
};

const std::map<Id, Destination> kGrayDestinations = {
    {0x10001, {Writer::GRAY, 1}},        {0x10002, {Writer::GRAY, 2, 10, 2}}, {0x10003, {Writer::GRAY, 2, 12, 4}},
    {0x10004, {Writer::GRAY, 2, 14, 6}}, {0x10005, {Writer::GRAY, 2, 16, 0}},
};

const std::map<Id, Destination> kMosaicDestinations = {
    {0x20010, {Writer::GRAY, 1}},        {0x20011, {Writer::GRAY, 2, 10, 2}}, {0x20012, {Writer::GRAY, 2, 12, 4}},
    {0x20016, {Writer::GRAY, 2, 14, 6}}, {0x20020, {Writer::GRAY, 2, 16, 8}},
};

/// Pairs of which only the order of lines differs.
const std::set<Pair> kSortedCopies = {
    {0x210002, 0x10002}, {0x210003, 0x10003}, {0x210004, 0x10004}, {0x210005, 0x10005},
    {0x110005, 0x10005}, {0x310005, 0x10005}, {0x110002, 0x10005}, {0x310002, 0x10005},
    {0x110003, 0x10005}, {0x310003, 0x10005}, {0x110004, 0x10005}, {0x310004, 0x10005},
};

std::map<Id, Source> MakeSources() {
  std::map<Id, Source> sources;
  const struct {
    Id bit;
    int left, right;
  } modes[] = {{0x1000000, 1, 1}, {0x2000000, 1, -1}, {0x4000000, -1, 1}, {0x8000000, -1, -1}};
  for (const Row& row : kRows) {
    Source source{row.family, row.bits, row.bytes, {}, row.demosaiced, row.reorderedType};
    source.reader.kernel = row.kernel;
    source.reader.depth = row.depth;
    source.reader.sourceBits = row.sourceBits;
    source.reader.shift = row.shift;
    for (const Id id : row.ids) {
      source.reader.interlaced = (id & 0x200000) != 0;
      source.reader.wholeBytes = IsExtended(id);
      if (row.taps == Taps::ONE) {
        sources.emplace(id, source);
        continue;
      }
      for (const auto& mode : modes) {
        source.reader.left = mode.left;
        source.reader.right = mode.right;
        sources.emplace(id | mode.bit, source);
      }
    }
  }
  return sources;
}

const std::map<Id, Source>& Sources() {
  static const std::map<Id, Source> sSources = MakeSources();
  return sSources;
}

Stage Copy(Id id) {
  const Source& source = SourceOf(id);
  Stage stage = source.reader;
  const bool packed = (id & 0x400000) != 0;
  stage.kernel = CopyLine;
  if (IsExtended(id)) {
    stage.to.pixelBytes = 0;
    return stage;
  }
  stage.copiesPairs = packed && source.family != Family::COLOR && (source.bits == 10 || source.bits == 12);
  const unsigned bytes = source.bits == 24 && source.bytes == 3 && !packed ? 4 : source.bytes;
  stage.sourceBits = stage.copiesPairs ? 12 : 8 * bytes;
  stage.to.pixelBytes = bytes;
  return stage;
}

Stage WithWriter(const Stage& reader, const Destination& destination) {
  Stage stage = reader;
  stage.to = destination;
  return stage;
}

bool IsColor(Id to) { return kColorDestinations.count(to) + kDeepColorDestinations.count(to) != 0; }

Destination ColorDestination(Id to) {
  const auto found = kColorDestinations.find(to);
  return found != kColorDestinations.end() ? found->second : kDeepColorDestinations.at(to);
}

Destination LumaDestination(Id to) {
  Destination destination = kGrayDestinations.at(to);
  destination.writer = Writer::LUMA;
  return destination;
}

template <class Destinations>
void AddAll(const Destinations& destinations, std::set<Id>& ids) {
  for (const auto& [id, destination] : destinations) ids.insert(id);
}

std::set<Id> DestinationsOf(Id from, Registered registered) {
  const Source& source = SourceOf(from);
  std::set<Id> ids = {from};
  AddAll(kColorDestinations, ids);
  if (source.family == Family::GRAY) AddAll(kGrayDestinations, ids);
  if (source.family == Family::BAYER) ids.insert(kMosaic8);
  if (source.reorderedType != 0) ids.insert(source.reorderedType);
  if (registered == Registered::STANDARD) return ids;
  AddAll(kDeepColorDestinations, ids);
  AddAll(kGrayDestinations, ids);
  if (source.family == Family::BAYER) AddAll(kMosaicDestinations, ids);
  return ids;
}

}  // namespace

std::set<Id> AllTypes(Registered registered) {
  std::set<Id> ids;
  for (const auto& [id, source] : Sources()) {
    if (!IsExtended(id) || registered == Registered::EXTENDED) ids.insert(id);
  }
  return ids;
}

std::set<Pair> AllPairs(Registered registered) {
  std::set<Pair> pairs;
  for (const Id from : AllTypes(registered)) {
    for (const Id to : DestinationsOf(from, registered)) pairs.emplace(from, to);
  }
  return pairs;
}

const Source& SourceOf(Id from) { return Sources().at(from); }

Route RouteOf(Id from, Id to) {
  const Source& source = SourceOf(from);
  if (from == to || kSortedCopies.count({from, to}) != 0) return {Copy(from), std::nullopt};
  if (source.reorderedType != 0) {
    const Stage reorder = WithWriter(source.reader, {Writer::GRAY, source.bytes});
    if (to == source.reorderedType) return {reorder, std::nullopt};
    return {reorder, RouteOf(source.reorderedType, to).first, source.reorderedType};
  }
  if (source.family == Family::GRAY) {
    return {WithWriter(source.reader, IsColor(to) ? ColorDestination(to) : kGrayDestinations.at(to)), std::nullopt};
  }
  const auto mosaic = kMosaicDestinations.find(to);
  if (source.family == Family::BAYER && mosaic != kMosaicDestinations.end()) {
    return {WithWriter(source.reader, mosaic->second), std::nullopt};
  }
  const Destination color = IsColor(to) ? ColorDestination(to) : LumaDestination(to);
  if (source.family == Family::COLOR) return {WithWriter(source.reader, color), std::nullopt};
  if (source.demosaiced) {
    Stage demosaic = WithWriter(source.reader, color);
    demosaic.kernel = source.bytes == 1 ? Bayer8 : Bayer16;
    return {demosaic, std::nullopt};
  }
  // Through a mosaic that is stored plainly: of 8 bits, and a scratch image that callers see, or of all its bits.
  const bool standard = kColorDestinations.count(to) != 0 && !IsExtended(from);
  if (standard) {
    const Stage reduce = WithWriter(source.reader, kMosaicDestinations.at(kMosaic8));
    return {reduce, RouteOf(kMosaic8, to).first, kMosaic8};
  }
  return ThroughAllBits({source.reader, WithWriter({}, color)});
}

Route ThroughAllBits(const Route& route) {
  Stage unpack = WithWriter(route.first, {Writer::GRAY, 2, route.first.depth, 0});
  unpack.contained = true;
  Stage demosaic = WithWriter({}, route.second->to);
  demosaic.kernel = Bayer16;
  demosaic.sourceBits = 16;
  demosaic.depth = route.first.depth;
  return {unpack, demosaic, 0};
}

}  // namespace model
