# Where sources are compiled together (CMAKE_UNITY_BUILD, as the presets of the sanitizers and for Windows have it, so that
# the same headers are read less often), these are compiled apart: they have a name of their own that another source has
# too. The other presets compile every source apart, so that each includes what it needs.
if(NOT CMAKE_UNITY_BUILD)
    return()
endif()

set(apartadas
    desk/host/BancoLocalMesa.cpp
    host/LeituraData.cpp
    limits/frmLimitesDifDetalhes.cpp
    planilhas/InstanteIso.cpp
    planilhas/LeitorXlsx.cpp
    planilhas/Pacote.cpp
    rede/Linha.cpp
    rede/SessaoRemota.cpp
    search/frmLista.cpp
    sensors/COSensores.cpp
    sensors/clsSensor.cpp
    tests/controls/ztList_test.cpp
    tests/equipment/clsEquipto_test.cpp
    tests/host/Deposito_test.cpp
    tests/limits/frmLimitesDifDetalhes_test.cpp
    tests/limits/frmLimitesDif_test.cpp
    tests/support/RegistroIgual.cpp)
list(TRANSFORM apartadas PREPEND "${PROJECT_SOURCE_DIR}/")
get_property(pastas DIRECTORY ${PROJECT_SOURCE_DIR} PROPERTY SUBDIRECTORIES)
set_source_files_properties(${apartadas} DIRECTORY ${PROJECT_SOURCE_DIR} ${pastas} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
# Their sources have many short names in common.
foreach(alvo IN ITEMS comando servicos servidor teste_comando tela_windows teste_mesa teste_planilhas teste_servicos teste_servidor teste_tela teste_windows)
    if(TARGET ${alvo})
        set_target_properties(${alvo} PROPERTIES UNITY_BUILD OFF)
    endif()
endforeach()
