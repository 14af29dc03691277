#include "tests/support/Estradas.h"

Percurso EstradaDeUmEquipamento(std::string &naLista)
{
    Percurso percurso;
    percurso.Respostas["Confirma a alteração?"] = true;
    percurso.Janelas["frmLista"] = [&naLista](PessoaNaTela &p) {
        p.Localiza("ztlLista");
        p.EscolheMenu("ztlLista", "mnuZTLObjEditar");
        naLista = p.Celula("ztlLista", 1, "Descrição");
        p.Fecha();
    };
    percurso.Janelas["frmEquipDetalhes"] = [](PessoaNaTela &p) {
        p.Abre("sstDados", 2);
        p.ClicaLinha("ztListaSensor", 1);
        p.EscolheMenu("ztListaSensor", "mnuZTLObjEditar");
        p.Abre("sstDados", 0);
        p.Preenche("txtDescricao", "Radar da saída");
        p.Clica("ztCmdOK");
    };
    percurso.Janelas["frmEquipSensores"] = [](PessoaNaTela &p) {
        p.Preenche("txtLocalInfr", "Rua B");
        p.Clica("cmdOK");
    };
    return percurso;
}
