#include "shell/Generico.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"

std::string gFunBuscaDescrMunic(std::int32_t lCodMunic)
try {
    if (lCodMunic == 0) {
        return {};
    }
    const Ref<ICursor> cursor = goGeral->MDB()->OpenRecordset(
        "SELECT * FROM Municipio WHERE COD_MUNIC = " + CStr(lCodMunic), InstantaneoSomenteLeitura, Valor(), Valor());
    std::string nome;
    if (!cursor->EOF_()) {
        nome = cursor->Fields("NOME_MUNICIPIO")->Value().CStr();
    }
    cursor->Close();
    return nome;
} catch (...) {
    PassaFalha(" < Generico.gFunBuscaDescrMunic");
}
