#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace LmTool {

/// Parses a whole text as one number.
template <class Number>
bool ParseNumber(const std::string& text, Number& value) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end;
}

/// A number of decimal digits, or of hexadecimal ones after 0x; empty if the text is no number.
std::optional<std::uint64_t> ParseWhole(const std::string& text);

/// The shortest text that `ParseNumber` takes back.
std::string ShortText(double number);

/// The parts of a text between separators.
std::vector<std::string> Split(const std::string& text, char separator);

}  // namespace LmTool
