#include "model/catalogue.h"

#include <map>
#include <vector>

#include "model/kernels.h"

namespace model {
namespace {

constexpr Id kMosaic8 = 0x20010;

enum class Taps { ONE, TWO };

/// Types that are read alike. With two taps the ids stand for the four modes that a sensor with two outputs has.
struct Row {
  std::vector<Id> ids;
  Family family;
  unsigned bits, bytes;
  Kernel kernel;
  unsigned halfBytes;  ///< of a source pixel
  unsigned shift;
  Taps taps = Taps::ONE;
  bool demosaiced = false;
  Id reorderedType = 0;
};

const Row kRows[] = {
    {{0x10001, 0x210001}, Family::GRAY, 8, 1, Gray8, 2, 0},
    {{0x10001}, Family::GRAY, 8, 1, Gray8, 2, 0, Taps::TWO},
    {{0x10010001}, Family::GRAY, 8, 1, DualLines, 2, 0, Taps::ONE, false, 0x10001},
    {{0x10006}, Family::GRAY, 8, 1, QuadTaps8, 2, 0, Taps::ONE, false, 0x10001},
    {{0x10401}, Family::GRAY, 8, 1, Gray8Signed, 2, 0},
    {{0x10002, 0x210002}, Family::GRAY, 10, 2, Gray16, 4, 2},
    {{0x110002, 0x310002}, Family::GRAY, 10, 2, Gray16, 4, 8},
    {{0x10002}, Family::GRAY, 10, 2, Gray16, 4, 2, Taps::TWO},
    {{0x110002}, Family::GRAY, 10, 2, Gray16, 4, 8, Taps::TWO},
    {{0x410002, 0x610002}, Family::GRAY, 10, 2, GrayPacked, 3, 2},
    {{0x410002, 0x610002}, Family::GRAY, 10, 2, GrayPacked, 3, 2, Taps::TWO},
    {{0x10007}, Family::GRAY, 10, 2, QuadTaps16, 4, 0, Taps::ONE, false, 0x10002},
    {{0x110007}, Family::GRAY, 10, 2, QuadTaps16, 4, 0, Taps::ONE, false, 0x110002},
    {{0x10008}, Family::GRAY, 10, 2, GrayPackedGEV, 3, 0},
    {{0x10003, 0x210003}, Family::GRAY, 12, 2, Gray16, 4, 4},
    {{0x110003, 0x310003}, Family::GRAY, 12, 2, Gray16, 4, 8},
    {{0x10003}, Family::GRAY, 12, 2, Gray16, 4, 4, Taps::TWO},
    {{0x110003}, Family::GRAY, 12, 2, Gray16, 4, 8, Taps::TWO},
    {{0x410003, 0x610003}, Family::GRAY, 12, 2, GrayPacked, 3, 4},
    {{0x410003, 0x610003}, Family::GRAY, 12, 2, GrayPacked, 3, 4, Taps::TWO},
    {{0x10009}, Family::GRAY, 12, 2, GrayPackedGEV, 3, 0},
    {{0x10004, 0x210004}, Family::GRAY, 14, 2, Gray16, 4, 6},
    {{0x110004, 0x310004}, Family::GRAY, 14, 2, Gray16, 4, 8},
    {{0x10005, 0x210005, 0x110005, 0x310005}, Family::GRAY, 16, 2, Gray16, 4, 8},

    {{0x20010}, Family::BAYER, 8, 1, Gray8, 2, 0, Taps::ONE, true},
    {{0x20010}, Family::BAYER, 8, 1, Gray8, 2, 0, Taps::TWO},
    {{0x20011}, Family::BAYER, 10, 2, Gray16, 4, 2, Taps::ONE, true},
    {{0x120011}, Family::BAYER, 10, 2, Gray16, 4, 8, Taps::ONE, true},
    {{0x220011}, Family::BAYER, 10, 2, Gray16, 4, 2},
    {{0x320011}, Family::BAYER, 10, 2, Gray16, 4, 8},
    {{0x20011}, Family::BAYER, 10, 2, Gray16, 4, 2, Taps::TWO},
    {{0x120011}, Family::BAYER, 10, 2, Gray16, 4, 8, Taps::TWO},
    {{0x420011}, Family::BAYER, 10, 2, GrayPacked, 3, 2},
    {{0x420011}, Family::BAYER, 10, 2, GrayPacked, 3, 2, Taps::TWO},
    {{0x20041}, Family::BAYER, 10, 2, GrayPackedGEV, 3, 0},
    {{0x20012}, Family::BAYER, 12, 2, Gray16, 4, 4, Taps::ONE, true},
    {{0x120012}, Family::BAYER, 12, 2, Gray16, 4, 8, Taps::ONE, true},
    {{0x20012}, Family::BAYER, 12, 2, Gray16, 4, 4, Taps::TWO},
    {{0x120012}, Family::BAYER, 12, 2, Gray16, 4, 8, Taps::TWO},
    {{0x420012}, Family::BAYER, 12, 2, GrayPacked, 3, 4},
    {{0x420012}, Family::BAYER, 12, 2, GrayPacked, 3, 4, Taps::TWO},
    {{0x20040}, Family::BAYER, 12, 2, GrayPackedGEV, 3, 0},
    {{0x20016}, Family::BAYER, 14, 2, Gray16, 4, 6, Taps::ONE, true},
    {{0x120016}, Family::BAYER, 14, 2, Gray16, 4, 8, Taps::ONE, true},
    {{0x20020}, Family::BAYER, 14, 2, Gray16, 4, 8, Taps::ONE, true},

    {{0x20001}, Family::COLOR, 16, 2, RGB16, 4, 0},
    {{0x20002, 0x420002}, Family::COLOR, 24, 3, RGB24, 6, 0},
    {{0x2000A, 0x42000A}, Family::COLOR, 8, 3, RGB24, 6, 0},
    {{0x20006, 0x420006}, Family::COLOR, 24, 3, BGR24, 6, 0},
    {{0x20003}, Family::COLOR, 32, 4, RGB32, 8, 0},
    {{0x2000B, 0x42000B}, Family::COLOR, 8, 4, RGB32, 8, 0},
    {{0x20007}, Family::COLOR, 32, 4, BGR32, 8, 0},
    {{0x820002}, Family::COLOR, 24, 3, RGBPlanar8, 2, 0},
    {{0x82000A}, Family::COLOR, 8, 3, RGBPlanar8, 2, 0},
    {{0x82000B}, Family::COLOR, 8, 4, RGBPlanar8, 2, 0},
    {{0x820008}, Family::COLOR, 10, 6, RGBPlanar16, 4, 2},
    {{0x82000C}, Family::COLOR, 12, 6, RGBPlanar16, 4, 4},
    {{0x820004}, Family::COLOR, 48, 6, RGBPlanar16, 4, 8},
    {{0x20008}, Family::COLOR, 10, 6, RGB48, 12, 2},
    {{0x120008}, Family::COLOR, 10, 6, RGB48, 12, 8},
    {{0x2000C}, Family::COLOR, 12, 6, RGB48, 12, 4},
    {{0x12000C}, Family::COLOR, 12, 6, RGB48, 12, 8},
    {{0x20004, 0x120004}, Family::COLOR, 48, 6, RGB48, 12, 8},
    {{0x20042}, Family::COLOR, 10, 6, BGR48, 12, 2},
    {{0x20043}, Family::COLOR, 12, 6, BGR48, 12, 4},
    {{0x20009}, Family::COLOR, 10, 8, RGB64, 16, 2},
    {{0x120009}, Family::COLOR, 10, 8, RGB64, 16, 8},
    {{0x2000D}, Family::COLOR, 12, 8, RGB64, 16, 4},
    {{0x12000D}, Family::COLOR, 12, 8, RGB64, 16, 8},
    {{0x20005, 0x120005}, Family::COLOR, 64, 8, RGB64, 16, 8},
    {{0x20044}, Family::COLOR, 32, 4, BGR10PackedV1, 8, 0},
    {{0x20045}, Family::COLOR, 32, 4, BGR10PackedV2, 8, 0},
    {{0x20046}, Family::COLOR, 36, 5, RGB12PackedV1, 9, 0},

    {{0x40001, 0x240001}, Family::COLOR, 16, 2, YUV8, 4, 0},
    {{0x40008}, Family::COLOR, 16, 2, YUV8GEV, 4, 0},
    {{0x40002, 0x240002}, Family::COLOR, 20, 4, YUV10, 8, 2},
    {{0x140002, 0x340002}, Family::COLOR, 20, 4, YUV10, 8, 8},
    {{0x440003, 0x640003}, Family::COLOR, 24, 3, YUV444, 6, 0},
    {{0x440007}, Family::COLOR, 24, 3, YUV444GEV, 6, 0},
    {{0x440005, 0x640005}, Family::COLOR, 24, 3, YCrCb, 6, 0},
    {{0x440006, 0x640006}, Family::COLOR, 12, 2, YUV411, 3, 0},
};

struct Destination {
  Writer writer;
  unsigned pixelBytes;
};

const std::map<Id, Destination> kColorDestinations = {
    {0x20001, {Writer::RGB16, 2}},     {0x20002, {Writer::RGB24, 3}},  {0x420002, {Writer::RGB24, 3}},
    {0x2000A, {Writer::RGB24, 3}},     {0x42000A, {Writer::RGB24, 3}}, {0x20006, {Writer::BGR24, 3}},
    {0x420006, {Writer::BGR24, 3}},    {0x20003, {Writer::RGB32, 4}},  {0x2000B, {Writer::RGB32, 4}},
    {0x42000B, {Writer::RGB32, 4}},    {0x20007, {Writer::BGR32, 4}},  {0x820002, {Writer::PLANAR24, 1}},
    {0x82000A, {Writer::PLANAR24, 1}},
};

const std::map<Id, Destination> kGrayDestinations = {
    {0x10001, {Writer::GRAY8, 1}},  {0x10002, {Writer::GRAY10, 2}}, {0x10003, {Writer::GRAY12, 2}},
    {0x10004, {Writer::GRAY14, 2}}, {0x10005, {Writer::GRAY16, 2}},
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
    source.reader.sourceHalfBytes = row.halfBytes;
    source.reader.shift = row.shift;
    for (const Id id : row.ids) {
      source.reader.interlaced = (id & 0x200000) != 0;
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
  stage.copiesPairs = packed && source.family != Family::COLOR && (source.bits == 10 || source.bits == 12);
  const unsigned bytes = source.bits == 24 && source.bytes == 3 && !packed ? 4 : source.bytes;
  stage.sourceHalfBytes = stage.copiesPairs ? 3 : 2 * bytes;
  stage.destinationPixelBytes = bytes;
  return stage;
}

Stage WithWriter(const Stage& reader, const Destination& destination) {
  Stage stage = reader;
  stage.writer = destination.writer;
  stage.destinationPixelBytes = destination.pixelBytes;
  return stage;
}

std::set<Id> DestinationsOf(Id from) {
  const Source& source = SourceOf(from);
  std::set<Id> ids = {from};
  for (const auto& [id, destination] : kColorDestinations) ids.insert(id);
  if (source.family == Family::GRAY) {
    for (const auto& [id, destination] : kGrayDestinations) ids.insert(id);
  }
  if (source.family == Family::BAYER) ids.insert(kMosaic8);
  if (source.reorderedType != 0) ids.insert(source.reorderedType);
  return ids;
}

}  // namespace

const std::set<Id>& AllTypes() {
  static const std::set<Id> sTypes = [] {
    std::set<Id> ids;
    for (const auto& [id, source] : Sources()) ids.insert(id);
    return ids;
  }();
  return sTypes;
}

std::set<Pair> AllPairs() {
  std::set<Pair> pairs;
  for (const auto& [from, source] : Sources()) {
    for (const Id to : DestinationsOf(from)) pairs.emplace(from, to);
  }
  return pairs;
}

const Source& SourceOf(Id from) { return Sources().at(from); }

Route RouteOf(Id from, Id to) {
  const Source& source = SourceOf(from);
  if (from == to || kSortedCopies.count({from, to}) != 0) return {Copy(from), std::nullopt};
  if (source.reorderedType != 0) {
    const Stage reorder = WithWriter(source.reader, {Writer::GRAY8, source.bytes});
    if (to == source.reorderedType) return {reorder, std::nullopt};
    return {reorder, RouteOf(source.reorderedType, to).first, source.reorderedType};
  }
  if (source.family == Family::BAYER) {
    const Stage reduce = WithWriter(source.reader, {Writer::GRAY8, 1});
    if (to == kMosaic8) return {reduce, std::nullopt};
    if (!source.demosaiced) return {reduce, RouteOf(kMosaic8, to).first, kMosaic8};
    Stage demosaic = WithWriter(source.reader, kColorDestinations.at(to));
    demosaic.kernel = source.bytes == 1 ? Bayer8 : Bayer16;
    return {demosaic, std::nullopt};
  }
  const auto gray = kGrayDestinations.find(to);
  return {WithWriter(source.reader, gray != kGrayDestinations.end() ? gray->second : kColorDestinations.at(to)),
          std::nullopt};
}

}  // namespace model
