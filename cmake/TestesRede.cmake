# The tests of the room between desks and server: tests/rede/*_test.cpp are one program, which talks to itself and, on
# this machine alone, to servers of its own.
file(GLOB fontes_rede CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/rede/*.cpp)
add_executable(teste_rede ${fontes_rede})
target_link_libraries(teste_rede PRIVATE rede servidor registro_de_teste GTest::gtest)
gtest_discover_tests(teste_rede
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_PREFIX "rede."
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})

# The server of the networked engine, in the working role.
gtest_discover_tests(teste_rede
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_FILTER "ServidorRealTeste.*:ExemploTeste.Asks_*"
    TEST_LIST testes_rede_pg
    TEST_PREFIX "rede_pg."
    PROPERTIES ENVIRONMENT MOTOR_DE_TESTE=postgres FIXTURES_REQUIRED aglomerado
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
