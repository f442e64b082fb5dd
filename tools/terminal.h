#pragma once

namespace LmTool {

/// Whether a person watches the error stream.
bool ErrorStreamIsTerminal();

}  // namespace LmTool
