# The tests of the services: tests/services/*_test.cpp are one program, which works on registries in files.
file(GLOB fontes_servicos CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/services/*_test.cpp)
if(fontes_servicos)
    add_library(registro_de_teste STATIC
        ${PROJECT_SOURCE_DIR}/tests/services/RegistroDeTeste.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/RegistroPovoado.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/DiscoDeTeste.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/Motor.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/MortePorPasso.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/PapelDeTrabalho.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/PastaDeTeste.cpp)
    target_link_libraries(registro_de_teste PUBLIC servicos PRIVATE PkgConfig::PQ)

    # The cluster of the networked database that all tests of one run share.
    add_executable(aglomerado_de_teste ${PROJECT_SOURCE_DIR}/tests/services/ajudante/Aglomerado.cpp)
    target_link_libraries(aglomerado_de_teste PRIVATE registro_de_teste)
    set_property(SOURCE ${PROJECT_SOURCE_DIR}/tests/services/Motor.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/ajudante/Aglomerado.cpp
        PROPERTY COMPILE_DEFINITIONS "ARQUIVO_DO_AGLOMERADO=\"${PROJECT_BINARY_DIR}/aglomerado_de_teste.pasta\"")
    add_test(NAME aglomerado.inicia COMMAND aglomerado_de_teste inicia)
    add_test(NAME aglomerado.encerra COMMAND aglomerado_de_teste encerra)
    set_tests_properties(aglomerado.inicia PROPERTIES FIXTURES_SETUP aglomerado)
    set_tests_properties(aglomerado.encerra PROPERTIES FIXTURES_CLEANUP aglomerado)

    # What the tests kill, and let loose on one registry.
    add_executable(ajudante_servicos ${PROJECT_SOURCE_DIR}/tests/services/ajudante/Principal.cpp)
    target_link_libraries(ajudante_servicos PRIVATE registro_de_teste)

    add_executable(teste_servicos ${fontes_servicos} ${PROJECT_SOURCE_DIR}/tests/services/ServicosPrincipal.cpp)
    target_link_libraries(teste_servicos PRIVATE suporte registro_de_teste GTest::gtest)
    set_property(SOURCE ${PROJECT_SOURCE_DIR}/tests/services/processos_test.cpp
        ${PROJECT_SOURCE_DIR}/tests/services/transporte_test.cpp
        PROPERTY COMPILE_DEFINITIONS "AJUDANTE=\"$<TARGET_FILE:ajudante_servicos>\"")
    add_dependencies(teste_servicos ajudante_servicos)
    # What is killed is seen by no sanitizer, and what lives on is tried without a death too.
    set(que_morrem "ServicosProcessos.Killed*:ServicosRestauracao.Faz_Killed*")
    gtest_discover_tests(teste_servicos
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES
        TEST_FILTER "-*Postgres*:${que_morrem}"
        TEST_PREFIX "servicos."
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
        gtest_discover_tests(teste_servicos
            DISCOVERY_MODE PRE_TEST
            DISCOVERY_TIMEOUT 60
            NO_PRETTY_VALUES
            TEST_FILTER "${que_morrem}"
            TEST_LIST testes_servicos_que_morrem
            TEST_PREFIX "servicos."
            PROPERTIES LABELS simples
            WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    endif()

    # The same program on the networked engine, without what could only be the same once more or is the file's alone:
    set(so_do_arquivo
        # what is in no database, and the cluster itself;
        Aglomerado.* CodigosTeste.* Corrente.* Esquema.* LeSenha.* LogradourosAntigosTeste.* ReferenciasTeste.*
        ServicosSenhas.* TabelaDeTextoTeste.* TextoBusca.*
        # the file as a file: its disk, its rights, its pages, heads and copies of it, programs that are killed while
        # they write it (Postgres* and PostgresCopias* try the same of a database);
        ServicosAbertura.* ServicosCabeca.* ServicosConferencia.* ServicosCopia.* ServicosDisco.* ServicosProcessos.*
        ServicosRestauracao.* ServicosDocumentos.Document_DamagedByTheDisk_*
        # its own schema, what brings it up to date from versions that the other one never had, its codes of errors;
        ServicosEsquema.* ServicosMigracao* ServicosBanco.Open_ANewFile_* ServicosBanco.Open_AnOlder*
        ServicosBanco.Open_WithAMigration* ServicosBanco.Open_WhatIsNo* ServicosBanco.Open_InADirectory*
        ServicosBanco.Connection_* ServicosBanco.Save_* ServicosBanco.Error_* ServicosBanco.Replacing_*
        ServicosBanco.TimeIsLimited_*
        # its own plan of a statement, and steps that its library counts.
        ServicosLogradouros.Lista_AsThePickersAsk_* ServicosReplica.OfOneChange_CostsTheSame*
        # And of the four registries of histories three: the fourth has every kind of step.
        HistoriasAoAcaso.*/1 HistoriasAoAcaso.*/2 HistoriasAoAcaso.*/3)
    list(JOIN so_do_arquivo ":" so_do_arquivo)
    set(no_banco "-${so_do_arquivo}")
    # The sanitizers have seen the services on the file: what is left for them is the other dialect.
    if(CMAKE_CXX_FLAGS MATCHES "-f(sanitize|profile)")
        set(no_banco "*Postgres*:PreparadaTeste.*:ServicosRepeticao.*:ServicosDocumentos.*:ServicosReplica.*-${so_do_arquivo}:*VigenciaNosDois*")
    endif()
    gtest_discover_tests(teste_servicos
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES
        TEST_FILTER "${no_banco}"
        TEST_LIST testes_servicos_pg
        TEST_PREFIX "servicos_pg."
        PROPERTIES ENVIRONMENT MOTOR_DE_TESTE=postgres FIXTURES_REQUIRED aglomerado LABELS simples
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
endif()
