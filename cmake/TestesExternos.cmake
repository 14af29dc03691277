# The programs that stand outside of the component and know nothing of it but its identifiers: tests/windows/externo,
# tests/windows/scripts and tests/windows/hostis, and the examples of the guide for developers. They write to the layer's
# registry and have its keyboard and mouse for themselves, so each of them runs alone. Their pictures and figures go to
# the build folder.
set(pasta_figuras ${PROJECT_BINARY_DIR}/figuras)
file(MAKE_DIRECTORY ${pasta_figuras})

file(GLOB fontes_externo CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/tests/windows/externo/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/windows/hostis/*.cpp
    ${PROJECT_SOURCE_DIR}/tests/windows/scripts/*.cpp)
add_executable(teste_externo ${fontes_externo} ${PROJECT_SOURCE_DIR}/docs/exemplos/windows/selecao.cpp)
target_include_directories(teste_externo PRIVATE ${PROJECT_SOURCE_DIR})
# The example in C++ has the interfaces from their type library.
add_dependencies(teste_externo biblioteca_de_tipos)
target_include_directories(teste_externo SYSTEM PRIVATE ${pasta_gerados})
target_link_libraries(teste_externo PRIVATE
    GTest::gtest_main comctl32 oleaut32 ole32 uuid gdi32 user32 advapi32 psapi)
if(TARGET ZTAVOREQUIP)
    add_dependencies(teste_externo ZTAVOREQUIP)
endif()
# Loading and unloading needs neither registry nor keyboard; the thousand windows need both, but no time that is their
# own. These two take longer than all the others together, and go beside what else there is, from the beginning.
set(cargas HostisTeste.LoadedAndUnloaded*)
set(janelas HostisTeste.WindowsOpenedUsedAndClosed*)
foreach(quais "${cargas}" "${janelas}" "-${cargas}:${janelas}")
    set(propriedades FIXTURES_REQUIRED camada ENVIRONMENT FIGURAS=Z:${pasta_figuras})
    if(quais MATCHES "^-")
        list(APPEND propriedades RUN_SERIAL TRUE)
    else()
        list(APPEND propriedades COST 900 TIMEOUT 900 ENVIRONMENT_MODIFICATION PRAZO=set:880)
        if(quais STREQUAL janelas)
            list(APPEND propriedades RESOURCE_LOCK teclado)
        endif()
    endif()
    gtest_discover_tests(teste_externo
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES
        TEST_FILTER "${quais}"
        TEST_PREFIX windows.externo.
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        PROPERTIES ${propriedades})
endforeach()

# What a late-bound call costs.
if(TARGET hospedeiro_windows)
    add_executable(ChamadaTardia_bench ${PROJECT_SOURCE_DIR}/bench/windows/ChamadaTardia_bench.cpp)
    target_link_libraries(ChamadaTardia_bench PRIVATE hospedeiro_windows tela_windows automacao modulo tela controls host)
    add_test(NAME windows.bancada.ChamadaTardia COMMAND ChamadaTardia_bench)
    set_tests_properties(windows.bancada.ChamadaTardia PROPERTIES FIXTURES_REQUIRED camada RUN_SERIAL TRUE)
endif()
