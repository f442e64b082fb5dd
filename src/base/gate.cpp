#include "LmBaseLib/Gate.h"

namespace LmBaseLib {

Gate::Gate() = default;
Gate::~Gate() = default;

void Gate::Lock() { mMutex.lock(); }

void Gate::Unlock() { mMutex.unlock(); }

}  // namespace LmBaseLib
