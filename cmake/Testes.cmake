# The test programs. tests/<room>/*.cpp becomes teste_<room>, for every room that has a *_test.cpp.
# tests/support is the library `suporte`, shared by all of them; tests/host_contract is the suite that every host
# must pass, `contrato_host`, of objects so that no linker drops a test that nobody names.

if(NOT WIN32)
    find_package(GTest REQUIRED)
endif()
include(GoogleTest)

# adiciona_teste(<room> <source>...): the program teste_<room>, its tests known to ctest as <room>.<suite>.<test>.
# Those of the Windows build are all of the part windows.
function(adiciona_teste sala)
    add_executable(teste_${sala} ${ARGN})
    target_link_libraries(teste_${sala} PRIVATE suporte modulo tela controls host GTest::gtest_main)
    set(parte ${sala})
    set(propriedades "")
    if(WIN32)
        # What the tests of the activation register is seen by everything else: they run alone.
        set(propriedades TEST_FILTER -AtivacaoTeste.* PROPERTIES FIXTURES_REQUIRED camada)
        if(sala STREQUAL "windows")
            target_link_libraries(teste_windows PRIVATE hospedeiro_windows tela_windows automacao)
            if(TARGET componente)
                target_link_libraries(teste_windows PRIVATE componente)
            endif()
            set(parte windows.nativo)
            # One window at a time has it; a thousand of them take their time.
            list(APPEND propriedades RESOURCE_LOCK teclado TIMEOUT 900 ENVIRONMENT_MODIFICATION PRAZO=set:880)
        else()
            target_link_libraries(teste_${sala} PRIVATE travessia)
            add_dependencies(teste_${sala} ZTVORLIB)
            set(parte windows.${sala})
        endif()
    endif()
    gtest_discover_tests(teste_${sala}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES
        TEST_PREFIX "${parte}."
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        ${propriedades})
endfunction()

file(GLOB fontes_suporte CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/support/*.cpp)
list(FILTER fontes_suporte EXCLUDE REGEX "_test\\.cpp$")
if(fontes_suporte)
    add_library(suporte STATIC ${fontes_suporte})
    target_link_libraries(suporte PUBLIC modulo tela controls host GTest::gtest)
else()
    add_library(suporte INTERFACE)
    target_link_libraries(suporte INTERFACE modulo tela controls host GTest::gtest)
endif()

file(GLOB fontes_contrato CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/host_contract/*.cpp)
if(fontes_contrato)
    add_library(contrato_host OBJECT ${fontes_contrato})
    target_link_libraries(contrato_host PUBLIC host GTest::gtest)
else()
    add_library(contrato_host INTERFACE)
endif()

if(WIN32)
    include(cmake/Travessia.cmake)
endif()

file(GLOB testes RELATIVE ${PROJECT_SOURCE_DIR}/tests CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/*/*_test.cpp)
list(TRANSFORM testes REPLACE "/.*" "" OUTPUT_VARIABLE salas)
list(REMOVE_DUPLICATES salas)
# The suite of the contract has no program of its own, and the tests of the rooms on the toolkit are their own affair.
list(REMOVE_ITEM salas host_contract desk planilhas services rede server comando mortes)
if(WIN32) # the guards are the build machine's, and the benchmarks its libraries'
    list(REMOVE_ITEM salas guarda bench)
else()
    list(REMOVE_ITEM salas windows)
endif()
foreach(sala IN LISTS salas)
    if(sala STREQUAL "support")
        file(GLOB fontes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/support/*_test.cpp)
        adiciona_teste(support ${fontes})
        target_link_libraries(teste_support PRIVATE contrato_host)
    else()
        file(GLOB fontes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${sala}/*.cpp)
        adiciona_teste(${sala} ${fontes})
    endif()
endforeach()

if(WIN32)
    adiciona_travessias()
    return()
endif()

# The guards are CMake's, so their tests run it.
target_compile_definitions(teste_guarda PRIVATE CMAKE_EXECUTAVEL="${CMAKE_COMMAND}")
if(TARGET teste_bench)
    target_link_libraries(teste_bench PRIVATE medida)
endif()

# The module, the controls and the screen room need nothing beyond what they know and the standard library:
# with every object of theirs in it, a program that links nothing else is whole.
# adiciona_fecho(<target> <known>...)
function(adiciona_fecho alvo)
    get_target_property(tipo ${alvo} TYPE)
    if(tipo STREQUAL "INTERFACE_LIBRARY") # headers alone, or nothing yet
        return()
    endif()
    add_executable(fecho_${alvo} EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/tests/guarda/fecho/Principal.cpp)
    target_link_libraries(fecho_${alvo} PRIVATE ${alvo} ${ARGN})
    list(JOIN ARGN "," conhecidos)
    set_property(TARGET fecho_${alvo} PROPERTY LINK_LIBRARY_OVERRIDE WHOLE_ARCHIVE,${alvo},${conhecidos})
    add_test(NAME guarda.fecho_${alvo}
        COMMAND ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target fecho_${alvo})
    # One build at a time in the one folder.
    set_property(TEST guarda.fecho_${alvo} PROPERTY RESOURCE_LOCK ninja)
endfunction()
adiciona_fecho(modulo host)
adiciona_fecho(controls host)
adiciona_fecho(tela controls host)
