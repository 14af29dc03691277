# The tests of the services: tests/services/*_test.cpp are one program, which works on registries in files.
file(GLOB fontes_servicos CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/services/*_test.cpp)
if(fontes_servicos)
    add_library(registro_de_teste STATIC
        ${PROJECT_SOURCE_DIR}/tests/services/RegistroDeTeste.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/RegistroPovoado.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/DiscoDeTeste.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/MortePorPasso.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/PastaDeTeste.cpp)
    target_link_libraries(registro_de_teste PUBLIC servicos)

    # What the tests kill, and let loose on one registry.
    add_executable(ajudante_servicos ${PROJECT_SOURCE_DIR}/tests/services/ajudante/Principal.cpp)
    target_link_libraries(ajudante_servicos PRIVATE registro_de_teste)

    add_executable(teste_servicos ${fontes_servicos} ${PROJECT_SOURCE_DIR}/tests/services/ServicosPrincipal.cpp)
    target_link_libraries(teste_servicos PRIVATE suporte registro_de_teste GTest::gtest)
    set_property(SOURCE ${PROJECT_SOURCE_DIR}/tests/services/processos_test.cpp
        PROPERTY COMPILE_DEFINITIONS "AJUDANTE=\"$<TARGET_FILE:ajudante_servicos>\"")
    add_dependencies(teste_servicos ajudante_servicos)
    gtest_discover_tests(teste_servicos
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES
        TEST_PREFIX "servicos."
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
endif()
