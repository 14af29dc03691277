#include "shell/ModGeral.h"

#include "shell/ChamadaRN.h"
#include "shell/Geral.h"

#include <utility>

namespace {

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
    Ref<IMensagem> &mensagem = EsteComponente().Mensagem;
    if (mensagem.Nada()) {
        Ref<IMensagem> nova = Host().CriaMensagem();
        nova->DefineTitulo(goGeral->oAppEXE()->ProductName());
        mensagem = nova;
    }
    return mensagem;
}

Ref<IDadosVor> goDadosVor()
{
    Ref<IDadosVor> &dadosVor = EsteComponente().DadosVor;
    if (dadosVor.Nada()) {
        Ref<IDadosVor> novo = Host().CriaDadosVor();
        novo->Inicializa(goGeral->ObjInterface);
        dadosVor = novo;
    }
    return dadosVor;
}

Ref<IDiretorios> goDiretorios()
{
    Ref<IDiretorios> &diretorios = EsteComponente().Diretorios;
    if (diretorios.Nada()) {
        diretorios = Host().CriaDiretorios();
    }
    return diretorios;
}

Ref<IGateway> goGateway()
{
    Ref<IGateway> &gateway = EsteComponente().Gateway;
    if (gateway.Nada()) {
        gateway = goGeral->TrataBD()->pQMR()->Sessao()->ObtemGateway();
    }
    return gateway;
}

Ref<IObjGlobalVor> ObjGlobalVor()
{
    Ref<IObjGlobalVor> &objGlobalVor = EsteComponente().ObjGlobalVor;
    if (objGlobalVor.Nada()) {
        objGlobalVor = Host().CriaObjGlobalVor();
    }
    return objGlobalVor;
}

void LiberaServicos() noexcept
{
    Componente &componente = EsteComponente();
    if (!componente.DadosVor.Nada()) {
        IgnoraErro([&] { componente.DadosVor->Finaliza(); });
        componente.DadosVor = nullptr;
    }
    componente.Gateway = nullptr;
    componente.Mensagem = nullptr;
    componente.Diretorios = nullptr;
}

void DescarregaModulo() noexcept
{
    Componente &componente = EsteComponente();
    Componente descarregado;
    descarregado.Host = componente.Host;
    descarregado.UltimoHwnd = componente.UltimoHwnd; // a handle is not given twice
    std::swap(componente, descarregado);
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

bool TemPermissao(const std::string &acao)
{
    return goGeral->TemPermissao("NAB", "VOR-EQP-CS", acao, nullptr);
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

void LiberaFormsCompartilhados() noexcept
{
    const auto liberados = std::exchange(EsteComponente().Forms, {});
}
