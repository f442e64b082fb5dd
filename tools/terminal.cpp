#include "terminal.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace LmTool {

namespace {

#ifdef _WIN32
constexpr bool kTextIsUtf8 = false;  // it is in a code page, where bytes from 0x80 are letters
#else
constexpr bool kTextIsUtf8 = true;
#endif

// The bytes of the character that the text begins with; 0 if it is a control character or no UTF-8.
std::size_t PrintableBytes(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0U; };
  const unsigned lead = byte(0);
  if (lead < 0x20 || lead == 0x7F) return 0;
  if (lead < 0x80 || !kTextIsUtf8) return 1;
  const std::size_t bytes = lead >> 5 == 0x6 ? 2 : lead >> 4 == 0xE ? 3 : lead >> 3 == 0x1E ? 4 : 0;
  if (bytes == 0) return 0;
  std::uint32_t code = lead & (0x7FU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if (byte(i) >> 6 != 0x2) return 0;
    code = code << 6 | (byte(i) & 0x3F);
  }
  constexpr std::uint32_t kLeast[] = {0xA0, 0x800, 0x10000};  // of 2, 3 and 4 bytes; controls end at 0x9F
  const bool surrogate = code >> 11 == 0x1B;
  return code >= kLeast[bytes - 2] && code <= 0x10FFFF && !surrogate ? bytes : 0;
}

}  // namespace

bool ErrorStreamIsTerminal() {
#ifdef _WIN32
  return _isatty(2) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

std::string Printable(const std::string& text) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string printable;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t bytes = PrintableBytes(std::string_view(text).substr(at));
    if (bytes != 0) {
      printable += text.substr(at, bytes);
      at += bytes;
      continue;
    }
    const auto byte = static_cast<std::uint8_t>(text[at++]);
    printable += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]};
  }
  return printable;
}

}  // namespace LmTool
