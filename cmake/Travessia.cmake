# The boundary of automation between the module and the scripted host, beneath every test program of the Windows build.

file(GLOB fontes_travessia CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/windows/travessia/*.cpp)
list(FILTER fontes_travessia EXCLUDE REGEX "_test\\.cpp$")
add_library(travessia OBJECT ${fontes_travessia})
target_link_libraries(travessia PUBLIC suporte hospedeiro_windows automacao)

# The host's library of records, in a file of its own that is found by a manifest beside it.
file(GLOB fontes_biblioteca CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/windows/travessia/biblioteca/*)
list(FILTER fontes_biblioteca EXCLUDE REGEX "\\.(h|manifest)$")
add_library(ZTVORLIB SHARED ${fontes_biblioteca})
target_include_directories(ZTVORLIB PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(ZTVORLIB PRIVATE ole32 oleaut32 uuid)
target_link_options(ZTVORLIB PRIVATE -Wl,--enable-stdcall-fixup)
set_target_properties(ZTVORLIB PROPERTIES PREFIX "")
configure_file(${PROJECT_SOURCE_DIR}/tests/windows/travessia/biblioteca/ZTVORLIB.manifest
    ${PROJECT_BINARY_DIR}/ZTVORLIB.manifest COPYONLY)

# adiciona_travessia(<room> <name> <argument>...): one more run of a room's program.
function(adiciona_travessia sala nome)
    add_test(NAME windows.${sala}.${nome} COMMAND teste_${sala} --gtest_brief=1 ${ARGN}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_property(TEST windows.${sala}.${nome} PROPERTY FIXTURES_REQUIRED camada)
endfunction()

# The boundary's own tests, and further runs of the rooms'.
function(adiciona_travessias)
    file(GLOB fontes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/windows/travessia/*_test.cpp)
    adiciona_teste(travessia ${fontes})
    # Without the library of records, as all others run, the component's own records cross.
    foreach(sala IN ITEMS host shell support sensors limits search equipment travessia)
        adiciona_travessia(${sala} com_biblioteca --biblioteca)
    endforeach()
    # A host that fails with other numbers than its own: an old language's, those of the platform and of its codes, the
    # largest, and ones without a text and with a huge one.
    foreach(falha IN ITEMS -1 1033 -2147221504 -2147467259 65535 51:0 51:40000)
        string(MAKE_C_IDENTIFIER "falha_${falha}" nome)
        foreach(sala IN ITEMS shell search)
            adiciona_travessia(${sala} ${nome} --gtest_filter=*Varredura* --falha=${falha})
        endforeach()
    endforeach()
    add_test(NAME windows.travessia.excecoes COMMAND teste_travessia --excecoes)
    set_property(TEST windows.travessia.excecoes PROPERTY FIXTURES_REQUIRED camada)
endfunction()
