// The table of properties.
#include "properties.h"

#include <algorithm>
#include <thread>

#include "words.h"

namespace LmGst {

namespace {

enum Property : unsigned {
  kFormat = 1,
  kWidth,
  kHeight,
  kFramerate,
  kStride,
  kDemosaic,
  kRedGain,
  kGreenGain,
  kBlueGain,
  kWhiteBalance,
  kBlackLevel,
  kTone,
  kDevelopmentFile,
  kThreads,
};

constexpr int kMostLines = 65535;

GType DemosaicType() {
  static const GEnumValue values[] = {
      {0, "One colour for each cell of 2 x 2 samples", "block"}, {1, "From the neighbours of each pixel", "bilinear"},
      {2, "By linear filters of 5 x 5 samples", "mhc"},          {3, "Along edges", "adaptive"},
      {4, "A picture of half the width and height", "half"},     {0, nullptr, nullptr}};
  static const GType type = g_enum_register_static("GstLmImagingConvertDemosaic", values);
  return type;
}

GType BalanceType() {
  static const GEnumValue values[] = {{0, "The gains stay as they are", "off"},
                                      {1, "The mean of the picture is gray", "gray"},
                                      {2, "The brightest hundredth is white", "white"},
                                      {0, nullptr, nullptr}};
  static const GType type = g_enum_register_static("GstLmImagingConvertWhiteBalance", values);
  return type;
}

constexpr auto kAtRest = static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | GST_PARAM_MUTABLE_READY);
constexpr auto kAtAnyTime =
    static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | GST_PARAM_MUTABLE_PLAYING);
constexpr auto kControlled = static_cast<GParamFlags>(kAtAnyTime | GST_PARAM_CONTROLLABLE);

GParamSpec* Gain(const char* name, const char* nick, const char* about) {
  return g_param_spec_double(name, nick, about, 0, 1000, 1, kControlled);
}

unsigned DemosaicOf(unsigned long method) {
  unsigned index = 0;
  while (LmTool::kDemosaics[index].flag != method) ++index;
  return index;
}

std::string TextOf(const GValue* value) {
  const char* const text = g_value_get_string(value);
  return text == nullptr ? "" : text;
}

}  // namespace

void InstallProperties(GObjectClass* type) {
  const auto add = [=](Property property, GParamSpec* spec) { g_object_class_install_property(type, property, spec); };
  add(kFormat, g_param_spec_string("format", "Format",
                                   "Pixel format of the frames, as cameras name it by PFNC, such as BayerRG12p. It is "
                                   "needed where caps have no format, and wins over that of caps",
                                   nullptr, kAtRest));
  add(kWidth,
      g_param_spec_int("width", "Width", "Pixels of a line, where caps do not say it", 0, kMostLines, 0, kAtRest));
  add(kHeight,
      g_param_spec_int("height", "Height", "Lines of a frame, where caps do not say it", 0, kMostLines, 0, kAtRest));
  add(kFramerate, gst_param_spec_fraction("framerate", "Frame rate", "Frames a second, where caps do not say it", 0, 1,
                                          G_MAXINT, 1, 0, 1, kAtRest));
  add(kStride, g_param_spec_uint("stride", "Stride",
                                 "Bytes from line to line of a frame. 0: as the buffer says; else without padding, or "
                                 "for frames with caps of their own with lines that begin at multiples of four bytes",
                                 0, 1U << 20, 0, kAtRest));
  add(kDemosaic,
      g_param_spec_enum("demosaic", "Demosaic", "How a mosaic becomes colour", DemosaicType(), 3, kAtAnyTime));
  add(kRedGain, Gain("red-gain", "Gain of red", "Factor of red; while white balance is found, reads the one in use"));
  add(kGreenGain, Gain("green-gain", "Gain of green", "Factor of green, as red-gain"));
  add(kBlueGain, Gain("blue-gain", "Gain of blue", "Factor of blue, as red-gain"));
  add(kWhiteBalance, g_param_spec_enum("white-balance", "White balance",
                                       "Whether and how the gains are found. They follow the light from frame to "
                                       "frame, and stay when this is turned off",
                                       BalanceType(), 0, kAtAnyTime));
  add(kBlackLevel, g_param_spec_double("black-level", "Black level",
                                       "Level of black in steps of the samples as the camera counts; it is taken off "
                                       "before the gains act",
                                       0, 65535, 0, kControlled));
  add(kTone, g_param_spec_string("tone", "Tone",
                                 "Curve from light to values: linear, srgb, bt709, or a gamma of 0.1 to 10. If unset, "
                                 "as the development file says, or linear without one",
                                 nullptr, kAtAnyTime));
  add(kDevelopmentFile,
      g_param_spec_string("development-file", "Development file",
                          "JSON file of a camera's settings: black level, gains, colour matrix, tone, "
                          "demosaicing and defects. Properties that are set win over it",
                          nullptr, kAtAnyTime));
  add(kThreads, g_param_spec_uint("n-threads", "Threads", "Most threads for one frame; 0 for one for each processor", 0,
                                  1024, 1, kAtAnyTime));
}

bool ChangesCaps(unsigned property) { return property <= kDemosaic || property == kDevelopmentFile; }

void SetProperty(Settings& settings, unsigned property, const GValue* value) {
  switch (property) {
    case kFormat:
      return settings.SetFormat(TextOf(value));
    case kWidth:
      settings.width = g_value_get_int(value);
      return;
    case kHeight:
      settings.height = g_value_get_int(value);
      return;
    case kFramerate:
      settings.framesNumerator = gst_value_get_fraction_numerator(value);
      settings.framesDenominator = gst_value_get_fraction_denominator(value);
      return;
    case kStride:
      settings.stride = g_value_get_uint(value);
      return;
    case kDemosaic:
      settings.method = LmTool::kDemosaics[g_value_get_enum(value)].flag;
      return;
    case kRedGain:
      settings.red = g_value_get_double(value);
      return;
    case kGreenGain:
      settings.green = g_value_get_double(value);
      return;
    case kBlueGain:
      settings.blue = g_value_get_double(value);
      return;
    case kWhiteBalance:
      settings.balance = static_cast<Balance>(g_value_get_enum(value));
      return;
    case kBlackLevel:
      settings.black = g_value_get_double(value);
      return;
    case kTone:
      return settings.SetTone(TextOf(value));
    case kDevelopmentFile:
      return settings.SetDevelopment(TextOf(value));
    case kThreads: {
      const unsigned threads = g_value_get_uint(value);
      settings.threads = threads != 0 ? threads : std::max(std::thread::hardware_concurrency(), 1U);
      return;
    }
    default:
      return;
  }
}

void GetProperty(const Settings& settings, const LmTool::Triple& gains, unsigned property, GValue* value) {
  switch (property) {
    case kFormat:
      g_value_set_string(value, settings.format.text.c_str());
      return;
    case kWidth:
      g_value_set_int(value, settings.width);
      return;
    case kHeight:
      g_value_set_int(value, settings.height);
      return;
    case kFramerate:
      gst_value_set_fraction(value, settings.framesNumerator, settings.framesDenominator);
      return;
    case kStride:
      g_value_set_uint(value, settings.stride);
      return;
    case kDemosaic:
      g_value_set_enum(value, static_cast<int>(DemosaicOf(settings.Method())));
      return;
    case kRedGain:
      g_value_set_double(value, gains.red);
      return;
    case kGreenGain:
      g_value_set_double(value, gains.green);
      return;
    case kBlueGain:
      g_value_set_double(value, gains.blue);
      return;
    case kWhiteBalance:
      g_value_set_enum(value, static_cast<int>(settings.balance));
      return;
    case kBlackLevel:
      g_value_set_double(value, settings.Colors().black.red);
      return;
    case kTone:
      g_value_set_string(value, settings.tone.text.c_str());
      return;
    case kDevelopmentFile:
      g_value_set_string(value, settings.development.text.c_str());
      return;
    case kThreads:
      g_value_set_uint(value, settings.threads);
      return;
    default:
      return;
  }
}

}  // namespace LmGst
