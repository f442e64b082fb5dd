// The functions that the page calls. Texts are valid until the next call; an error is the text of lm_error.
#include <emscripten.h>

#include <exception>
#include <string>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/Version.h"
#include "describe.h"
#include "develop.h"
#include "encode/encode_scene.h"
#include "guess.h"

namespace {

using namespace LmPage;

std::vector<std::uint8_t> sFile;  // a page has one thread, and shows one file
RawFrame sFrame{};
LmImagingLib::DevelopmentSettings sSettings;
Picture sPicture;
std::string sText, sError;

template <class Job>
const char* Text(Job&& job) {
  sError.clear();
  try {
    sText = job();
  } catch (const std::exception& error) {
    sError = error.what();
    sText.clear();
  }
  return sText.c_str();
}

}  // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE void lm_start() { LmImagingLib::RegisterExtendedFormats(); }
EMSCRIPTEN_KEEPALIVE const char* lm_error() { return sError.c_str(); }
EMSCRIPTEN_KEEPALIVE const char* lm_version() { return LmImagingLib::GetVersion(); }
EMSCRIPTEN_KEEPALIVE const char* lm_formats() { return Text(ListFormats); }
EMSCRIPTEN_KEEPALIVE const char* lm_bits(unsigned type) {
  return Text([=] { return ListBits(type); });
}

/// Makes room for a file, which the page then fills.
EMSCRIPTEN_KEEPALIVE std::uint8_t* lm_file(std::size_t size) {
  sPicture = {};
  sFile.clear();
  sFile.shrink_to_fit();
  sFile.resize(size);
  return sFile.data();
}

/// Makes the test scene the file; returns its bytes.
EMSCRIPTEN_KEEPALIVE std::size_t lm_scene(unsigned type, unsigned flags, unsigned width, unsigned height) {
  sFile = LmTool::EncodeScene(type, {width, height}, flags).bytes;
  return sFile.size();
}
EMSCRIPTEN_KEEPALIVE const std::uint8_t* lm_file_data() { return sFile.data(); }

/// Width and height are 0 if they are unknown.
EMSCRIPTEN_KEEPALIVE const char* lm_guess(std::size_t width, std::size_t height) {
  return Text([=] {
    GuessOptions options;
    options.width = width;
    options.height = height;
    return List(GuessReadings({sFile.data(), sFile.size()}, options));
  });
}

/// The bytes that a frame needs; 0 if there is no such frame.
EMSCRIPTEN_KEEPALIVE std::size_t lm_required(unsigned type, unsigned width, unsigned height, std::size_t lineSize) {
  return LmImagingLib::RequiredSize(type, width, height, lineSize).value_or(0);
}

EMSCRIPTEN_KEEPALIVE void lm_read(unsigned type, unsigned flags, std::size_t width, std::size_t height,
                                  std::size_t offset, std::size_t lineSize) {
  offset = offset < sFile.size() ? offset : sFile.size();
  sFrame = {{sFile.data() + offset, sFile.size() - offset}, {type, flags, width, height}, lineSize};
}

/// @param tone  a `ToneCurve::Kind`
EMSCRIPTEN_KEEPALIVE void lm_look(unsigned method, double black, double red, double green, double blue, int tone,
                                  double gamma) {
  sSettings.method = method;
  sSettings.black = {black, black, black};
  sSettings.gains = {red, green, blue};
  sSettings.tone = {static_cast<LmImagingLib::ToneCurve::Kind>(tone), gamma};
}

/// Returns the pixels, or null; lm_width and lm_height are the size.
EMSCRIPTEN_KEEPALIVE const std::uint8_t* lm_develop() {
  Text([] {
    sPicture = {};
    sPicture = DevelopPicture(sFrame, sSettings);
    return std::string();
  });
  return sError.empty() ? sPicture.pixels.data() : nullptr;
}
EMSCRIPTEN_KEEPALIVE std::size_t lm_width() { return sPicture.width; }
EMSCRIPTEN_KEEPALIVE std::size_t lm_height() { return sPicture.height; }

/// The gains that make the surroundings of a pixel gray, between tabs; the frame for a radius of 0.
EMSCRIPTEN_KEEPALIVE const char* lm_balance(std::size_t x, std::size_t y, std::size_t radius) {
  return Text([=] {
    const LmImagingLib::RGBValues gains = BalanceAt(sFrame, sSettings.black, x, y, radius);
    return std::to_string(gains.red) + '\t' + std::to_string(gains.green) + '\t' + std::to_string(gains.blue);
  });
}

EMSCRIPTEN_KEEPALIVE const char* lm_samples(std::size_t x, std::size_t y) {
  return Text([=] { return ListSamples(sFrame, x, y); });
}
EMSCRIPTEN_KEEPALIVE const char* lm_histogram() {
  return Text([] { return ListHistogram(sFrame); });
}
}
