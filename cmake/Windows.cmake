# The build for Windows, by the presets windows and windows32: the rooms of windows/ on top of the module, and the
# component made of them. Sources are found by where they are; a room without any yet is an interface library.
enable_language(RC)

add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
# The programs need nothing but what Windows has.
add_link_options(-static)

adiciona_sala(automacao windows/automation)
adiciona_sala(hospedeiro_windows windows/host)
adiciona_sala(tela_windows windows/screen)
target_link_libraries(automacao ${automacao_ALCANCE} host ole32 oleaut32 uuid)
target_link_libraries(hospedeiro_windows ${hospedeiro_windows_ALCANCE}
    tela_windows automacao modulo tela controls host advapi32 shlwapi)
target_link_libraries(tela_windows ${tela_windows_ALCANCE}
    automacao tela controls host comctl32 comdlg32 uxtheme gdi32 user32)

# lista_do_pacote(<variable> <package> <regex>): the first file of an installed package whose path matches.
function(lista_do_pacote variavel pacote padrao)
    execute_process(COMMAND dpkg -L ${pacote} OUTPUT_VARIABLE arquivos ERROR_QUIET)
    string(REPLACE "\n" ";" arquivos "${arquivos}")
    list(FILTER arquivos INCLUDE REGEX "${padrao}")
    if(NOT arquivos)
        message(FATAL_ERROR "No file of the package ${pacote} is named like ${padrao}.")
    endif()
    list(GET arquivos 0 primeiro)
    set(${variavel} ${primeiro} PARENT_SCOPE)
endfunction()

# The type library, ZTAVOREQUIP.tlb, and the interfaces' C++ face, <ZTAVOREQUIP.h>, from the one .idl. The libraries that
# it imports come with the compatibility layer.
set(componente_gerado ${PROJECT_BINARY_DIR}/componente)
set(idl ${PROJECT_SOURCE_DIR}/windows/component/ZTAVOREQUIP.idl)
file(GLOB fontes_componente CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/windows/component/*.cpp)
if(fontes_componente)
    lista_do_pacote(oaidl libwine-dev "/oaidl\\.idl$")
    lista_do_pacote(stdole2 libwine "/stdole2\\.tlb$")
    cmake_path(GET oaidl PARENT_PATH pasta_idl)
    cmake_path(GET stdole2 PARENT_PATH pasta_tlb)
    file(MAKE_DIRECTORY ${componente_gerado})
    set(saidas ZTAVOREQUIP.tlb ZTAVOREQUIP.h)
    set(modos -t -h)
    foreach(saida modo IN ZIP_LISTS saidas modos)
        add_custom_command(
            OUTPUT ${componente_gerado}/${saida}
            COMMAND ${WIDL} ${modo} -I ${pasta_idl} -L ${pasta_tlb} -o ${componente_gerado}/${saida} ${idl}
            DEPENDS ${idl}
            VERBATIM)
    endforeach()
    add_custom_target(biblioteca_de_tipos DEPENDS ${componente_gerado}/ZTAVOREQUIP.tlb ${componente_gerado}/ZTAVOREQUIP.h)

    # Objects, so that the tests reach what the DLL does not export.
    add_library(componente OBJECT ${fontes_componente})
    add_dependencies(componente biblioteca_de_tipos)
    target_include_directories(componente SYSTEM PUBLIC ${componente_gerado})
    target_link_libraries(componente PUBLIC hospedeiro_windows tela_windows automacao modulo tela controls host)

    # The DLL: resources of every .rc, exports of the one .def.
    file(GLOB recursos CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/windows/component/*.rc)
    file(GLOB partes_dos_recursos CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/windows/component/*.manifest)
    set_property(SOURCE ${recursos} PROPERTY OBJECT_DEPENDS ${componente_gerado}/ZTAVOREQUIP.tlb ${partes_dos_recursos})
    add_library(ZTAVOREQUIP SHARED ${recursos} ${PROJECT_SOURCE_DIR}/windows/component/ZTAVOREQUIP.def)
    target_include_directories(ZTAVOREQUIP PRIVATE ${componente_gerado} ${PROJECT_SOURCE_DIR}/windows/component)
    target_link_libraries(ZTAVOREQUIP PRIVATE componente)
    # The plain names stand for the decorated ones of the 32-bit calling convention.
    target_link_options(ZTAVOREQUIP PRIVATE -Wl,--enable-stdcall-fixup)
    set_target_properties(ZTAVOREQUIP PROPERTIES PREFIX "" LINKER_LANGUAGE CXX)
endif()
