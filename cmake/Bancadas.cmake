# The benchmarks. Every bench/*_bench.cpp is a program of its own on top of `medida`, which measures; `bancadas` builds
# them all. They are part of the plain build only where their figures mean something: in the release preset.

add_library(medida OBJECT ${PROJECT_SOURCE_DIR}/bench/Medida.cpp ${PROJECT_SOURCE_DIR}/bench/Memoria.cpp)
target_include_directories(medida PUBLIC ${PROJECT_SOURCE_DIR})

add_custom_target(bancadas)
file(GLOB fontes_bancadas CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/*_bench.cpp)
foreach(fonte IN LISTS fontes_bancadas)
    cmake_path(GET fonte STEM bancada)
    add_executable(${bancada} ${fonte})
    target_link_libraries(${bancada} PRIVATE medida modulo controls host)
    if(bancada STREQUAL "Servicos_bench")
        target_link_libraries(${bancada} PRIVATE registro_de_teste)
    endif()
    set_target_properties(${bancada} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
    add_dependencies(bancadas ${bancada})
    if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
        set_target_properties(${bancada} PROPERTIES EXCLUDE_FROM_ALL ON)
    endif()
endforeach()
if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    set_target_properties(medida PROPERTIES EXCLUDE_FROM_ALL ON)
endif()
