#include "LmImagingLib/V4L2.h"

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {

namespace {

using ConversionFlags::kBayerBG;
using ConversionFlags::kBayerGB;
using ConversionFlags::kBayerGR;
using ConversionFlags::kBayerRG;

// The four characters of a code, the first one in the low bits; blanks fill a shorter name up.
constexpr std::uint32_t CodeOf(const char* name) {
  std::uint32_t code = 0;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    code |= static_cast<std::uint32_t>(*name != 0 ? *name++ : ' ') << shift;
  }
  return code;
}

struct FourccRow : V4L2Format {
  constexpr FourccRow(const char* fourcc, PixelTypeID id, unsigned long layout)
      : V4L2Format{CodeOf(fourcc), fourcc, id, layout} {}
};

constexpr FourccRow kFourccs[] = {
    {"GREY", 0x10001, 0},         {"Y10", 0x10002, 0},          {"Y12", 0x10003, 0},
    {"Y14", 0x10004, 0},          {"Y16", 0x10005, 0},          {"Y10P", 0x41084A, 0},
    {"Y12P", 0x41084C, 0},        {"Y14P", 0x41084E, 0},        {"BA81", 0x20010, kBayerBG},
    {"GBRG", 0x20010, kBayerGB},  {"GRBG", 0x20010, kBayerGR},  {"RGGB", 0x20010, kBayerRG},
    {"BG10", 0x20011, kBayerBG},  {"GB10", 0x20011, kBayerGB},  {"BA10", 0x20011, kBayerGR},
    {"RG10", 0x20011, kBayerRG},  {"BG12", 0x20012, kBayerBG},  {"GB12", 0x20012, kBayerGB},
    {"BA12", 0x20012, kBayerGR},  {"RG12", 0x20012, kBayerRG},  {"BG14", 0x20016, kBayerBG},
    {"GB14", 0x20016, kBayerGB},  {"GR14", 0x20016, kBayerGR},  {"RG14", 0x20016, kBayerRG},
    {"BYR2", 0x20020, kBayerBG},  {"GB16", 0x20020, kBayerGB},  {"GR16", 0x20020, kBayerGR},
    {"RG16", 0x20020, kBayerRG},  {"pBAA", 0x42094A, kBayerBG}, {"pGAA", 0x42094A, kBayerGB},
    {"pgAA", 0x42094A, kBayerGR}, {"pRAA", 0x42094A, kBayerRG}, {"pBCC", 0x42094C, kBayerBG},
    {"pGCC", 0x42094C, kBayerGB}, {"pgCC", 0x42094C, kBayerGR}, {"pRCC", 0x42094C, kBayerRG},
    {"pBEE", 0x42094E, kBayerBG}, {"pGEE", 0x42094E, kBayerGB}, {"pgEE", 0x42094E, kBayerGR},
    {"pREE", 0x42094E, kBayerRG}, {"YUYV", 0x40001, 0},         {"UYVY", 0x40008, 0},
    {"YUV3", 0x440003, 0},        {"RGBP", 0x20001, 0},         {"RGB3", 0x420002, 0},
    {"BGR3", 0x420006, 0},        {"XB24", 0x20003, 0},         {"AB24", 0x20003, 0},
    {"XR24", 0x20007, 0},         {"AR24", 0x20007, 0},         {"BGR4", 0x20007, 0},
};

constexpr char kUnknownFourcc[] = "the format is unknown: no pixel type has this fourcc";
constexpr char kExtendedFourcc[] =
    "the format is an extended one: RegisterExtendedFormats() of LmImagingLib/Extended.h has to be called first";
constexpr char kCompressed[] = "the format is not supported: it carries compressed pictures";
constexpr char kChromaInPlanes[] =
    "the format is not supported: it is YUV 4:2:0 or 4:2:2 with its colours in planes of their own";
constexpr char kBigEndian[] = "the format is not supported: its words begin with their high byte";

// Frequent formats that no pixel type has.
constexpr struct {
  std::uint32_t code;
  const char* reason;
} kOthers[] = {
    {CodeOf("MJPG"), kCompressed},     {CodeOf("JPEG"), kCompressed},     {CodeOf("H264"), kCompressed},
    {CodeOf("HEVC"), kCompressed},     {CodeOf("NV12"), kChromaInPlanes}, {CodeOf("NV21"), kChromaInPlanes},
    {CodeOf("NV16"), kChromaInPlanes}, {CodeOf("NV61"), kChromaInPlanes}, {CodeOf("YU12"), kChromaInPlanes},
    {CodeOf("YV12"), kChromaInPlanes}, {CodeOf("422P"), kChromaInPlanes},
};

bool HasItsType(const V4L2Format& format) { return PixelTypeFactory::HasPixelType(format.type); }

}  // namespace

V4L2Result FindV4L2(std::uint32_t code) {
  for (const FourccRow& format : kFourccs) {
    if (format.code != code) continue;
    return HasItsType(format) ? V4L2Result{&format, nullptr} : V4L2Result{nullptr, kExtendedFourcc};
  }
  for (const auto& other : kOthers) {
    if (other.code == code) return {nullptr, other.reason};
  }
  constexpr std::uint32_t kBigEndianBit = 0x80000000;
  return {nullptr, (code & kBigEndianBit) != 0 ? kBigEndian : kUnknownFourcc};
}

const V4L2Format* EnumV4L2(std::size_t index) {
  for (const FourccRow& format : kFourccs) {
    if (HasItsType(format) && index-- == 0) return &format;
  }
  return nullptr;
}

}  // namespace LmImagingLib
