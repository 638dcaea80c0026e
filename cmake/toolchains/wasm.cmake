# WebAssembly with its vectors and with exceptions, by Debian's emscripten; programs run under Node. Without that option
# of Node's, emscripten's programs take its own way of loading files for the browser's.
set(ENV{NODE_PATH} /usr/share/nodejs)
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -fexceptions")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fexceptions -sALLOW_MEMORY_GROWTH -sEXIT_RUNTIME -sNODERAWFS")
set(CMAKE_CROSSCOMPILING_EMULATOR node;--no-experimental-fetch)
