#include "numbers.h"

namespace LmTool {

std::optional<std::uint64_t> ParseWhole(const std::string& text) {
  const bool hex = text.rfind("0x", 0) == 0 || text.rfind("0X", 0) == 0;
  const char* const end = text.data() + text.size();
  std::uint64_t value = 0;
  const auto [stop, error] = std::from_chars(text.data() + (hex ? 2 : 0), end, value, hex ? 16 : 10);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

std::string ShortText(double number) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(separator, begin)) != std::string::npos; begin = end + 1) {
    parts.push_back(text.substr(begin, end - begin));
  }
  parts.push_back(text.substr(begin));
  return parts;
}

}  // namespace LmTool
