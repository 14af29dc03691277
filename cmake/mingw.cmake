# What the two toolchain files share: the distribution's compiler for Windows, given the name of its target in `maquina`.
# The flavour with POSIX threads: the test framework wants std::mutex.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${maquina}-g++-posix)
set(CMAKE_RC_COMPILER ${maquina}-windres)
set(CMAKE_OBJDUMP ${maquina}-objdump)
set(WIDL ${maquina}-widl)

set(CMAKE_FIND_ROOT_PATH /usr/${maquina})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
