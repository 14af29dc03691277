# What the two toolchain files share: the distribution's compiler for Windows, given the name of its target in `maquina`.
# The flavour with the system's own threads: the library under the other one takes a slot of the process for each time that
# it is loaded, and gives none back.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${maquina}-g++-win32)
set(CMAKE_RC_COMPILER ${maquina}-windres)
set(CMAKE_OBJDUMP ${maquina}-objdump)
# What is linked needs nothing but what Windows has.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(WIDL ${maquina}-widl)

set(CMAKE_FIND_ROOT_PATH /usr/${maquina})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
