# The rooms that stand on the toolkit: the services, and what is around them.

set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON) # the tests and the benchmarks link them too
find_package(PkgConfig REQUIRED)

# adiciona_camada(<target> <folder>): one static library of the sources in a folder of the directory that calls it.
function(adiciona_camada alvo pasta)
    file(GLOB fontes CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${pasta}/*.cpp)
    add_library(${alvo} STATIC ${fontes})
    target_include_directories(${alvo} PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${alvo} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)
endfunction()
