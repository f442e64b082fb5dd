#include "commands/type_rows.h"

#include <iostream>

#include "LmImagingLib/PixelTypeFactory.h"
#include "camera_names.h"
#include "pixel_type_names.h"
#include "text_columns.h"

namespace LmTool {

using namespace LmImagingLib;

std::vector<TypeWithVariants> RowsOf(const std::vector<PixelTypeID>& types, bool all) {
  if (!all) return Folded(types);
  std::vector<TypeWithVariants> rows;
  rows.reserve(types.size());
  for (const PixelTypeID type : types) rows.push_back({type, {}});
  return rows;
}

std::string NameOfRow(const TypeWithVariants& row) {
  const std::string name = PixelTypeFactory::GetPixelTypeName(row.type);
  return row.variants.empty() ? name : name + " +" + std::to_string(row.variants.size());
}

std::size_t PrintTypes(const std::vector<PixelTypeID>& types, bool all,
                       const std::function<std::string(const PixelTypeID&)>& loss) {
  std::size_t omitted = 0;
  for (const TypeWithVariants& row : RowsOf(types, all)) {
    PrintRow(std::cout,
             {{"", 1}, {HexID(row.type), 10}, {NameOfRow(row), 23}, {CameraNames(row.type), 23}, {loss(row.type), 19}});
    omitted += row.variants.size();
  }
  return omitted;
}

void PrintOmitted(std::size_t omitted, const char* things) {
  if (omitted == 0) return;
  const std::string text = std::to_string(omitted) + ' ' + things +
                           " are left out: variants with their bits at the top of the word, of two fields, or of "
                           "several taps. A number such as +6 counts those of a type. --all lists them.";
  std::cout << '\n';
  for (const std::string& line : Wrapped(text, kTerminalColumns)) std::cout << line << '\n';
}

void AddAllOption(CLI::App& command, bool& all) {
  command.add_flag("--all", all, "List variants, too: bits at the top of the word, interlaced, by taps");
}

}  // namespace LmTool
