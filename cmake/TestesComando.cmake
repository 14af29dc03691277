# The tests of the program without windows: tests/comando/*.cpp are one program, which calls it from inside, on files and
# on servers of its own, and runs it as a program where the system has a part in what happens.
file(GLOB fontes_comando CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/comando/*.cpp)
add_executable(teste_comando ${fontes_comando} ${PROJECT_SOURCE_DIR}/tests/services/ServicosPrincipal.cpp)
target_link_libraries(teste_comando PRIVATE comando servidor registro_de_teste GTest::gtest)
set_property(SOURCE ${PROJECT_SOURCE_DIR}/tests/comando/programa_test.cpp
    PROPERTY COMPILE_DEFINITIONS "PROGRAMA=\"$<TARGET_FILE:registro>\"")
add_dependencies(teste_comando registro)
gtest_discover_tests(teste_comando
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_PREFIX "comando."
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
