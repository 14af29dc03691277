# The build for Windows, by the presets windows and windows32: the rooms of windows/ on top of the module, and the
# component made of them. Sources are found by where they are; a room without any yet is an interface library.
enable_language(RC)

add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)

adiciona_sala(automacao windows/automation)
adiciona_sala(hospedeiro_windows windows/host)
adiciona_sala(tela_windows windows/screen)
target_link_libraries(automacao ${automacao_ALCANCE} host ole32 oleaut32 uuid)
target_link_libraries(hospedeiro_windows ${hospedeiro_windows_ALCANCE}
    tela_windows automacao modulo tela controls host advapi32 shlwapi)
target_link_libraries(tela_windows ${tela_windows_ALCANCE}
    automacao tela controls host comctl32 uxtheme gdi32 user32)

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

# The type library and the interfaces' face in C++ from the .idl; the libraries that it imports come with the compatibility
# layer.
set(pasta_componente ${PROJECT_SOURCE_DIR}/windows/component)
lista_do_pacote(oaidl libwine-dev "/oaidl\\.idl$")
lista_do_pacote(stdole2 libwine "/stdole2\\.tlb$")
cmake_path(GET oaidl PARENT_PATH pasta_idl)
cmake_path(GET stdole2 PARENT_PATH pasta_tlb)
set(pasta_gerados ${PROJECT_BINARY_DIR}/componente)
file(MAKE_DIRECTORY ${pasta_gerados})
find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_custom_command(
    OUTPUT ${pasta_gerados}/ZTAVOREQUIP.tlb ${pasta_gerados}/ZTAVOREQUIP.h
    COMMAND Python3::Interpreter ${pasta_componente}/biblioteca_de_tipos.py ${WIDL} ${pasta_idl} ${pasta_tlb}
            ${pasta_componente}/ZTAVOREQUIP.idl ${pasta_gerados}/ZTAVOREQUIP.tlb ${pasta_gerados}/ZTAVOREQUIP.h
    DEPENDS ${pasta_componente}/biblioteca_de_tipos.py ${pasta_componente}/ZTAVOREQUIP.idl
    VERBATIM)
add_custom_target(biblioteca_de_tipos DEPENDS ${pasta_gerados}/ZTAVOREQUIP.tlb ${pasta_gerados}/ZTAVOREQUIP.h)

# Objects, so that the tests reach what the DLL does not export.
file(GLOB fontes_componente CONFIGURE_DEPENDS ${pasta_componente}/*.cpp)
add_library(componente OBJECT ${fontes_componente})
add_dependencies(componente biblioteca_de_tipos)
target_include_directories(componente SYSTEM PUBLIC ${pasta_gerados})
target_link_libraries(componente PUBLIC hospedeiro_windows tela_windows automacao modulo tela controls host)

# The DLL, with the resources and only the entry points shown; beside it the manifest for hosts that do not register it.
set_property(SOURCE ${pasta_componente}/ZTAVOREQUIP.rc PROPERTY OBJECT_DEPENDS
    ${pasta_gerados}/ZTAVOREQUIP.tlb ${pasta_componente}/ZTAVOREQUIP.dll.manifest)
set_property(SOURCE ${pasta_componente}/ZTAVOREQUIP.rc PROPERTY INCLUDE_DIRECTORIES ${pasta_gerados} ${pasta_componente}
    ${PROJECT_SOURCE_DIR}/windows/screen)
add_library(ZTAVOREQUIP SHARED ${pasta_componente}/ZTAVOREQUIP.rc ${pasta_componente}/ZTAVOREQUIP.def)
target_link_libraries(ZTAVOREQUIP PRIVATE componente)
# Without the names of what is inside, and the plain names stand for the decorated ones of the 32-bit calling convention.
target_link_options(ZTAVOREQUIP PRIVATE -s -Wl,--enable-stdcall-fixup)
set_target_properties(ZTAVOREQUIP PROPERTIES PREFIX "" LINKER_LANGUAGE CXX)
add_custom_command(TARGET ZTAVOREQUIP POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${pasta_componente}/ZTAVOREQUIP.manifest ${PROJECT_BINARY_DIR})

find_program(MAKENSIS makensis REQUIRED)
set(instalador ${PROJECT_BINARY_DIR}/ZTAVOREQUIP-instalador.exe)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(dlls -DDLL64=$<TARGET_FILE:ZTAVOREQUIP> -DDLL32=${PROJECT_SOURCE_DIR}/build/windows32/ZTAVOREQUIP.dll)
else()
    set(dlls -DDLL32=$<TARGET_FILE:ZTAVOREQUIP>)
endif()
add_custom_target(instalador ALL
    COMMAND ${CMAKE_COMMAND} -DMAKENSIS=${MAKENSIS} ${dlls} -DFONTES=${PROJECT_SOURCE_DIR} -DSAIDA=${instalador}
            -P ${PROJECT_SOURCE_DIR}/cmake/Instalador.cmake
    DEPENDS ZTAVOREQUIP
    VERBATIM)
