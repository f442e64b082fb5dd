#include "LmImagingLib/PFNC.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib {

namespace {

using ConversionFlags::kBayerBG;
using ConversionFlags::kBayerGB;
using ConversionFlags::kBayerGR;
using ConversionFlags::kBayerRG;

struct Entry {
  PFNCFormat format;
  const char* olderName;  // of GigE Vision 1 and of drivers of its time, or null
};

// Of entries with one type the first is the one to announce it with. YUV has the studio range here, and so has
// YCbCr601. The YCbCr names without a number have the full range and YCbCr709 has other factors: other colours.
constexpr Entry kFormats[] = {
    {{0x01080001, "Mono8", 0x10001, 0}, nullptr},
    {{0x01080002, "Mono8s", 0x10401, 0}, "Mono8Signed"},
    {{0x01100003, "Mono10", 0x10002, 0}, nullptr},
    {{0x010C0004, "Mono10Packed", 0x10008, 0}, nullptr},
    {{0x01100005, "Mono12", 0x10003, 0}, nullptr},
    {{0x010C0006, "Mono12Packed", 0x10009, 0}, nullptr},
    {{0x010C0047, "Mono12p", 0x410003, 0}, nullptr},
    {{0x01100025, "Mono14", 0x10004, 0}, nullptr},
    {{0x01100007, "Mono16", 0x10005, 0}, nullptr},
    {{0x01080008, "BayerGR8", 0x20010, kBayerGR}, nullptr},
    {{0x01080009, "BayerRG8", 0x20010, kBayerRG}, nullptr},
    {{0x0108000A, "BayerGB8", 0x20010, kBayerGB}, nullptr},
    {{0x0108000B, "BayerBG8", 0x20010, kBayerBG}, nullptr},
    {{0x0110000C, "BayerGR10", 0x20011, kBayerGR}, nullptr},
    {{0x0110000D, "BayerRG10", 0x20011, kBayerRG}, nullptr},
    {{0x0110000E, "BayerGB10", 0x20011, kBayerGB}, nullptr},
    {{0x0110000F, "BayerBG10", 0x20011, kBayerBG}, nullptr},
    {{0x01100010, "BayerGR12", 0x20012, kBayerGR}, nullptr},
    {{0x01100011, "BayerRG12", 0x20012, kBayerRG}, nullptr},
    {{0x01100012, "BayerGB12", 0x20012, kBayerGB}, nullptr},
    {{0x01100013, "BayerBG12", 0x20012, kBayerBG}, nullptr},
    {{0x01100109, "BayerGR14", 0x20016, kBayerGR}, nullptr},
    {{0x0110010A, "BayerRG14", 0x20016, kBayerRG}, nullptr},
    {{0x0110010B, "BayerGB14", 0x20016, kBayerGB}, nullptr},
    {{0x0110010C, "BayerBG14", 0x20016, kBayerBG}, nullptr},
    {{0x0110002E, "BayerGR16", 0x20020, kBayerGR}, nullptr},
    {{0x0110002F, "BayerRG16", 0x20020, kBayerRG}, nullptr},
    {{0x01100030, "BayerGB16", 0x20020, kBayerGB}, nullptr},
    {{0x01100031, "BayerBG16", 0x20020, kBayerBG}, nullptr},
    {{0x010C0026, "BayerGR10Packed", 0x20041, kBayerGR}, nullptr},
    {{0x010C0027, "BayerRG10Packed", 0x20041, kBayerRG}, nullptr},
    {{0x010C0028, "BayerGB10Packed", 0x20041, kBayerGB}, nullptr},
    {{0x010C0029, "BayerBG10Packed", 0x20041, kBayerBG}, nullptr},
    {{0x010C002A, "BayerGR12Packed", 0x20040, kBayerGR}, nullptr},
    {{0x010C002B, "BayerRG12Packed", 0x20040, kBayerRG}, nullptr},
    {{0x010C002C, "BayerGB12Packed", 0x20040, kBayerGB}, nullptr},
    {{0x010C002D, "BayerBG12Packed", 0x20040, kBayerBG}, nullptr},
    {{0x010C0057, "BayerGR12p", 0x420012, kBayerGR}, nullptr},
    {{0x010C0059, "BayerRG12p", 0x420012, kBayerRG}, nullptr},
    {{0x010C0055, "BayerGB12p", 0x420012, kBayerGB}, nullptr},
    {{0x010C0053, "BayerBG12p", 0x420012, kBayerBG}, nullptr},
    {{0x02180014, "RGB8", 0x420002, 0}, "RGB8Packed"},
    {{0x02180015, "BGR8", 0x420006, 0}, "BGR8Packed"},
    {{0x02200016, "RGBa8", 0x20003, 0}, "RGBA8Packed"},
    {{0x02200017, "BGRa8", 0x20007, 0}, "BGRA8Packed"},
    {{0x02300018, "RGB10", 0x20008, 0}, "RGB10Packed"},
    {{0x02300019, "BGR10", 0x20042, 0}, "BGR10Packed"},
    {{0x0230001A, "RGB12", 0x2000C, 0}, "RGB12Packed"},
    {{0x0230001B, "BGR12", 0x20043, 0}, "BGR12Packed"},
    {{0x02300033, "RGB16", 0x20004, 0}, "RGB16Packed"},
    {{0x0240005F, "RGBa10", 0x20009, 0}, nullptr},
    {{0x02400061, "RGBa12", 0x2000D, 0}, nullptr},
    {{0x02400064, "RGBa16", 0x20005, 0}, "RGBA16Packed"},
    {{0x02240034, "RGB12V1Packed", 0x20046, 0}, nullptr},
    {{0x02100036, "BGR565p", 0x20001, 0}, "BGR565Packed"},
    {{0x02180021, "RGB8_Planar", 0x820002, 0}, "RGB8Planar"},
    {{0x02300022, "RGB10_Planar", 0x820008, 0}, "RGB10Planar"},
    {{0x02300023, "RGB12_Planar", 0x82000C, 0}, "RGB12Planar"},
    {{0x02300024, "RGB16_Planar", 0x820004, 0}, "RGB16Planar"},
    {{0x020C001E, "YUV411_8_UYYVYY", 0x440006, 0}, "YUV411Packed"},
    {{0x0210001F, "YUV422_8_UYVY", 0x40008, 0}, "YUV422Packed"},
    {{0x02100032, "YUV422_8", 0x40001, 0}, "YUV422_YUYV_Packed"},
    {{0x02180020, "YUV8_UYV", 0x440007, 0}, "YUV444Packed"},
    {{0x0218003D, "YCbCr601_8_CbYCr", 0x440007, 0}, nullptr},
    {{0x020C003F, "YCbCr601_411_8_CbYYCrYY", 0x440006, 0}, nullptr},
    {{0x0210003E, "YCbCr601_422_8", 0x40001, 0}, nullptr},
    {{0x02100044, "YCbCr601_422_8_CbYCrY", 0x40008, 0}, nullptr},
};

// Names that mean the types of this layout while their codes, by their names of today, mean red for blue.
constexpr PFNCFormat kByNameOnly[] = {{0x0220001C, "BGR10V1Packed", 0x20044, 0},
                                      {0x0220001D, "BGR10V2Packed", 0x20045, 0}};

struct Swapped {
  std::uint32_t code;
  const char* name;
};
constexpr Swapped kSwapped[] = {{0x0220001C, "RGB10V1Packed"}, {0x0220001D, "RGB10p32"}, {0x0220001D, "RGB10V2Packed"}};

// Types whose bytes mean the same as those of a type in the table.
struct Synonym {
  PixelTypeID type, inTable;
};
constexpr Synonym kSynonyms[] = {{0x20002, 0x420002}, {0x2000A, 0x420002}, {0x42000A, 0x420002}, {0x20006, 0x420006},
                                 {0x2000B, 0x20003},  {0x42000B, 0x20003}, {0x82000A, 0x820002}, {0x110005, 0x10005},
                                 {0x120004, 0x20004}, {0x120005, 0x20005}};

constexpr char kUnknown[] =
    "the format is unknown: it is no code or name of the convention, or no pixel type has its packing or colour range";
constexpr char kColorsSwapped[] =
    "the format is not supported: it has red in the lowest bits, where the pixel types of this packing have blue, so "
    "that red and blue would be swapped; cameras that mean blue name it BGR10V1Packed or BGR10V2Packed";

bool IsNamed(const char* name, const char* wanted) { return name != nullptr && std::strcmp(name, wanted) == 0; }

template <class Table, class Predicate>
auto FindIn(const Table& table, Predicate&& matches) {
  const auto found = std::find_if(std::begin(table), std::end(table), matches);
  return found == std::end(table) ? nullptr : &*found;
}

}  // namespace

PFNCResult FindPFNC(std::uint32_t code) {
  const Entry* const entry = FindIn(kFormats, [code](const Entry& e) { return e.format.code == code; });
  if (entry != nullptr) return {&entry->format, nullptr};
  const bool swapped = FindIn(kSwapped, [code](const Swapped& s) { return s.code == code; }) != nullptr;
  return {nullptr, swapped ? kColorsSwapped : kUnknown};
}

PFNCResult FindPFNC(const char* name) {
  if (name == nullptr) return {nullptr, kUnknown};
  const Entry* const entry =
      FindIn(kFormats, [name](const Entry& e) { return IsNamed(e.format.name, name) || IsNamed(e.olderName, name); });
  if (entry != nullptr) return {&entry->format, nullptr};
  const PFNCFormat* const byName = FindIn(kByNameOnly, [name](const PFNCFormat& f) { return IsNamed(f.name, name); });
  if (byName != nullptr) return {byName, nullptr};
  const bool swapped = FindIn(kSwapped, [name](const Swapped& s) { return IsNamed(s.name, name); }) != nullptr;
  return {nullptr, swapped ? kColorsSwapped : kUnknown};
}

const PFNCFormat* FindPFNC(PixelTypeID type, unsigned long flags) {
  const Synonym* const synonym = FindIn(kSynonyms, [type](const Synonym& s) { return s.type == type; });
  if (synonym != nullptr) type = synonym->inTable;
  constexpr unsigned long kLayouts = kBayerGR | kBayerGB | kBayerRG | kBayerBG;
  const unsigned long layout = (flags & kLayouts) != 0 ? flags & kLayouts : kBayerGR;
  const Entry* const entry = FindIn(kFormats, [type, layout](const Entry& e) {
    return e.format.type == type && (e.format.flags == 0 || e.format.flags == layout);
  });
  return entry != nullptr ? &entry->format : nullptr;
}

const PFNCFormat* EnumPFNC(std::size_t index) {
  return index < std::size(kFormats) ? &kFormats[index].format : nullptr;
}

}  // namespace LmImagingLib
