# Refused inclusions fail the build before the rooms are compiled. The stamp makes that one look per change.
set(carimbo ${PROJECT_BINARY_DIR}/guarda_inclusoes.carimbo)
set(padroes host controls tela shell sensors equipment limits search planilhas services rede server desk comando windows)
list(TRANSFORM padroes PREPEND "${PROJECT_SOURCE_DIR}/")
set(padroes_h ${padroes})
list(TRANSFORM padroes_h APPEND "/*.h")
list(TRANSFORM padroes APPEND "/*.cpp")
file(GLOB_RECURSE guardados CONFIGURE_DEPENDS ${padroes} ${padroes_h})
add_custom_command(
    OUTPUT ${carimbo}
    COMMAND ${CMAKE_COMMAND} -DRAIZ=${PROJECT_SOURCE_DIR} -DCARIMBO=${carimbo}
            -P ${PROJECT_SOURCE_DIR}/cmake/GuardaInclusoes.cmake
    DEPENDS ${PROJECT_SOURCE_DIR}/cmake/GuardaInclusoes.cmake ${guardados}
    COMMENT "Looking at what the rooms include"
    VERBATIM)
add_custom_target(guarda_inclusoes DEPENDS ${carimbo})

# adiciona_sala(<target> <folder>...): one static library of the sources in the folders. While none of the folders
# has a source file the target is an interface library, so that a room of headers alone configures too.
# Sets <target>_ALCANCE to the scope that links of the target take.
function(adiciona_sala alvo)
    set(padroes ${ARGN})
    list(TRANSFORM padroes PREPEND "${PROJECT_SOURCE_DIR}/")
    list(TRANSFORM padroes APPEND "/*.cpp")
    file(GLOB fontes CONFIGURE_DEPENDS ${padroes})
    if(fontes)
        set(alcance PUBLIC)
        add_library(${alvo} STATIC ${fontes})
    else()
        set(alcance INTERFACE)
        add_library(${alvo} INTERFACE)
    endif()
    target_include_directories(${alvo} ${alcance} ${PROJECT_SOURCE_DIR})
    add_dependencies(${alvo} guarda_inclusoes)
    set(${alvo}_ALCANCE ${alcance} PARENT_SCOPE)
endfunction()
