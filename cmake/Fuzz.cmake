# The fuzz targets. Every tests/fuzz/<target>_fuzz.cpp is a program fuzz_<target>. An ordinary build gives it a main that
# runs the kept inputs of tests/fuzz/corpus/<target>.hex, known to ctest as fuzz.<target>; the preset fuzz, which
# tests/fuzz/run builds, gives it the fuzzer instead. `fuzz` builds them all.

option(COM_LIBFUZZER "Link the fuzzer into the fuzz targets, instead of a main that runs the kept inputs" OFF)

# What the targets share.
add_library(entradas_fuzz OBJECT
    ${PROJECT_SOURCE_DIR}/tests/fuzz/Octetos.cpp
    ${PROJECT_SOURCE_DIR}/tests/fuzz/Propriedade.cpp
    ${PROJECT_SOURCE_DIR}/tests/fuzz/SessaoFuzz.cpp)
target_link_libraries(entradas_fuzz PUBLIC suporte)

# Targets of what the desk's services do.
set(alvos_de_servicos Codigos Conferencia ConteudoPdf Servidor)
# Of these, what the server does.
set(alvos_do_servidor Servidor)

add_custom_target(fuzz)
file(GLOB alvos_fuzz CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/*_fuzz.cpp)
foreach(fonte IN LISTS alvos_fuzz)
    cmake_path(GET fonte STEM alvo)
    string(REGEX REPLACE "_fuzz$" "" alvo ${alvo})
    add_executable(fuzz_${alvo} ${fonte})
    target_link_libraries(fuzz_${alvo} PRIVATE entradas_fuzz)
    if(alvo IN_LIST alvos_de_servicos)
        target_link_libraries(fuzz_${alvo} PRIVATE registro_de_teste)
    endif()
    if(alvo STREQUAL "Planilhas")
        target_link_libraries(fuzz_${alvo} PRIVATE planilhas PkgConfig::ZIP)
    endif()
    if(alvo IN_LIST alvos_do_servidor)
        target_link_libraries(fuzz_${alvo} PRIVATE servidor)
    endif()
    set_target_properties(fuzz_${alvo} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/alvos UNITY_BUILD OFF)
    add_dependencies(fuzz fuzz_${alvo})
    if(COM_LIBFUZZER)
        target_link_options(fuzz_${alvo} PRIVATE -fsanitize=fuzzer)
    else()
        target_sources(fuzz_${alvo} PRIVATE ${PROJECT_SOURCE_DIR}/tests/fuzz/Principal.cpp)
        add_test(NAME fuzz.${alvo} COMMAND fuzz_${alvo} tests/fuzz/corpus/${alvo}.hex
                 WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    endif()
endforeach()
