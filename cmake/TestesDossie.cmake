# The tests of the dossier's room: tests/dossie/*.cpp are one program.
file(GLOB fontes_dossie CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/dossie/*.cpp)
add_executable(teste_dossie ${fontes_dossie})
target_link_libraries(teste_dossie PRIVATE dossie suporte registro_de_teste PkgConfig::QPDF Qt6::Pdf GTest::gtest)
target_compile_definitions(teste_dossie PRIVATE POINTERHOLDER_TRANSITION=4)
gtest_discover_tests(teste_dossie
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_PREFIX "dossie."
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
