# Debian's emscripten. What it builds are modules for JavaScript, which bindings/wasm loads.
set(CMAKE_SYSTEM_NAME Generic)  # CMake's own description of the system would come from emscripten's folder
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(CMAKE_CXX_COMPILER em++)
set(CMAKE_AR emar CACHE FILEPATH "")
set(CMAKE_RANLIB emranlib CACHE FILEPATH "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)  # what em++ links by default is two files

# emscripten's optimiser has been seen to hang; a step takes seconds.
set(CMAKE_CXX_COMPILER_LAUNCHER timeout 300 CACHE STRING "")
set(CMAKE_CXX_LINKER_LAUNCHER timeout 300 CACHE STRING "")

# Exceptions of WebAssembly itself: no JavaScript takes part in a throw.
set(CMAKE_CXX_FLAGS_INIT "-fwasm-exceptions")
