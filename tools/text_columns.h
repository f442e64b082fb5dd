#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace LmTool {

/// Characters of a line of a terminal.
constexpr std::size_t kTerminalColumns = 80;

/// Words with a separator between them.
std::string Joined(const std::vector<std::string>& words, const char* separator);

/// The text in lines of at most `width` characters, broken between words. A longer word is
/// broken between alternatives such as png|bmp, or else has a line of its own.
std::vector<std::string> Wrapped(const std::string& text, std::size_t width);

/// A cell of a table.
struct Cell {
  std::string text;
  std::size_t width;        ///< of its column, in characters; the text is wrapped to it
  bool atTheRight = false;  ///< whether the text ends where the column ends
};

/// Prints a row of a table, in as many lines as its longest cell needs, with a space between cells.
void PrintRow(std::ostream& out, const std::vector<Cell>& cells);

}  // namespace LmTool
