# Makes the component's installer: from 64 bits, with the component for 32 bits beside where that was built too; or from
# 32 bits alone.
#
#   cmake -DMAKENSIS=<program> [-DDLL64=<file>] -DDLL32=<file> -DFONTES=<root of the tree> -DSAIDA=<file>
#         -P cmake/Instalador.cmake

cmake_minimum_required(VERSION 3.25)

set(definicoes -DSAIDA=${SAIDA} -DMANIFESTO=${FONTES}/windows/component/ZTAVOREQUIP.manifest)
if(DLL64)
    list(APPEND definicoes -DDLL64=${DLL64})
endif()
if(NOT DLL64 OR EXISTS ${DLL32})
    list(APPEND definicoes -DDLL32=${DLL32})
endif()
execute_process(
    COMMAND ${MAKENSIS} -V2 -WX -INPUTCHARSET UTF8 ${definicoes} ${FONTES}/windows/instalador/ZTAVOREQUIP.nsi
    COMMAND_ERROR_IS_FATAL ANY)
