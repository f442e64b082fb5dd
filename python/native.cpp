// The compiled half of the Python module: the registry's lists, and conversion between buffers. What arguments mean and
// which shapes arrays have is told in lmimaging/*.py.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "LmImagingLib/Development.h"
#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/LmImagingLib.h"
#include "LmImagingLib/PFNC.h"
#include "camera_names.h"
#include "error.h"
#include "named_type.h"
#include "pixel_type_names.h"

namespace py = pybind11;
using namespace LmImagingLib;

namespace {

constexpr std::pair<const char*, unsigned long> kBayerLayouts[] = {{"GR", ConversionFlags::kBayerGR},
                                                                   {"RG", ConversionFlags::kBayerRG},
                                                                   {"GB", ConversionFlags::kBayerGB},
                                                                   {"BG", ConversionFlags::kBayerBG}};

constexpr std::pair<const char*, unsigned long> kDemosaics[] = {{"block", ConversionFlags::kNone},
                                                                {"bilinear", ConversionFlags::kBilinear},
                                                                {"mhc", ConversionFlags::kGradientCorrected},
                                                                {"adaptive", ConversionFlags::kAdaptive},
                                                                {"half", ConversionFlags::kHalfSize}};

constexpr std::pair<const char*, ToneCurve::Kind> kTones[] = {
    {"linear", ToneCurve::kLinear}, {"srgb", ToneCurve::kSRGB}, {"bt709", ToneCurve::kBT709}};

// The bytes between the first and the last element of an array, whatever lies between its rows.
std::size_t Extent(const py::buffer_info& array) {
  std::size_t bytes = static_cast<std::size_t>(array.itemsize);
  for (std::size_t axis = 0; axis < array.shape.size(); ++axis) {
    if (array.shape[axis] == 0) return 0;
    if (array.strides[axis] < 0) throw py::value_error("source and out: strides must not be negative");
    bytes += static_cast<std::size_t>((array.shape[axis] - 1) * array.strides[axis]);
  }
  return bytes;
}

std::vector<std::string> PFNCNames(const PixelTypeID& id) {
  std::vector<std::string> names;
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) {
    if (format->type == id) names.emplace_back(format->name);
  }
  return names;
}

py::tuple Describe(const PixelTypeID& id) {
  const PixelType& type = *PixelTypeFactory::FindPixelType(id);
  const auto has = [&](const PixelTypeID& flag) { return (id & flag) != 0; };
  return py::make_tuple(id, PixelTypeFactory::GetPixelTypeName(id), LmTool::ClassName(id),
                        py::tuple(py::cast(PFNCNames(id))), type.GetPixelBitSize(), type.GetPixelByteSize(),
                        type.IsBayerPattern(), has(kNormalizedFlag), has(kInterlacedFlag), has(kPackedFlag),
                        has(kPlanarFlag));
}

std::vector<std::pair<PixelTypeID, PixelTypeID>> ConverterIDs() {
  std::vector<std::pair<PixelTypeID, PixelTypeID>> pairs;
  PixelTypeID from = 0;
  PixelTypeID to = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, from, to); ++i) pairs.emplace_back(from, to);
  return pairs;
}

// A type, the name of the mosaic's layout if the type was named with it, else "", and the flags of a YCbCr name.
using Found = std::tuple<PixelTypeID, std::string, unsigned long>;

Found FoundType(const PixelTypeID& id, unsigned long flags) {
  for (const auto& [name, flag] : kBayerLayouts) {
    if (flags == flag) return {id, name, 0};
  }
  return {id, "", flags};
}

Found FindNumber(const std::string& argument, const PixelTypeID& number) {
  if (PixelTypeFactory::HasPixelType(number)) return {number, "", 0};
  const PFNCResult found = FindPFNC(static_cast<std::uint32_t>(number));
  if (found && number == found.format->code) return FoundType(found.format->type, found.format->flags);
  std::string message = argument + ": no pixel type has the id or the PFNC code " + LmTool::HexID(number);
  if (found.reason != nullptr) message += std::string("; ") + found.reason;
  throw py::value_error(message + "; allowed: an id of types(), or the PFNC code of one of them");
}

Found FindName(const std::string& argument, const std::string& text) {
  try {
    const LmTool::NamedType found = LmTool::FindNamedType(argument, text);
    return FoundType(found.id, found.mosaic | found.yuv);
  } catch (const LmTool::ToolError& error) {
    throw py::value_error(error.what());
  }
}

void TakeInterpreterLock(PyThreadState* state) {
#ifdef __GLIBCXX__
  // An interpreter that has ended ends each thread that asks for its lock, by pthread_exit. That unwinds the stack: a
  // destructor on the way would abort the process, and others would release Python objects without the lock. So the
  // thread waits here for the end of the process.
  try {
    PyEval_RestoreThread(state);
  } catch (const abi::__forced_unwind&) {
    for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
  }
#else
  PyEval_RestoreThread(state);
#endif
}

// Other threads run Python code while this one works.
template <class Work>
void WithoutInterpreterLock(const Work& work) {
  PyThreadState* const state = PyEval_SaveThread();
  std::exception_ptr fault;
  try {
    work();
  } catch (...) {
    fault = std::current_exception();
  }
  TakeInterpreterLock(state);
  if (fault) std::rethrow_exception(fault);
}

using Values = std::array<double, 3>;                  // of red, green and blue
using Tone = std::pair<int, double>;                   // the kind of a curve, and its gamma
using Size = std::pair<unsigned long, unsigned long>;  // width and height

// What tables do to colours: black level in steps of the samples, gains, offsets in 8-bit steps, and tone.
using Curve = std::tuple<Values, Values, Values, Tone>;

ToneCurve CurveOf(const Tone& tone) { return {static_cast<ToneCurve::Kind>(tone.first), tone.second}; }
RGBValues ValuesOf(const Values& values) { return {values[0], values[1], values[2]}; }

// Gains and offsets alone are multipliers, which are truncated; curves are rounded.
void SetTables(RGBFilter& filter, const Curve& curve, unsigned depth) {
  const auto& [black, gains, offset, tone] = curve;
  const double step = std::ldexp(1.0, 8 - static_cast<int>(depth));
  const bool isCurve =
      black != Values{} || tone.first != ToneCurve::kLinear || *std::min_element(offset.begin(), offset.end()) < 0;
  if (isCurve) {
    filter.SetCurve({black[0] * step, gains[0], offset[0]}, {black[1] * step, gains[1], offset[1]},
                    {black[2] * step, gains[2], offset[2]}, CurveOf(tone));
  } else {
    filter.SetMultipliers(gains[0], gains[1], gains[2], static_cast<unsigned short>(offset[0]),
                          static_cast<unsigned short>(offset[1]), static_cast<unsigned short>(offset[2]));
  }
}

// A buffer, the bytes from line to line (0 without padding), and width and height.
using Image = std::tuple<py::buffer, std::size_t, Size>;

// A view of a buffer. Requested buffers keep their memory until they are given back.
template <class View>
struct Held {
  Held(const PixelTypeID& type, const Image& image, bool writable)
      : buffer(std::get<0>(image).request(writable)), view{type,
                                                           buffer.ptr,
                                                           Extent(buffer),
                                                           std::get<2>(image).first,
                                                           std::get<2>(image).second,
                                                           std::get<1>(image)} {}

  const py::buffer_info buffer;
  const View view;
};
using Source = Held<ConstImageView>;
using Destination = Held<ImageView>;

void Check(const ConversionResult& result) {
  if (!result.IsOK()) throw py::value_error(result.message);
}

void Convert(const PixelTypeID& from, const Image& source, const PixelTypeID& to, const Image& destination,
             unsigned long flags, const std::pair<unsigned long, unsigned long>& lines,
             const std::optional<Curve>& curve, bool fullDepth, unsigned threads) {
  const Source in(from, source, false);
  const Destination out(to, destination, true);
  ConversionResult converted;
  WithoutInterpreterLock([&] {
    std::optional<RGBFilter> filter;
    if (curve) {
      filter.emplace(8);  // offsets are in 8-bit steps; conversions derive tables of other depths
      SetTables(*filter, *curve, SampleDepth(from).value_or(8));
    }
    ConvertOptions options;
    options.filter = filter ? &*filter : nullptr;
    options.flags = flags;
    options.depth = fullDepth ? ConversionDepth::kFull : ConversionDepth::kEightBits;
    options.threads = threads;
    std::tie(options.firstLine, options.lines) = lines;
    converted = ConvertImage(in.view, out.view, options);
  });
  Check(converted);
}

Development MakeDevelopment(const std::optional<unsigned>& defects, const Values& black, const Values& gains,
                            unsigned long method, const ColorMatrix& matrix, const Tone& tone, bool fullDepth) {
  DevelopmentSettings settings;
  settings.correctsDefects = defects.has_value();
  settings.defectThreshold = defects.value_or(0);
  settings.black = ValuesOf(black);
  settings.gains = ValuesOf(gains);
  settings.method = method;
  settings.matrix = matrix;
  settings.tone = CurveOf(tone);
  settings.depth = fullDepth ? ConversionDepth::kFull : ConversionDepth::kEightBits;
  Development development;
  Check(Development::Make(settings, development));
  return development;
}

void DevelopImage(const Development& development, const PixelTypeID& from, const Image& source, const PixelTypeID& to,
                  const Image& destination, unsigned long flags, const std::pair<unsigned long, unsigned long>& lines,
                  unsigned threads) {
  const Source in(from, source, false);
  const Destination out(to, destination, true);
  DevelopOptions options;
  options.flags = flags;
  options.threads = threads;
  std::tie(options.firstLine, options.lines) = lines;
  ConversionResult developed;
  WithoutInterpreterLock([&] { developed = Develop(development, in.view, out.view, options); });
  Check(developed);
}

// Gains, cells, usable ones, and why there are no gains.
py::tuple Estimate(const PixelTypeID& from, const Image& source, unsigned long flags, int method,
                   const std::array<unsigned long, 4>& rectangle, const Values& black) {
  const Source in(from, source, false);
  WhiteBalanceOptions options;
  options.method = static_cast<WhiteBalanceOptions::Method>(method);
  std::tie(options.x, options.y, options.width, options.height) =
      std::tie(rectangle[0], rectangle[1], rectangle[2], rectangle[3]);
  options.flags = flags;
  options.black = ValuesOf(black);
  WhiteBalance found;
  WithoutInterpreterLock([&] { found = EstimateWhiteBalance(in.view, options); });
  if (!found.result.IsOK()) throw py::value_error(found.message);
  return py::make_tuple(py::make_tuple(found.gains.red, found.gains.green, found.gains.blue), found.cells,
                        found.usableCells, found.message);
}

}  // namespace

PYBIND11_MODULE(_native, module) {
  if (!RegisterExtendedFormats().IsOK()) throw std::bad_alloc();
  module.def("type_ids", &LmTool::RegisteredTypes);
  module.def("describe", &Describe);
  module.def("find_number", &FindNumber);
  module.def("find_name", &FindName);
  module.def("converter_ids", &ConverterIDs);
  module.def("has_converter", &PixelTypeFactory::HasConverter);
  module.def("destinations", [](const PixelTypeID& from) {
    return LmTool::DestinationsInWords(from, "lmimaging.converters(" + LmTool::HexID(from) + ")");
  });
  module.def("required_size", [](const PixelTypeID& type, unsigned long width, unsigned long height) {
    return RequiredSize(type, width, height);
  });
  module.def("convert", &Convert);
  py::class_<Development>(module, "Development").def(py::init(&MakeDevelopment)).def("develop", &DevelopImage);
  module.def("estimate_white_balance", &Estimate);
  py::dict tones;
  for (const auto& [name, kind] : kTones) tones[name] = static_cast<int>(kind);
  module.attr("TONES") = tones;
  module.attr("GAMMA") = static_cast<int>(ToneCurve::kGamma);
  py::dict bayer;
  for (const auto& [name, flag] : kBayerLayouts) bayer[name] = flag;
  module.attr("BAYER") = bayer;
  py::dict demosaics;
  for (const auto& [name, flag] : kDemosaics) demosaics[name] = flag;
  module.attr("DEMOSAICS") = demosaics;
  module.attr("FILTER_FIRST") = ConversionFlags::kFilterFirst;
  module.attr("FULL_RANGE") = ConversionFlags::kFullRange;
  module.attr("BT709") = ConversionFlags::kBT709;
  module.attr("FIELD_ORDER") = ConversionFlags::kFieldOrder;
}
