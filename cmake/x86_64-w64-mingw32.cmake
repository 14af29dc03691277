set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(maquina x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
