#include "LmBaseLib/ILockable.h"

namespace LmBaseLib {

ILockable::~ILockable() = default;

}  // namespace LmBaseLib
