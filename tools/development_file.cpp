#include "development_file.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>

#include "error.h"
#include "file_io.h"
#include "words.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

using Json = nlohmann::ordered_json;  // as the rest of the tool has it

constexpr std::size_t kMostBytes = 1 << 20;

// A fault of a value. The message says what is allowed.
struct Fault {
  std::string allowed;
};

double NumberIn(const Json& value, double least, double most, const char* allowed) {
  if (!value.is_number()) throw Fault{allowed};
  const auto number = value.get<double>();
  if (!(number >= least && number <= most)) throw Fault{allowed};
  return number;
}

Triple TripleIn(const Json& value, double most, const char* allowed) {
  if (value.is_number()) {
    const double number = NumberIn(value, 0, most, allowed);
    return {number, number, number};
  }
  if (!value.is_array() || value.size() != 3) throw Fault{allowed};
  return {NumberIn(value[0], 0, most, allowed), NumberIn(value[1], 0, most, allowed),
          NumberIn(value[2], 0, most, allowed)};
}

void SetMatrix(const Json& value, DevelopmentFile& file) {
  constexpr const char* kAllowed = "three rows of three numbers, the absolute values of a row sum to 7 at most";
  if (!value.is_array() || value.size() != 3) throw Fault{kAllowed};
  for (std::size_t row = 0; row < 3; ++row) {
    if (!value[row].is_array() || value[row].size() != 3) throw Fault{kAllowed};
    double sum = 0;
    for (std::size_t column = 0; column < 3; ++column) {
      file.colors.matrix[3 * row + column] = NumberIn(value[row][column], -7, 7, kAllowed);
      sum += std::abs(file.colors.matrix[3 * row + column]);
    }
    if (sum > 7) throw Fault{kAllowed};
  }
}

void SetTone(const Json& value, DevelopmentFile& file) {
  const std::optional<ToneCurve> tone = ParseTone(value.is_string() ? value.get<std::string>() : value.dump());
  if (!tone) throw Fault{kTones};
  file.colors.tone = *tone;
}

void SetMethod(const Json& value, DevelopmentFile& file) {
  file.method = ParseMethod(value.is_string() ? value.get<std::string>() : std::string());
  if (!file.method) throw Fault{WordsOf(kDemosaics)};
}

void SetDefects(const Json& value, DevelopmentFile& file) {
  constexpr const char* kAllowed = "true, false, or a threshold of 1 to 65535 in steps of the samples";
  if (value.is_boolean()) {
    if (value.get<bool>()) file.colors.defects = 0;
  } else if (value.is_number_integer()) {
    file.colors.defects = static_cast<unsigned>(NumberIn(value, 1, 65535, kAllowed));
  } else {
    throw Fault{kAllowed};
  }
}

void SetDepth(const Json& value, DevelopmentFile& file) {
  if (value == "full") {
    file.depth = ConversionDepth::kFull;
  } else if (value == 8) {
    file.depth = ConversionDepth::kEightBits;
  } else {
    throw Fault{"\"full\" or 8"};
  }
}

struct Key {
  const char* name;
  void (*set)(const Json& value, DevelopmentFile& file);
};

constexpr Key kKeys[] = {
    {"black",
     [](const Json& value, DevelopmentFile& file) {
       file.colors.black = TripleIn(value, 65535, "a number, or three for red, green and blue, each 0 to 65535");
     }},
    {"defects", SetDefects},
    {"demosaic", SetMethod},
    {"depth", SetDepth},
    {"gains",
     [](const Json& value, DevelopmentFile& file) {
       file.colors.gain = TripleIn(value, 1000, "three numbers for red, green and blue, each 0 to 1000");
     }},
    {"matrix", SetMatrix},
    {"tone", SetTone},
};

std::string KeyNames() {
  std::string names;
  for (const Key& key : kKeys) names += (names.empty() ? "" : ", ") + std::string(key.name);
  return names;
}

}  // namespace

DevelopmentFile ReadDevelopmentFile(const std::string& argument, const std::filesystem::path& path) {
  const Bytes bytes = FileReader(argument, path).ReadUpTo(kMostBytes);
  const auto refuse = [&](const std::string& what) -> ToolError {
    return ToolError(argument, "'" + path.string() + "' " + what);
  };
  const Json json = Json::parse(bytes.begin(), bytes.end(), nullptr, false);
  if (!json.is_object()) throw refuse("is no JSON object; allowed: an object with any of the keys " + KeyNames());
  DevelopmentFile file;
  file.colors.develops = true;
  file.colors.tone = DevelopmentSettings{}.tone;
  for (const auto& item : json.items()) {
    const std::string& name = item.key();
    const auto* const key =
        std::find_if(std::begin(kKeys), std::end(kKeys), [&](const Key& entry) { return name == entry.name; });
    if (key == std::end(kKeys)) throw refuse("has the unknown key '" + name + "'; allowed: " + KeyNames());
    try {
      key->set(item.value(), file);
    } catch (const Fault& fault) {
      throw refuse("has the " + name + " " + item.value().dump() + "; allowed: " + fault.allowed);
    }
  }
  return file;
}

}  // namespace LmTool
