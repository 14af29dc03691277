# Refuses at configuration what the contract, the module and the controls must not link: anything but the libraries
# named here. Targets that are not there are not asked.

function(confere_ligacao alvo)
    if(NOT TARGET ${alvo})
        return()
    endif()
    foreach(propriedade LINK_LIBRARIES INTERFACE_LINK_LIBRARIES LINK_OPTIONS INTERFACE_LINK_OPTIONS)
        get_target_property(ligadas ${alvo} ${propriedade})
        if(NOT ligadas)
            continue()
        endif()
        list(REMOVE_ITEM ligadas ${ARGN})
        if(ligadas)
            message(FATAL_ERROR "${alvo} may not link ${ligadas}.")
        endif()
    endforeach()
endfunction()

function(guarda_ligacao)
    confere_ligacao(host)
    confere_ligacao(modulo host)
    confere_ligacao(controls host)
endfunction()
