#pragma once

#include <string>

namespace LmTool {

/// Whether a person watches the error stream.
bool ErrorStreamIsTerminal();

/// A text, such as the name of a file, that a terminal takes for no command: control characters, and bytes that are no
/// UTF-8, are written as "\x1b". Everything else stays.
std::string Printable(const std::string& text);

}  // namespace LmTool
