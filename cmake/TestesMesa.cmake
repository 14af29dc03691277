# The tests of the desk around the module: its host, its windows, its sample and its commands.
if(NOT TARGET registro-de-equipamentos)
    return()
endif()

file(GLOB fontes_mesa CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/desk/*.cpp)
add_executable(teste_mesa ${fontes_mesa})
target_link_libraries(teste_mesa PRIVATE suporte contrato_host registro_de_teste janelas amostra condutor servidor GTest::gtest)
target_compile_definitions(teste_mesa PRIVATE PASTA_DOS_RETRATOS="${PROJECT_BINARY_DIR}/retratos")
set_property(SOURCE ${PROJECT_SOURCE_DIR}/tests/desk/LinhaDeComando_test.cpp
    PROPERTY COMPILE_DEFINITIONS "PROGRAMA=\"$<TARGET_FILE:registro-de-equipamentos>\"")
add_dependencies(teste_mesa registro-de-equipamentos)
gtest_discover_tests(teste_mesa
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    TEST_PREFIX "mesa."
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})

# The toolkit's own leaks in the whole job are known by the function of it that we called, which the sanitizers' quick
# walk along the frame pointers does not reach: the toolkit has none.
set(pilha_inteira "ASAN_OPTIONS=string_append::fast_unwind_on_malloc=0:malloc_context_size=12")

# The whole job in the real windows, on a screen of that size with everything drawn so many per cent as large. Pictures
# and account of the last run stay in the build folder; a difference or a text that is cut fails it.
function(testa_roteiro nome)
    add_test(NAME mesa.${nome}
        COMMAND sh -c "rm -rf \"$1\" && \"$0\" \"$@\" && grep -q -F sem\\ diferenças \"$1/relato.md\""
            $<TARGET_FILE:roteiro> ${PROJECT_BINARY_DIR}/${nome} ${ARGN})
    set_tests_properties(mesa.${nome} PROPERTIES
        ENVIRONMENT_MODIFICATION "${pilha_inteira}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=qt.qpa.*=false")
endfunction()
testa_roteiro(roteiro --tela 1366x768)
# The same at a server that is another process, chosen in the windows; it dies in the middle of a save, and comes back.
testa_roteiro(roteiro_rede --tela 1366x768 --servidor $<TARGET_FILE:registro-servidor>)
# The sanitizers see nothing in one screen that they do not see in another.
if(NOT CMAKE_CXX_FLAGS MATCHES "-f(sanitize|profile)")
    testa_roteiro(roteiro_1024x768 --tela 1024x768)
    testa_roteiro(roteiro_1920x1080 --tela 1920x1080)
    testa_roteiro(roteiro_1366x768_escuro --tela 1366x768 --tema escuro)
    testa_roteiro(roteiro_1920x1080_150_escuro --tela 1920x1080 --escala 150 --tema escuro)
    testa_roteiro(roteiro_1920x1080_200 --tela 1920x1080 --escala 200)
    testa_roteiro(roteiro_1024x768_200 --tela 1024x768 --escala 200)
    testa_roteiro(roteiro_1024x768_200_escuro --tela 1024x768 --escala 200 --tema escuro)
    set_tests_properties(
        mesa.roteiro_1024x768 mesa.roteiro_1920x1080 mesa.roteiro_1366x768_escuro mesa.roteiro_1920x1080_150_escuro
        mesa.roteiro_1920x1080_200 mesa.roteiro_1024x768_200 mesa.roteiro_1024x768_200_escuro
        PROPERTIES LABELS simples)
endif()

# The commands at the root, as far as they answer without building.
foreach(comando IN ITEMS run test pacote servidor)
    add_test(NAME mesa.${comando}_ajuda
        COMMAND sh -c "\"$0\" --help </dev/null | grep -q -F \"./${comando} [\"" ${PROJECT_SOURCE_DIR}/${comando})
    add_test(NAME mesa.${comando}_opcao_desconhecida
        COMMAND sh -c "\"$0\" --nada </dev/null >/dev/null 2>&1; test $? -eq 2" ${PROJECT_SOURCE_DIR}/${comando})
endforeach()
add_test(NAME mesa.run_opcao_sem_valor
    COMMAND sh -c "\"$0\" --dados </dev/null >/dev/null 2>&1; test $? -eq 2" ${PROJECT_SOURCE_DIR}/run)
foreach(opcao IN ITEMS --porta --porta=0 --porta=x --dados=)
    add_test(NAME mesa.servidor_opcao_${opcao}
        COMMAND sh -c "\"$0\" ${opcao} </dev/null >/dev/null 2>&1; test $? -eq 2" ${PROJECT_SOURCE_DIR}/servidor)
endforeach()
add_test(NAME mesa.servidor_comeca_e_termina
    COMMAND ${PROJECT_SOURCE_DIR}/tests/server/experiencia.sh ${PROJECT_SOURCE_DIR} $<TARGET_FILE:registro-servidor>)
add_test(NAME mesa.run_fala_portugues
    COMMAND ${PROJECT_SOURCE_DIR}/tests/desk/fala_portugues.sh ${PROJECT_SOURCE_DIR} ./run --amostra)
add_test(NAME mesa.servidor_fala_portugues
    COMMAND ${PROJECT_SOURCE_DIR}/tests/desk/fala_portugues.sh ${PROJECT_SOURCE_DIR} ./servidor --sqlite --dados nada)
add_test(NAME mesa.run_sem_tela COMMAND ${PROJECT_SOURCE_DIR}/tests/desk/run_sem_tela.sh ${PROJECT_SOURCE_DIR})

# The packages, in a clean system. They are of the plain programs: the sanitizers' libraries are no dependency of anybody.
if(NOT CMAKE_CXX_FLAGS MATCHES "-f(sanitize|profile)")
    add_test(NAME mesa.pacote
        COMMAND ${PROJECT_SOURCE_DIR}/tests/desk/pacote.sh ${PROJECT_SOURCE_DIR} $<TARGET_FILE:registro-de-equipamentos>
                $<TARGET_FILE:registro-servidor> $<TARGET_FILE:registro> ${PROJECT_VERSION}
                ${PROJECT_BINARY_DIR}/pacote)
    set_tests_properties(mesa.pacote PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 1500 COST 900 LABELS simples)
endif()
