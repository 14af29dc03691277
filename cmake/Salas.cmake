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
    set(${alvo}_ALCANCE ${alcance} PARENT_SCOPE)
endfunction()
