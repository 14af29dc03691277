# The tests of windows/ beside teste_windows, whose sources are tests/windows/*.cpp.

if(TARGET ZTAVOREQUIP)
    # Needs nothing but what Windows has, and shows its four entry points only.
    add_test(NAME windows.dll_fechada
        COMMAND ${CMAKE_COMMAND} -DOBJDUMP=${CMAKE_OBJDUMP} -DDLL=$<TARGET_FILE:ZTAVOREQUIP>
                -P ${PROJECT_SOURCE_DIR}/cmake/ConfereDll.cmake)

    # Alone: what it registers is seen by everything else.
    math(EXPR largura "8 * ${CMAKE_SIZEOF_VOID_P}")
    add_test(NAME windows.instalador
        COMMAND ${PROJECT_SOURCE_DIR}/tests/windows/instalador.sh ${CAMADA} roda -- ${instalador} ${largura})
    set_tests_properties(windows.instalador PROPERTIES FIXTURES_REQUIRED camada RUN_SERIAL TRUE)
endif()

include(cmake/TestesExternos.cmake)

if(TARGET teste_windows)
    set_property(SOURCE ${PROJECT_SOURCE_DIR}/tests/windows/recursos.rc PROPERTY INCLUDE_DIRECTORIES
        ${PROJECT_SOURCE_DIR}/windows/component ${PROJECT_SOURCE_DIR}/windows/screen)
    target_sources(teste_windows PRIVATE ${PROJECT_SOURCE_DIR}/tests/windows/recursos.rc)
    if(TARGET ZTAVOREQUIP)
        # They load the component from beside them, and read its version.
        add_dependencies(teste_windows ZTAVOREQUIP)
        target_link_libraries(teste_windows PRIVATE version)
        add_test(NAME windows.ativacao COMMAND teste_windows --gtest_filter=AtivacaoTeste.*)
        set_tests_properties(windows.ativacao PROPERTIES FIXTURES_REQUIRED camada RUN_SERIAL TRUE)
    endif()
endif()
