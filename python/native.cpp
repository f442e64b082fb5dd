// The compiled half of the Python module: the registry's lists, and conversion between buffers. What arguments mean and
// which shapes arrays have is told in lmimaging/*.py.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <array>
#include <chrono>
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

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/LmImagingLib.h"
#include "LmImagingLib/PFNC.h"
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

// Gains and offsets of red, green and blue.
using Balance = std::pair<std::array<double, 3>, std::array<unsigned short, 3>>;

using Size = std::pair<unsigned long, unsigned long>;  // width and height

// A line size of 0 stands for lines without padding.
void Convert(const PixelTypeID& from, const py::buffer& source, std::size_t sourceLineSize, const PixelTypeID& to,
             const py::buffer& destination, std::size_t destinationLineSize, const Size& size, const Size& newSize,
             unsigned long flags, const std::pair<unsigned long, unsigned long>& lines,
             const std::optional<Balance>& balance, bool fullDepth) {
  // Requested buffers keep their memory until they are given back.
  const py::buffer_info in = source.request();
  const py::buffer_info out = destination.request(true);
  const ConstImageView sourceView{from, in.ptr, Extent(in), size.first, size.second, sourceLineSize};
  const ImageView destinationView{to, out.ptr, Extent(out), newSize.first, newSize.second, destinationLineSize};

  ConversionResult converted;
  WithoutInterpreterLock([&] {
    std::optional<RGBFilter> filter;
    if (balance) {
      const auto& [gains, offset] = *balance;
      filter.emplace(8);  // offsets are in 8-bit steps; conversions derive tables of other depths
      filter->SetMultipliers(gains[0], gains[1], gains[2], offset[0], offset[1], offset[2]);
    }
    ConvertOptions options;
    options.filter = filter ? &*filter : nullptr;
    options.flags = flags;
    options.depth = fullDepth ? ConversionDepth::kFull : ConversionDepth::kEightBits;
    std::tie(options.firstLine, options.lines) = lines;
    converted = ConvertImage(sourceView, destinationView, options);
  });
  if (!converted.IsOK()) throw py::value_error(converted.message);
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
  module.def("required_size", [](const PixelTypeID& type, unsigned long width, unsigned long height) {
    return RequiredSize(type, width, height);
  });
  module.def("convert", &Convert);
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
