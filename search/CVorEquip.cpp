#include "search/CVorEquip.h"

#include "equipment/COEquipamentos.h"
#include "host/HostServices.h"
#include "shell/ChamadaRN.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "shell/clsListaParametros.h"

namespace {

constexpr std::int16_t TipoConsultaVigente = 1;
constexpr std::int16_t DiretorioTemporario = 99;
constexpr std::string_view PrefixoArquivo = "~VORAFER";

std::string PastaTemporaria()
{
    return goDiretorios()->ObtemDiretorio(DiretorioTemporario, "");
}

// Internal number of the one active equipment of that code in the local database; 0 when there is not exactly one.
std::int32_t NumeroDoCodigo(const std::string &sCodEquip, const std::string &sTipoEquip)
{
    std::string sql = "         SELECT NroIntEquip "
                      "    FROM VOREQUIPTO "
                      "   WHERE ClienteInc = '" +
                      goGeral->objMTM()->ClienteLogado() +
                      "'"
                      "     AND UCASE(Codigo) = '" +
                      UCase(sCodEquip) +
                      "'"
                      "     AND Ativo = 1 ";
    if (!sTipoEquip.empty()) {
        sql += " AND TipoEquip = '" + sTipoEquip + "'";
    }
    std::int32_t numero = 0;
    Ref<ICursor> cursor = goGeral->MDB()->OpenRecordset(sql, InstantaneoSomenteLeitura, Valor(), Valor());
    if (cursor->RecordCount() == 1) {
        numero = cursor->Fields("NroIntEquip")->Value().CLng();
    }
    cursor->Close();
    return numero;
}

Ref<RelatorioAfericaoED> PedidoDoCertificado(std::int32_t lCodOat, const std::string &sSerie,
                                             const std::string &sTxtIdent)
{
    auto pedido = Novo<RelatorioAfericaoED>();
    pedido->CodOat = lCodOat;
    pedido->Serie = sSerie;
    pedido->TxtIdent = sTxtIdent;
    return pedido;
}

} // namespace

bool CVorEquip::SelecionaEquipamento(const std::string &sCodEquip, const std::string &sTipoEquip, Data dtInfracao)
try {
    m_NroIntEquip = 0;
    m_Modelo.clear();
    m_Codigo.clear();
    m_VelocPerm = 0;
    m_NroInmetro.clear();
    m_MarcaInmetro.clear();
    m_DtVerifInmetro = {};

    auto parametros = Novo<clsListaParametros>();
    if (!sTipoEquip.empty()) {
        parametros->Add("TipoEquip", sTipoEquip);
    }
    if (!sCodEquip.empty()) {
        parametros->Add("Criterio", "1");
        parametros->Add("CodEquip", sCodEquip);
    }
    parametros->Add("TrabFoto", "2");
    if (!dtInfracao.Vazia()) {
        parametros->Add("DtInfracao", CStr(dtInfracao));
    }
    auto equipamentos = Novo<COEquipamentos>();
    if (!equipamentos->CarregaSelecao(parametros)) {
        return false;
    }
    SetaDadosEquipto(equipamentos->pEquiptoED(), equipamentos->pAfericaoED());
    return true;
} catch (...) {
    PassaFalha(" < CVorEquip.SelecionaEquipamento");
}

bool CVorEquip::BuscaEquipamento(const std::string &sCodEquip, const std::string &sTipoEquip, Data dtInfracao)
try {
    const std::int32_t nroIntEquip = NumeroDoCodigo(sCodEquip, sTipoEquip);
    if (nroIntEquip <= 0) {
        return false;
    }
    Ref<EquiptoED> equipto = ConsultaSimplesEquipto(nroIntEquip);
    Ref<AfericaoED> afericao;
    if (!dtInfracao.Vazia()) {
        afericao = gFunConsultaAfericaoVigente(nroIntEquip, dtInfracao, TipoConsultaVigente);
        if (afericao->NroIntAfericao == 0) {
            goMensagem()->ExibeMensagem("Equipamento não possui Aferição Vigente para a data de Infração.", nullptr);
            return false;
        }
    }
    SetaDadosEquipto(equipto, afericao);
    return true;
} catch (...) {
    PassaFalha(" < CVorEquip.BuscaEquipamento");
}

void CVorEquip::SetaDadosEquipto(const Ref<EquiptoED> &oEquiptoED, const Ref<AfericaoED> &oAfericaoED)
try {
    m_NroIntEquip = oEquiptoED->NroIntEquip;
    m_Modelo = oEquiptoED->Modelo;
    m_Codigo = oEquiptoED->Codigo;
    m_VelocPerm = oEquiptoED->VelocPermitida;
    if (oAfericaoED) {
        m_NroInmetro = oAfericaoED->Numero;
        m_MarcaInmetro = oAfericaoED->Marca;
        m_DtVerifInmetro = oAfericaoED->DataVerificacao;
    }
} catch (...) {
    PassaFalha(" < CVorEquip.SetaDadosEquipto");
}

Ref<EquiptoED> CVorEquip::ConsultaSimplesEquipto(std::int32_t lNroIntEquip)
try {
    return ConsultaRN<EquiptoED>("EquiptoRN", "consultaSimples",
                                 [&] { return SoComNumero(&EquiptoED::NroIntEquip, lNroIntEquip); })
        .value_or(nullptr);
} catch (...) {
    PassaFalha(" < CVorEquip.ConsultaSimplesEquipto");
}

bool CVorEquip::ImpCertificadoAfericaoEquipto(std::int32_t lCodOat, const std::string &sSerie,
                                              const std::string &sTxtIdent, bool)
{
    const auto resposta = ConsultaRN<RelatorioAfericaoED>(
        "RelatorioRN", "consultaRelatorioRVOR011", [&] { return PedidoDoCertificado(lCodOat, sSerie, sTxtIdent); });
    if (!resposta) {
        return false;
    }
    const std::string arquivo = PastaTemporaria() + std::string(PrefixoArquivo) + CStr(lCodOat) + "-" + sSerie + ".pdf";
    GravaNoArquivo((*resposta)->Documento, arquivo);
    Ref<IDocumentoPDF> documento = Host().CriaDocumentoPDF();
    documento->DefineArquivoPDF(arquivo);
    return documento->Mostra(false);
}

void CVorEquip::GravaNoArquivo(const std::string &sConteudo, const std::string &sArquivo)
try {
    Plataforma()->GravaArquivo(sArquivo, {}); // a file that cannot be opened ends it before anything is converted
    Plataforma()->GravaArquivo(sArquivo, goMensagem()->TextoParaBytes(sConteudo));
} catch (...) {
    PassaFalha(" < CVorEquip.GravaNoArquivo");
}

void CVorEquip::LimpaArqTemp()
try {
    const std::string pasta = PastaTemporaria();
    std::string nome = Plataforma()->PrimeiroArquivo(pasta + std::string(PrefixoArquivo) + "*.pdf");
    while (!nome.empty()) {
        Plataforma()->ApagaArquivo(pasta + nome);
        nome = Plataforma()->ProximoArquivo();
    }
} catch (...) {
    PassaFalha(" < CVorEquip.LimpaArqTemp");
}
