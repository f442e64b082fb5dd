// Conversions and developments, for C.
#include <cmath>

#include "LmImagingLib/Development.h"
#include "c/handles.h"
#include "c/structs.h"
#include "image/refusal.h"

namespace LmImagingLib::C {

namespace {

void RunJob(void* job, std::size_t index) { (*static_cast<const std::function<void(std::size_t)>*>(job))(index); }

/// An executor of C as one of C++.
Executor ExecutorOf(const LmiOptions& options) {
  if (options.executor == nullptr) return nullptr;
  return [&options](std::size_t count, const std::function<void(std::size_t)>& job) {
    options.executor(options.executorContext, count, RunJob, const_cast<std::function<void(std::size_t)>*>(&job));
  };
}

/// What conversions and developments have in common.
template <class Options>
Options CommonOptions(const LmiOptions& given, const Executor& executor) {
  Options options;
  options.flags = given.flags;
  options.firstLine = Narrow(given.firstLine);
  if (given.lines != 0) options.lines = Narrow(given.lines);
  if (given.threads != 0) options.threads = static_cast<unsigned>(std::min<std::size_t>(given.threads, UINT_MAX));
  if (executor) options.executor = &executor;
  return options;
}

ColorMatrix MatrixOf(const double (&given)[9]) {
  ColorMatrix matrix{};
  std::copy(std::begin(given), std::end(given), matrix.begin());
  return matrix == ColorMatrix{} ? kIdentityMatrix : matrix;
}

unsigned long MethodOf(std::uint32_t method) {
  switch (method) {
    case 0:
      return ConversionFlags::kAdaptive;
    case LMI_BLOCKS:
      return ConversionFlags::kNone;
    case LMI_BILINEAR:
    case LMI_GRADIENT_CORRECTED:
    case LMI_ADAPTIVE:
    case LMI_HALF_SIZE:
      return method;
    default:
      Refuse("settings.method is " + Hex(method) +
             "; allowed: 0, LMI_BLOCKS (0x40000000), LMI_BILINEAR (0x100), LMI_GRADIENT_CORRECTED (0x200), "
             "LMI_ADAPTIVE (0x400) and LMI_HALF_SIZE (0x10000)");
  }
}

DevelopmentSettings SettingsOf(const LmiDevelopmentSettings& given) {
  DevelopmentSettings settings;
  CheckChoice(given.correctsDefects, "settings.correctsDefects", {"no", "yes"});
  settings.correctsDefects = given.correctsDefects != 0;
  settings.defectThreshold = given.defectThreshold;
  settings.black = ValuesOf(given.black);
  settings.gains = GainsOf(given.gains);
  settings.method = MethodOf(given.method);
  settings.matrix = MatrixOf(given.matrix);
  settings.tone = ToneOf(given.tone, ToneCurve::kSRGB, "settings.tone");
  settings.depth = DepthOf(given.depth, "settings.depth");
  return settings;
}

}  // namespace

}  // namespace LmImagingLib::C

using namespace LmImagingLib;
using namespace LmImagingLib::C;

LmiCode lmiConvert(const LmiImage* source, const LmiImage* destination, const LmiOptions* options) {
  return Call([&] {
    const LmiOptions given = KnownOrDefault(options, "options");
    const Executor executor = ExecutorOf(given);
    auto known = CommonOptions<ConvertOptions>(given, executor);
    known.depth = DepthOf(given.depth, "options.depth");
    if (given.filter != nullptr) known.filter = &given.filter->filter;
    return ConvertImage(C::ViewOf(source, "source"), C::ViewOf(destination, "destination"), known);
  });
}

LmiCode lmiCreateDevelopment(const LmiDevelopmentSettings* settings, LmiDevelopment** development) {
  return Call([&] {
    RequirePointer(development, "development");
    Development made;
    ConversionResult result = Development::Make(SettingsOf(KnownOrDefault(settings, "settings")), made);
    if (result.IsOK()) *development = new LmiDevelopment{made};
    return result;
  });
}

void lmiFreeDevelopment(LmiDevelopment* development) { delete development; }

LmiCode lmiDevelop(const LmiDevelopment* development, const LmiImage* source, const LmiImage* destination,
                   const LmiOptions* options) {
  return Call([&] {
    RequirePointer(development, "development");
    const LmiOptions given = KnownOrDefault(options, "options");
    if (given.filter != nullptr) Refuse("options.filter is not null; a development has its own gains and curve");
    if (given.depth != 0) {
      Refuse("options.depth is " + std::to_string(given.depth) + "; allowed: 0, for a development has its own depth");
    }
    const Executor executor = ExecutorOf(given);
    return Develop(development->development, C::ViewOf(source, "source"), C::ViewOf(destination, "destination"),
                   CommonOptions<DevelopOptions>(given, executor));
  });
}

LmiCode lmiToneAt(const LmiTone* tone, double light, double* value) {
  return Call([&]() -> ConversionResult {
    RequirePointer(tone, "tone");
    RequirePointer(value, "value");
    if (tone->kind == LMI_TONE_DEFAULT) Refuse("tone.kind is LMI_TONE_DEFAULT (0); here it must be another one");
    if (std::isnan(light)) Refuse("light is not a number");
    *value = ToneOf(*tone, ToneCurve::kLinear, "tone").At(light);
    return {};
  });
}
