#pragma once

#include "LmBaseLib/Export.h"

namespace LmBaseLib {

/// Something that a `LockScope` can hold.
class LM_EXPORT ILockable {
 public:
  virtual ~ILockable();

  /// Blocks until the calling thread holds the lock.
  virtual void Lock() = 0;
  /// Gives up one hold of the calling thread.
  virtual void Unlock() = 0;

 protected:
  ILockable() = default;
  /// A copy is a lock of its own.
  ILockable(const ILockable&) = default;
  /// Leaves both locks as they are held.
  ILockable& operator=(const ILockable&) = default;
};

}  // namespace LmBaseLib
