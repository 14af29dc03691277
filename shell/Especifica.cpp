#include "shell/Especifica.h"

#include "equipment/COEquipamentos.h"
#include "search/CVORPesqEquip.h"
#include "search/CVorEquip.h"
#include "search/IModulo.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

namespace {

// The module's tools on the host's menus; the names are exact.
constexpr std::string_view FerramentaTrabFoto = "mnuModVOREquiptos";
constexpr std::string_view FerramentaSemTrabFoto = "mnuModNABEquiptos";

} // namespace

void Especifica::Inicializa(const Ref<Geral> &oGeral)
{
    goGeral = oGeral;
}

Ref<IForm> Especifica::ClickMenu(const std::string &sTool)
try {
    Ref<IModulo> modulo;
    if (sTool == FerramentaTrabFoto) {
        modulo = Novo<COEquipamentos>();
        modulo->SetValorCampo("TrabFoto", "1");
    } else if (sTool == FerramentaSemTrabFoto) {
        modulo = Novo<COEquipamentos>();
        modulo->SetValorCampo("TrabFoto", "2");
    }
    if (!modulo.Nada()) {
        modulo->CarregaJanela(nullptr);
        goGeral->ClickTratado = true;
    }
    return {};
} catch (...) {
    gSubMostraErro("Especifica - ClickMenu");
    return {};
}

bool Especifica::HabilitarItem(const std::string &sTool)
{
    if (sTool == FerramentaTrabFoto || sTool == FerramentaSemTrabFoto) {
        return TemPermissao("");
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

Ref<CVorEquip> Especifica::CreateCVorEquip()
{
    return Novo<CVorEquip>();
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
