#include "text_columns.h"

#include <algorithm>
#include <ostream>
#include <sstream>

namespace LmTool {

std::string Joined(const std::vector<std::string>& words, const char* separator) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) text += (i == 0 ? "" : separator) + words[i];
  return text;
}

std::vector<std::string> Wrapped(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    // A word that no line has room for is broken after a bar between alternatives.
    for (std::size_t bar; word.size() > width && (bar = word.rfind('|', width - 1)) != std::string::npos;) {
      lines.push_back(word.substr(0, bar + 1));
      word.erase(0, bar + 1);
    }
    if (lines.empty() || lines.back().size() + 1 + word.size() > width) {
      lines.push_back(word);
    } else {
      lines.back() += ' ' + word;
    }
  }
  return lines;
}

void PrintRow(std::ostream& out, const std::vector<Cell>& cells) {
  std::vector<std::vector<std::string>> columns;
  std::size_t height = 0;
  for (const Cell& cell : cells) {
    columns.push_back(Wrapped(cell.text, cell.width));
    height = std::max(height, columns.back().size());
  }
  for (std::size_t i = 0; i < height; ++i) {
    std::string line;
    std::size_t begin = 0;
    for (std::size_t column = 0; column < cells.size(); ++column) {
      const Cell& cell = cells[column];
      if (i < columns[column].size()) {
        const std::string& text = columns[column][i];
        const std::size_t gap = cell.atTheRight && text.size() < cell.width ? cell.width - text.size() : 0;
        line.resize(std::max(line.size(), begin + gap), ' ');
        line += text;
      }
      begin += cell.width + 1;
    }
    out << line << '\n';
  }
}

}  // namespace LmTool
