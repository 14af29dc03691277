set(CMAKE_SYSTEM_PROCESSOR i686)
set(maquina i686-w64-mingw32)
# Numbers as on 64 bits, without the longer ones of the old unit.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
