#include "shell/Especifica.h"

#include "search/CVORPesqEquip.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

void Especifica::Inicializa(const Ref<Geral> &oGeral)
{
    goGeral = oGeral;
}

Ref<IForm> Especifica::ClickMenu(const std::string &)
{
    return {};
}

bool Especifica::HabilitarItem(const std::string &sTool)
{
    if (sTool == "mnuModVOREquiptos" || sTool == "mnuModNABEquiptos") {
        return goGeral->TemPermissao("NAB", "VOR-EQP-CS", "", nullptr);
    }
    return false;
}

void Especifica::HabilitarMenu()
{
    EfetuaLogon();
}

void Especifica::Menu(ItensMenu &) {}

void Especifica::MenuAuxiliar(ItensMenu &oItens)
{
    oItens.assign(1, nullptr);
}

Ref<CVORPesqEquip> Especifica::CreateCVORPesqEquip()
{
    return Novo<CVORPesqEquip>();
}

void Especifica::ImprimeAfericaoVigenteEquipto(std::int32_t, std::optional<std::int32_t>, std::optional<std::int32_t>,
                                               std::optional<std::string>)
{
    throw Falha(-1, std::string(NomeComponente) + ".Especifica",
                "AVISO: Método ImprimeAfericaoVigenteEquipto depreciado");
}

void Especifica::LiberaServicos() noexcept
{
    ::LiberaServicos();
}

void Especifica::EfetuaLogon()
try {
    const Ref<IobjMTM> objMTM = goGeral->objMTM();
    const Ref<IobjSCA> objSCA = goGeral->objSCA();
    const Ref<IoAppEXE> oAppEXE = goGeral->oAppEXE();
    ObjGlobalVor()->InicializaSessao(objMTM, objSCA, oAppEXE, nullptr);
    goMensagem()->DefineTitulo(oAppEXE->Title());
    const Ref<ICredencial> credencial = ObjGlobalVor()->ObtemCredencial();
    glCredencial = credencial->Credencial();
    glCodMunicLogon = credencial->CodMunic();
} catch (...) {
    gSubMostraErro("Especifica - EfetuaLogon");
}

Ref<ITransacao> Especifica::ObtemTransacao(const std::string &)
{
    throw Falha(NumeroFalha::MembroInexistente);
}
