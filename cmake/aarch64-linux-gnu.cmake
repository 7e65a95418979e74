# Debian's cross compiler for 64-bit Arm; what it builds runs under qemu-user.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)

# Static programs need no folder of target libraries at run time. The linker would warn of name lookups that
# GoogleTest can do over a network and that no test asks for.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-warnings")
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64)

# Headers and libraries of the building machine are none of the target's.
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
