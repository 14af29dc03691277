# Fails unless the component needs only libraries that every Windows has, and exports its four entry points and nothing else.
#
#   cmake -DOBJDUMP=<program> -DDLL=<file> -P cmake/ConfereDll.cmake

cmake_minimum_required(VERSION 3.25)

set(DO_SISTEMA
    advapi32.dll comctl32.dll comdlg32.dll gdi32.dll kernel32.dll msvcrt.dll ole32.dll oleaut32.dll shell32.dll shlwapi.dll
    user32.dll uxtheme.dll version.dll)
set(ENTRADAS DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)

execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE tabelas COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCHALL "DLL Name: [^\r\n]+" necessarias "${tabelas}")
list(TRANSFORM necessarias REPLACE "DLL Name: *" "")
list(TRANSFORM necessarias TOLOWER)
if(NOT "kernel32.dll" IN_LIST necessarias)
    message(FATAL_ERROR "The table of imports was not understood: ${necessarias}")
endif()
list(REMOVE_ITEM necessarias ${DO_SISTEMA})
if(necessarias)
    message(FATAL_ERROR "${DLL} needs ${necessarias}.")
endif()

# The table of names, each line "\t[   0] Name" or with the address before the name.
string(FIND "${tabelas}" "[Ordinal/Name Pointer] Table" inicio)
string(SUBSTRING "${tabelas}" ${inicio} -1 tabelas)
string(FIND "${tabelas}" "\n\n" fim)
string(SUBSTRING "${tabelas}" 0 ${fim} tabelas)
string(REPLACE "[" "(" tabelas "${tabelas}")
string(REPLACE "]" ")" tabelas "${tabelas}")
string(REGEX MATCHALL "\\( *[0-9]+\\) [^\r\n]+" exportadas "${tabelas}")
list(TRANSFORM exportadas REPLACE ".* " "")
list(SORT exportadas)
if(NOT exportadas STREQUAL ENTRADAS)
    message(FATAL_ERROR "${DLL} exports ${exportadas}.")
endif()
