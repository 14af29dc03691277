# The sanitizers see nothing in the death of another process, and what lives on is tested under them by the rooms' own
# tests: the rounds are of the plain program.
if(CMAKE_CXX_FLAGS MATCHES "-f(sanitize|profile)")
    message(STATUS "mortes: left out, what is killed is seen by no sanitizer and does not write what it reached")
    return()
endif()

# Deaths of machines, programs and connections while many save: rounds, and the tests of what judges them.
add_library(mortes_comum STATIC
    ${PROJECT_SOURCE_DIR}/tests/mortes/Cenario.cpp
    ${PROJECT_SOURCE_DIR}/tests/mortes/Cliente.cpp
    ${PROJECT_SOURCE_DIR}/tests/mortes/Mistura.cpp
    ${PROJECT_SOURCE_DIR}/tests/mortes/Ponte.cpp
    ${PROJECT_SOURCE_DIR}/tests/mortes/Processo.cpp
    ${PROJECT_SOURCE_DIR}/tests/mortes/Rodadas.cpp
    ${PROJECT_SOURCE_DIR}/tests/mortes/Verificador.cpp)
target_link_libraries(mortes_comum PUBLIC registro_de_teste rede PRIVATE PkgConfig::PQ)
target_compile_definitions(mortes_comum PRIVATE SERVIDOR="$<TARGET_FILE:registro-servidor>")
add_dependencies(mortes_comum registro-servidor)

add_executable(mortes ${PROJECT_SOURCE_DIR}/tests/mortes/Principal.cpp)
target_link_libraries(mortes PRIVATE mortes_comum)

file(GLOB fontes_mortes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/mortes/*_test.cpp)
add_executable(teste_mortes ${fontes_mortes} ${PROJECT_SOURCE_DIR}/tests/services/ServicosPrincipal.cpp)
target_link_libraries(teste_mortes PRIVATE mortes_comum GTest::gtest)

# As one: what judges is tried in one scene.
add_test(NAME mortes.testes COMMAND teste_mortes WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
# Of those by command (tests/mortes/run) a tenth. The limit is for one that waits for ever. Each kind comes once before any
# comes again.
add_test(NAME mortes.rodadas COMMAND mortes --rodadas 20)
# By itself too: where there can be no small disk, it is told as left out.
add_test(NAME mortes.disco COMMAND mortes --rodadas 1 --tipo disco)
add_test(NAME mortes.mistura COMMAND mortes --mistura 10000)
set_tests_properties(mortes.testes mortes.rodadas mortes.disco mortes.mistura
    PROPERTIES TIMEOUT 1500 LABELS simples)
set_property(TEST mortes.disco PROPERTY SKIP_RETURN_CODE 77)
# First: nothing is left to run beside what begins last.
set_tests_properties(mortes.rodadas PROPERTIES COST 1000)
