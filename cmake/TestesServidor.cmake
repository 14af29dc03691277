# The tests of the server: tests/server/*_test.cpp are one program, which starts servers on the loopback.
file(GLOB fontes_servidor CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/server/*_test.cpp)
add_library(servidor_de_teste STATIC
    ${PROJECT_SOURCE_DIR}/tests/server/CertificadoDeTeste.cpp
    ${PROJECT_SOURCE_DIR}/tests/server/Pedidos.cpp
    ${PROJECT_SOURCE_DIR}/tests/server/ServidorDeTeste.cpp)
target_link_libraries(servidor_de_teste PUBLIC servidor registro_de_teste)

add_executable(teste_servidor ${fontes_servidor} ${PROJECT_SOURCE_DIR}/tests/services/ServicosPrincipal.cpp)
target_link_libraries(teste_servidor PRIVATE servidor_de_teste OpenSSL::SSL OpenSSL::Crypto GTest::gtest)
gtest_discover_tests(teste_servidor
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_FILTER "-*Postgres*"
    TEST_PREFIX "servidor."
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})

# On the networked engine: what it alone can do, and what the server does of the registry there, in the working role.
set(no_banco
    *Postgres* DoisServidoresTeste.* DireitosTeste.*
    ServidorTeste.Apresenta_OurContract_SaysWhichRegistryThisIs
    ServidorTeste.Entra_RightAndWrongPassword_KeyOrReason
    ServidorTeste.Entra_WrongPasswordsOfAName_ThatNameWaitsAndOthersDoNot
    ServidorTeste.Grava_ThenReads_RecordIsThereWithItsMark
    ServidorTeste.Grava_SameNumberAgain_DoneOnceAndAnsweredAsTheFirstTime
    ServidorTeste.Documento_StoredInPieces_ReadWholeAndFromTheMiddle
    ServidorTeste.Replica_AfterANumber_OnlyWhatChangedSince
    ServidorTeste.Confere_SoundRegistry_WholeAndHeadIsSigned
    ServidorTeste.Termina_OperationUnderWay_EndsAsItShould
    ServidorTeste.Chama_TooMuchAtATime_OcupadoAtOnceAndTheRestIsDone)
list(JOIN no_banco ":" no_banco)
gtest_discover_tests(teste_servidor
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_FILTER "${no_banco}"
    TEST_LIST testes_servidor_pg
    TEST_PREFIX "servidor_pg."
    PROPERTIES ENVIRONMENT MOTOR_DE_TESTE=postgres FIXTURES_REQUIRED aglomerado
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
