# Refuses every #include by which a room would know more than it may.
#
#   cmake -DRAIZ=<root of the tree> -P cmake/GuardaInclusoes.cmake
#
# Prints one line per refusal, "<file>:<line>: <why>", and fails when there was any. A room may include the headers
# of the rooms that it knows, as "room/Name.h" from the root, and the standard headers listed below; nothing else, so
# that no toolkit, database or operating system reaches the rooms that must run on any of them. The rooms that are there
# for one of these, from planilhas/ to windows/, include foreign headers as they need them, and know what is below them.

cmake_minimum_required(VERSION 3.25)

set(SALAS host controls tela shell sensors equipment limits search
    planilhas services rede server desk comando windows/automation windows/screen windows/host windows/component)
set(modulo shell sensors equipment limits search)
set(COM_ALHEIOS planilhas services rede server desk comando windows/automation windows/screen windows/host windows/component)
set(CONHECE_host host)
set(CONHECE_controls host controls)
set(CONHECE_tela host controls tela)
foreach(sala IN LISTS modulo)
    set(CONHECE_${sala} host ${modulo})
endforeach()
set(CONHECE_planilhas host planilhas)
set(CONHECE_services host services)
set(CONHECE_rede host services rede)
set(CONHECE_server host services rede server)
set(CONHECE_comando host services rede comando)
set(CONHECE_desk host controls tela ${modulo} planilhas services rede desk)
set(CONHECE_windows/automation host windows/automation)
set(CONHECE_windows/screen host controls tela windows/automation windows/screen)
set(CONHECE_windows/host host controls tela ${modulo} windows/automation windows/screen windows/host)
set(CONHECE_windows/component ${CONHECE_windows/host} windows/component)

# Of the standard library, everything that neither touches files, threads or the console nor leaves C++'s ways:
# files belong to the platform behind host/, and the module lives in its host's only thread.
set(PADRAO
    algorithm any array atomic bit bitset cctype cfloat charconv chrono cinttypes climits cmath compare complex concepts
    cstddef cstdint cstdlib cstring ctime deque exception forward_list functional initializer_list iomanip ios iosfwd
    istream iterator limits list locale map memory memory_resource new numbers numeric optional ostream queue random
    ranges ratio regex scoped_allocator set source_location span sstream stack stdexcept streambuf string string_view
    system_error tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector
    version)
# The contract may also speak of threads, and format numbers with the C library.
set(PADRAO_host ${PADRAO} cstdio iostream mutex thread)

# Refusals found so far, each on a line.
set(recusas "")

macro(recusa porque)
    string(APPEND recusas "${arquivo}:${inicio}: ${porque}\n")
endmacro()

# Removes the comments of `linha` and the contents of raw strings, given and keeping what was open before it:
# `aberto` is empty, or the text that closes the open comment or raw string.
macro(limpa_linha)
    set(resto "${linha}")
    set(linha "")
    while(NOT resto STREQUAL "")
        if(NOT aberto STREQUAL "")
            string(FIND "${resto}" "${aberto}" onde)
            if(onde EQUAL -1)
                set(resto "")
            else()
                string(LENGTH "${aberto}" tamanho)
                math(EXPR onde "${onde} + ${tamanho}")
                string(SUBSTRING "${resto}" ${onde} -1 resto)
                set(aberto "")
            endif()
        elseif(resto MATCHES "^//")
            set(resto "")
        elseif(resto MATCHES "^/[*]")
            string(SUBSTRING "${resto}" 2 -1 resto)
            set(aberto "*/")
            set(abertura ${inicio})
            string(APPEND linha " ")
        elseif(resto MATCHES "^(u8|u|U|L)?R\"([^() \t\"]*)[(]")
            set(aberto ")${CMAKE_MATCH_2}\"")
            set(abertura ${inicio})
            string(LENGTH "${CMAKE_MATCH_0}" tamanho)
            string(SUBSTRING "${resto}" ${tamanho} -1 resto)
        else()
            # A word, a number with its digit separators, a string, a character; or any one character.
            string(REGEX MATCH
                "^([A-Za-z_][A-Za-z0-9_]*|[0-9][0-9A-Za-z_.']*|\"[^\"${BARRA}]*(${BARRA}.[^\"${BARRA}]*)*\"|'[^'${BARRA}]*(${BARRA}.[^'${BARRA}]*)*'|.)"
                pedaco "${resto}")
            string(LENGTH "${pedaco}" tamanho)
            string(SUBSTRING "${resto}" ${tamanho} -1 resto)
            string(APPEND linha "${pedaco}")
        endif()
    endwhile()
endmacro()

macro(confere_diretiva)
    if(linha MATCHES "^[ \t]*(#|%:)[ \t]*(include_next|include|import|embed)([^A-Za-z0-9_].*)?$")
        set(diretiva "${CMAKE_MATCH_2}")
        set(alvo "${CMAKE_MATCH_3}")
        if(NOT diretiva STREQUAL "include")
            recusa("#${diretiva} is not used here")
        elseif(alvo MATCHES "^[ \t]*<([^<>]*)>")
            set(alvo "${CMAKE_MATCH_1}")
            if(NOT sala IN_LIST COM_ALHEIOS AND NOT alvo IN_LIST permitidos)
                recusa("<${alvo}> is not a header that ${sala}/ may include")
            endif()
        elseif(alvo MATCHES "^[ \t]*\"([^\"]*)\"")
            set(alvo "${CMAKE_MATCH_1}")
            if(NOT alvo MATCHES "^(windows/[a-z]+|[a-z]+)/([A-Za-z0-9_]+/)*[A-Za-z0-9_]+[.]h$")
                recusa("\"${alvo}\" is not written as \"room/Name.h\" from the root")
            elseif(NOT CMAKE_MATCH_1 IN_LIST CONHECE_${sala})
                recusa("${sala}/ may not know \"${alvo}\"")
            endif()
        else()
            recusa("an #include must name its header, not compute it")
        endif()
    endif()
endmacro()

# Characters that would cut or glue the elements of a list of lines stand aside for bytes that no source holds.
string(ASCII 1 PONTO_E_VIRGULA)
string(ASCII 2 BARRA)
string(ASCII 3 ABRE)
string(ASCII 4 FECHA)
string(ASCII 239 187 191 BOM)

function(confere_arquivo sala arquivo)
    set(permitidos ${PADRAO})
    if(DEFINED PADRAO_${sala})
        set(permitidos ${PADRAO_${sala}})
    endif()

    file(READ "${RAIZ}/${arquivo}" linhas)
    string(REGEX REPLACE "^${BOM}" "" linhas "${linhas}")
    string(REPLACE "\r" "" linhas "${linhas}")
    string(REPLACE ";" "${PONTO_E_VIRGULA}" linhas "${linhas}")
    string(REPLACE "\\" "${BARRA}" linhas "${linhas}")
    string(REPLACE "[" "${ABRE}" linhas "${linhas}")
    string(REPLACE "]" "${FECHA}" linhas "${linhas}")
    string(REPLACE "\n" ";" linhas "${linhas}\n")

    set(numero 0)
    set(inicio 0)
    set(emenda "")
    set(aberto "")
    foreach(linha IN LISTS linhas)
        math(EXPR numero "${numero} + 1")
        if(emenda STREQUAL "")
            set(inicio ${numero})
        else()
            set(linha "${emenda}${linha}")
            set(emenda "")
        endif()
        if(NOT aberto MATCHES "^[)]" AND linha MATCHES "^(.*)${BARRA}[ \t]*$")
            set(emenda "${CMAKE_MATCH_1}")
            continue()
        endif()
        # Most lines open nothing, are inside nothing, and are no directive.
        if(aberto STREQUAL "" AND NOT linha MATCHES "/[*]|R\"|#|%:")
            continue()
        endif()
        limpa_linha()
        confere_diretiva()
    endforeach()
    if(NOT aberto STREQUAL "")
        set(inicio ${abertura})
        recusa("the comment or raw string that opens here does not close")
    endif()
    set(recusas "${recusas}" PARENT_SCOPE)
endfunction()

foreach(sala IN LISTS SALAS)
    file(GLOB_RECURSE arquivos RELATIVE "${RAIZ}" "${RAIZ}/${sala}/*.h" "${RAIZ}/${sala}/*.cpp")
    foreach(arquivo IN LISTS arquivos)
        confere_arquivo(${sala} ${arquivo})
    endforeach()
endforeach()

if(recusas)
    string(REPLACE "${PONTO_E_VIRGULA}" ";" recusas "${recusas}")
    string(REPLACE "${BARRA}" "\\" recusas "${recusas}")
    string(REPLACE "${ABRE}" "[" recusas "${recusas}")
    string(REPLACE "${FECHA}" "]" recusas "${recusas}")
    message(NOTICE "${recusas}")
    message(FATAL_ERROR "Inclusions were refused.")
endif()
if(CARIMBO)
    file(TOUCH "${CARIMBO}")
endif()
