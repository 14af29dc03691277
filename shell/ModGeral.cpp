#include "shell/ModGeral.h"

#include "shell/ChamadaRN.h"
#include "shell/Geral.h"

#include <utility>
#include <vector>

RefFraca<Geral> goGeral;
std::int32_t glCredencial = 0;
std::int32_t glCodMunicLogon = 0;

namespace {

Ref<IMensagem> g_Mensagem;
Ref<IDadosVor> g_DadosVor;
Ref<IDiretorios> g_Diretorios;
Ref<IGateway> g_Gateway;
Ref<IObjGlobalVor> g_ObjGlobalVor;

std::vector<void (*)()> g_LiberaForms;

// File name without the extension, a point and three letters.
std::string SemExtensao(const std::string &nome)
{
    const std::size_t tamanho = Len(nome);
    if (tamanho < 4) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    return Left(nome, tamanho - 4);
}

Ref<ConsultaAfericaoED> PedidoDaVigente(std::int32_t lNroIntEquip, Data dtInfracao, const Valor &vTipoConsulta)
{
    auto pedido = Novo<ConsultaAfericaoED>();
    pedido->NroIntEquip = lNroIntEquip;
    pedido->TipoConsulta = vTipoConsulta.CInt();
    pedido->DtInfracao = dtInfracao;
    return pedido;
}

} // namespace

// A singleton is kept only once it is ready, so that a failed preparation is tried again at the next use.

Ref<IMensagem> goMensagem()
{
    if (g_Mensagem.Nada()) {
        Ref<IMensagem> nova = Host().CriaMensagem();
        nova->DefineTitulo(goGeral->oAppEXE()->ProductName());
        g_Mensagem = nova;
    }
    return g_Mensagem;
}

Ref<IDadosVor> goDadosVor()
{
    if (g_DadosVor.Nada()) {
        Ref<IDadosVor> novo = Host().CriaDadosVor();
        novo->Inicializa(goGeral->ObjInterface);
        g_DadosVor = novo;
    }
    return g_DadosVor;
}

Ref<IDiretorios> goDiretorios()
{
    if (g_Diretorios.Nada()) {
        g_Diretorios = Host().CriaDiretorios();
    }
    return g_Diretorios;
}

Ref<IGateway> goGateway()
{
    if (g_Gateway.Nada()) {
        g_Gateway = goGeral->TrataBD()->pQMR()->Sessao()->ObtemGateway();
    }
    return g_Gateway;
}

Ref<IObjGlobalVor> ObjGlobalVor()
{
    if (g_ObjGlobalVor.Nada()) {
        g_ObjGlobalVor = Host().CriaObjGlobalVor();
    }
    return g_ObjGlobalVor;
}

void LiberaServicos() noexcept
{
    if (!g_DadosVor.Nada()) {
        IgnoraErro([] { g_DadosVor->Finaliza(); });
        g_DadosVor = nullptr;
    }
    g_Gateway = nullptr;
    g_Mensagem = nullptr;
    g_Diretorios = nullptr;
}

void DescarregaModulo() noexcept
{
    LiberaFormsCompartilhados();
    g_DadosVor = nullptr;
    g_Gateway = nullptr;
    g_Mensagem = nullptr;
    g_Diretorios = nullptr;
    g_ObjGlobalVor = nullptr;
    goGeral = nullptr;
    glCredencial = 0;
    glCodMunicLogon = 0;
}

void gSubMostraErro(std::string_view sContexto) noexcept
{
    const Falha falha = FalhaCorrente();
    gSubMostraErro(sContexto, falha.Numero, falha.Descricao, falha.Fonte);
}

void gSubMostraErro(std::string_view sContexto, std::int32_t lNumero, const std::string &sDescricao,
                    const std::string &sFonte) noexcept
{
    IgnoraErro([] { Plataforma()->DefinePonteiro(PonteiroNormal); });
    // The fault is shown even when its title, or the message service that gets the same title, cannot be had.
    std::string titulo;
    IgnoraErro([&] { titulo = goGeral->oAppEXE()->ProductName(); });
    Ref<IMensagem> mensagem;
    IgnoraErro([&] { mensagem = goMensagem(); });
    IgnoraErro([&] {
        if (mensagem.Nada()) {
            mensagem = Host().CriaMensagem();
        }
    });
    IgnoraErro([&] {
        if (mensagem.Nada()) {
            Plataforma()->CaixaInformacao(sDescricao, titulo);
        } else {
            mensagem->ExibeErro(std::string(sContexto), lNumero, sDescricao, sFonte, titulo);
        }
    });
}

std::string gFunDescrEquipto(const std::string &sTipo)
try {
    if (sTipo == "C") {
        return "Caetano";
    }
    if (sTipo == "L") {
        return "Lombada";
    }
    if (sTipo == "P") {
        return "Pardal";
    }
    if (sTipo == "M") {
        return "Pardal Móvel";
    }
    if (sTipo == "R") {
        return "Radar Fotográfico";
    }
    if (sTipo == "A") {
        return "Operado por Agente";
    }
    if (sTipo == "E") {
        return "Etilômetro";
    }
    if (sTipo == "F") {
        return "Agente Eletrônico";
    }
    if (sTipo == "U") {
        return "Luxímetro";
    }
    if (sTipo == "V") {
        return "Verif. Estac. Rotativo";
    }
    return "Indefinido";
} catch (...) {
    PassaFalha(" < ModGeral.gFunDescrEquipto");
}

std::string gFunDescrTipoAgente(std::int16_t iTipo)
try {
    switch (iTipo) {
    case 1:
        return "Fixo";
    case 2:
        return "Estático";
    case 3:
        return "Portátil";
    default:
        return "Indefinido";
    }
} catch (...) {
    PassaFalha(" < ModGeral.gFunDescrEquipto"); // the same text as the other's
}

void gSubCarregaMunicipios(const Ref<IztCombo> &cbo)
try {
    const Ref<ICursor> cursor = goGeral->MDB()->OpenRecordset(
        "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO",
        InstantaneoSomenteLeitura, Valor(), Valor());
    while (!cursor->EOF_()) {
        cbo->AdicionaItem(cursor->Fields("NOME_MUNICIPIO")->Value().Texto() + "|" +
                          cursor->Fields("COD_MUNIC")->Value().Texto());
        cursor->MoveNext();
    }
    cursor->Close();
} catch (...) {
    gSubMostraErro(".gSubCarregaMunicipios"); // nothing before the point
}

void gSubCarregaArqLayout(const Ref<IztCombo> &cbo)
try {
    cbo->Limpa();
    cbo->AdicionaItem("NENHUM");
    std::string nome = Plataforma()->PrimeiroArquivo(goDadosVor()->DirLayouts() + "*.LAY");
    while (!nome.empty()) {
        cbo->AdicionaItem(SemExtensao(nome));
        nome = Plataforma()->ProximoArquivo();
    }
} catch (...) {
    gSubMostraErro(".gSubCarregaArqLayout");
}

void gsubConfigLista(const TabelaColunas &aColunas, const Ref<IztList> &lista)
try {
    for (std::size_t posicao = 1; posicao < aColunas.size(); ++posicao) {
        const Coluna &coluna = aColunas[posicao];
        if (posicao == 1) {
            lista->AlteraPrimeiraColuna(1, std::nullopt, coluna.Titulo, coluna.Largura, coluna.Alinhamento,
                                        coluna.Marca, coluna.Largura > 0);
        } else {
            lista->AdicionaColuna(CInt(posicao), std::nullopt, coluna.Titulo, coluna.Largura, coluna.Alinhamento,
                                  coluna.Marca, coluna.Largura > 0);
        }
    }
} catch (...) {
    PassaFalha(" < gsubConfigLista"); // without a module name
}

Ref<AfericaoED> gFunConsultaAfericaoVigente(std::int32_t lNroIntEquip, Data dtInfracao, const Valor &vTipoConsulta)
try {
    return ConsultaRN<AfericaoED>("EquiptoRN", "consultaSimplesAfericaoVigente",
                                  [&] { return PedidoDaVigente(lNroIntEquip, dtInfracao, vTipoConsulta); })
        .value_or(nullptr);
} catch (...) {
    PassaFalha(" < ModGeral.gFunConsultaAfericaoVigente");
}

void gSubDefineFoco(const Ref<IFocavel> &ctl) noexcept
{
    IgnoraErro([&] {
        if (ctl->Enabled() && ctl->Visible()) {
            ctl->SetFocus();
        }
    });
    IgnoraErro([&] {
        const Ref<IForm> form = ComoTipo<IForm>(ctl); // a fault, and so nothing more to do, for a control
        if (form->WindowState() == JanelaMinimizada) {
            form->DefineWindowState(JanelaNormal);
        }
    });
}

void RegistraFormCompartilhado(void (*libera)())
{
    g_LiberaForms.push_back(libera);
}

void LiberaFormsCompartilhados() noexcept
{
    for (void (*libera)() : std::exchange(g_LiberaForms, {})) {
        IgnoraErro(libera);
    }
}
