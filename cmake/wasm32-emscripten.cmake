# WebAssembly by Emscripten, of Debian's package; programs built run under Node.js.
set(EMSCRIPTEN_ROOT_PATH /usr/share/emscripten)
include(${EMSCRIPTEN_ROOT_PATH}/cmake/Modules/Platform/Emscripten.cmake)
# Exceptions by the engine's own instructions, which every browser has that has vectors.
set(CMAKE_CXX_FLAGS_INIT -fwasm-exceptions)
