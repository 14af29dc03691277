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
    if(bancada STREQUAL "ConflitoDatas_bench")
        target_link_libraries(${bancada} PRIVATE suporte)
    endif()
    if(bancada STREQUAL "Lista_bench")
        target_link_libraries(${bancada} PRIVATE janelas)
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

# Many desks on one server. It measures programs in processes of their own; a short run of it is a test of the plain
# build, since nobody measures with the sanitizers.
if(NOT CMAKE_CXX_FLAGS MATCHES "-f(sanitize|profile)")
    file(GLOB fontes_bancada_servidor CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/servidor/*.cpp)
    add_executable(bancada_servidor ${fontes_bancada_servidor})
    target_link_libraries(bancada_servidor PRIVATE registro_de_teste rede PkgConfig::PQ)
    set_target_properties(bancada_servidor PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
    add_test(NAME bancada.servidor
        COMMAND bancada_servidor $<TARGET_FILE:registro-servidor> --fumaca --equipamentos 1000 --mesas 50 --segundos 5
                --memoria 5 --gravadas 300)
    set_property(TEST bancada.servidor PROPERTY LABELS simples)
endif()
add_test(NAME bancada.pais
    COMMAND sh -c "\"$0\" \"$1.json\" | diff \"$1.txt\" -" ${PROJECT_SOURCE_DIR}/bench/pais.py
            ${PROJECT_SOURCE_DIR}/tests/bench/pais)
# What the documents tell of the country is what the figures that were measured come to.
add_test(NAME bancada.pais_documentado
    COMMAND bash -c "diff <(\"$0\") <(sed -n '/^    partições /,/^    documentos/s/^    //p' \"$1\")"
            ${PROJECT_SOURCE_DIR}/bench/pais.py ${PROJECT_SOURCE_DIR}/docs/scale.md)
