#pragma once

namespace LmBaseLib {

/// Whether the library's memory may be given back now that its last static objects are destroyed: it is being closed,
/// and the process goes on. At the end of the process other threads may still be converting.
bool IsBeingClosed();

}  // namespace LmBaseLib
