# What the Windows build's tests run on. Included before their programs are made, because these keep what runs them.

# The compatibility layer with a prefix in the build folder, made with the programs and so before their tests are asked
# for. Every test of a Windows program has the fixture `camada`, which brings the display; a test that is no program of
# the build runs what it needs by ${CAMADA} roda.
set(CAMADA bash ${PROJECT_SOURCE_DIR}/cmake/camada.sh ${PROJECT_BINARY_DIR}/camada)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CAMADA} roda)
add_custom_command(
    OUTPUT ${PROJECT_BINARY_DIR}/camada/pronta
    COMMAND ${CAMADA} prefixo
    COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/camada/pronta
    DEPENDS ${PROJECT_SOURCE_DIR}/cmake/camada.sh
    COMMENT "Making the prefix of the compatibility layer"
    VERBATIM)
set(com_tudo ALL)
if(CMAKE_SIZEOF_VOID_P EQUAL 4) # only inside the system of 32 bits that tests/windows/run32 lays out
    set(com_tudo "")
endif()
add_custom_target(camada ${com_tudo} DEPENDS ${PROJECT_BINARY_DIR}/camada/pronta)
add_executable(mesa ${PROJECT_SOURCE_DIR}/cmake/Mesa.cpp)
set_property(TARGET mesa PROPERTY RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/camada)
add_dependencies(camada mesa)
add_test(NAME windows.liga_camada COMMAND ${CAMADA} liga)
add_test(NAME windows.desliga_camada COMMAND ${CAMADA} desliga)
set_property(TEST windows.liga_camada PROPERTY FIXTURES_SETUP camada)
set_property(TEST windows.desliga_camada PROPERTY FIXTURES_CLEANUP camada)

# The framework from its sources: the distribution has it compiled for itself only.
set(fontes_gtest /usr/src/googletest/googletest)
set(notificacao ${PROJECT_SOURCE_DIR}/cmake/gtest/Notificacao)
add_library(gtest STATIC ${fontes_gtest}/src/gtest-all.cc ${notificacao}.cpp)
target_include_directories(gtest SYSTEM PUBLIC ${fontes_gtest}/include PRIVATE ${fontes_gtest} ${PROJECT_SOURCE_DIR})
target_compile_definitions(gtest PUBLIC GTEST_HAS_NOTIFICATION_=1)
target_compile_options(gtest PUBLIC "SHELL:-include ${notificacao}.h" PRIVATE -w)
add_library(gtest_main STATIC ${PROJECT_SOURCE_DIR}/cmake/gtest/Principal.cpp)
target_include_directories(gtest_main PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(gtest_main PUBLIC gtest)
add_library(GTest::gtest ALIAS gtest)
add_library(GTest::gtest_main ALIAS gtest_main)
