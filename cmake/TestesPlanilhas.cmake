# The tests of the tables in files: tests/planilhas/*.cpp are one program.
file(GLOB fontes_planilhas CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/planilhas/*.cpp)
add_executable(teste_planilhas ${fontes_planilhas})
target_link_libraries(teste_planilhas PRIVATE planilhas medida host PkgConfig::ZIP GTest::gtest_main)
gtest_discover_tests(teste_planilhas
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_PREFIX "planilhas."
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
