#include "limits/COLimiteDif.h"

#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "shell/ChamadaRN.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

namespace {

constexpr std::int32_t NroColunas = 6;

std::string TextoHora(std::int32_t hhmm)
{
    return Format(CDbl(hhmm), "00:00");
}

std::string TextoVelocidade(std::int16_t veloc)
{
    return veloc > 0 ? CStr(veloc) + " Km" : " ";
}

Ref<LimiteDifED> PedidoDosLimites(std::int32_t nroIntEquip, const TipoDeLimite &tipo)
{
    auto pedido = Novo<LimiteDifED>();
    pedido->NroIntEquip = nroIntEquip;
    pedido->TipoLimite = tipo.TipoLimite;
    return pedido;
}

// The columns that limits and days have in common: times, speeds and the number by which the row is found again.
template <class RegistroED>
void PreencheLinha(TabelaTexto &tabela, const std::string &primeiraColuna, const RegistroED &item)
{
    const std::int32_t linha = tabela.AdicionaLinha();
    tabela.Celula(1, linha) = primeiraColuna;
    tabela.Celula(2, linha) = TextoHora(item.HoraInicio);
    tabela.Celula(3, linha) = TextoHora(item.HoraFim);
    tabela.Celula(4, linha) = TextoVelocidade(item.VelocPerm);
    tabela.Celula(5, linha) = TextoVelocidade(item.VelocMin);
    tabela.Celula(6, linha) = CStr(item.NroInt.Valor());
}

} // namespace

bool COLimiteDif::Carrega(const Ref<IztList> &lista, const std::string &CodEquip, std::int32_t NroIntEquip,
                          std::int16_t Tipo)
try {
    m_Tipo = TipoDeLimiteDe(Tipo);
    m_CodEquip = CodEquip;
    m_NroIntEquip = NroIntEquip;
    Prepara(lista, false);
    return Localizar();
} catch (...) {
    PassaFalha(" < COSensores.Carrega");
}

void COLimiteDif::LimpaPesquisa()
{
    if (!m_ZtList.Nada()) {
        m_ZtList->Limpa(std::nullopt);
    }
    HabilitaMenu();
}

TabelaColunas COLimiteDif::Colunas() const
try {
    TabelaColunas colunas(NroColunas + 1);
    colunas[1] = {"Dia", 1140};
    colunas[2] = {"Hora Início", 1094};
    colunas[3] = {"Hora Fim", 1019};
    colunas[4] = {"Veloc. Perm.", static_cast<std::int16_t>(m_Tipo.ComVelocidade ? 1140 : 0)};
    colunas[5] = {"Veloc. Mín.", static_cast<std::int16_t>(m_Tipo.ComVelocidade ? 1094 : 0)};
    colunas[6] = {"NroInt", 0};
    return colunas;
} catch (...) {
    PassaFalha(" < COLimiteDif.Colunas (Property Get)");
}

bool COLimiteDif::Localizar()
{
    if (DescrModulo().empty()) {
        return false;
    }
    return m_Tipo.DaSemana() ? LocalizarLimitesDif() : LocalizarDiasEspecificos();
}

bool COLimiteDif::LocalizarLimitesDif()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    m_ZtList->Limpa(std::nullopt);
    const auto resposta =
        ConsultaRN<EquiptoED>("EquiptoRN", m_Tipo.Lista, [&] { return PedidoDosLimites(m_NroIntEquip, m_Tipo); });
    if (resposta) {
        const auto &limites = (*resposta)->ListaLimiteDif.Valor();
        if (limites) {
            TabelaTexto tabela(NroColunas);
            for (std::int32_t posicao = 1; posicao <= limites->Count(); ++posicao) {
                const auto &limite = limites->Item(posicao);
                PreencheLinha(tabela, fBuscaNomeDia(limite->Dia), *limite);
                m_VersoesLidas[limite->NroInt] = limite->VersaoLida;
            }
            m_ZtList->CarregaItens(tabela);
        }
        HabilitaMenu();
    }
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return resposta.has_value();
} catch (...) {
    PassaFalha(" < COLimiteDif.LocalizarLimitesDif");
}

bool COLimiteDif::LocalizarDiasEspecificos()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    m_ZtList->Limpa(std::nullopt);
    const auto resposta = ConsultaRN<EquiptoED>(
        "EquiptoRN", m_Tipo.Lista, [&] { return SoComNumero(&DiaEspecificoED::NroIntEquip, m_NroIntEquip); });
    if (resposta) {
        const auto &dias = (*resposta)->ListaDiaEspecifico.Valor();
        if (dias) {
            TabelaTexto tabela(NroColunas);
            for (std::int32_t posicao = 1; posicao <= dias->Count(); ++posicao) {
                const auto &dia = dias->Item(posicao);
                PreencheLinha(tabela, Format(dia->Data, "dd/mm/yyyy"), *dia);
                m_VersoesLidas[dia->NroInt] = dia->VersaoLida;
            }
            m_ZtList->CarregaItens(tabela);
        }
        HabilitaMenu();
    }
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return resposta.has_value();
} catch (...) {
    PassaFalha(" < COLimiteDif.LocalizarDiasEspecificos");
}

void COLimiteDif::BloqueiaMenu()
{
    BloqueiaSemPermissao(m_ZtList.Alvo(), MenuLista::Novo, "I");
    BloqueiaSemPermissao(m_ZtList.Alvo(), MenuLista::Editar, "A");
    BloqueiaSemPermissao(m_ZtList.Alvo(), MenuLista::Excluir, "E");
}

void COLimiteDif::Atualizar()
try {
    Localizar();
    gSubDefineFoco(m_ZtList.Alvo());
} catch (...) {
    PassaFalha(" < COLimiteDif.Atualizar");
}

void COLimiteDif::Novo()
try {
    if (FormCompartilhado<frmLimitesDifDetalhes>()->CarregaInclusao(m_Tipo.Tipo, m_NroIntEquip, m_CodEquip)) {
        Atualizar();
    }
} catch (...) {
    PassaFalha(" < COLimiteDif.Novo");
}

void COLimiteDif::Editar()
try {
    const std::int32_t nroInt = CLng(m_ZtList->Celula(m_ZtList->ItemAtual(), "NroInt"));
    if (FormCompartilhado<frmLimitesDifDetalhes>()->CarregaEdicao(m_Tipo.Tipo, m_CodEquip, nroInt)) {
        Atualizar();
    }
} catch (...) {
    PassaFalha(" < COLimiteDif.Editar");
}

void COLimiteDif::Detalhes()
try {
    const std::int32_t nroInt = CLng(m_ZtList->Celula(m_ZtList->ItemAtual(), "NroInt"));
    ::Novo<frmLimitesDifDetalhes>()->CarregaDetalhes(m_Tipo.Tipo, m_CodEquip, nroInt);
} catch (...) {
    PassaFalha(" < COLimiteDif.Editar");
}

bool COLimiteDif::Excluir(std::int32_t linha)
try {
    if (!Plataforma()->PerguntaSimNao("Confirma a exclusão deste " + DescrModulo() + "?", "Atenção", false)) {
        return false;
    }
    const std::int32_t nroInt = CLng(m_ZtList->Celula(linha, "NroInt"));
    return m_Tipo.DaSemana() ? ExcluirLimiteDif(nroInt) : ExcluirDiaEspec(nroInt);
} catch (...) {
    PassaFalha(" < COLimiteDif.Excluir");
}

template <class RegistroED> Ref<RegistroED> COLimiteDif::PedidoDeExclusao(std::int32_t nroInt) const
{
    auto pedido = SoComNumero(&RegistroED::NroInt, nroInt);
    const auto lida = m_VersoesLidas.find(nroInt);
    pedido->VersaoLida = lida == m_VersoesLidas.end() ? 0 : lida->second;
    return pedido;
}

bool COLimiteDif::ExcluirLimiteDif(std::int32_t nroInt)
try {
    if (!ComandaRN("EquiptoRN", m_Tipo.Desativa, [&] { return PedidoDeExclusao<LimiteDifED>(nroInt); })) {
        return false;
    }
    goMensagem()->ExibeMensagem("Limite excluído com sucesso!", nullptr);
    return true;
} catch (...) {
    PassaFalha(" < COLimiteDif.ExcluirLimiteDif");
}

bool COLimiteDif::ExcluirDiaEspec(std::int32_t nroInt)
try {
    if (!ComandaRN("EquiptoRN", m_Tipo.Desativa, [&] { return PedidoDeExclusao<DiaEspecificoED>(nroInt); })) {
        return false;
    }
    goMensagem()->ExibeMensagem("Dia específico excluído com sucesso!", nullptr);
    return true;
} catch (...) {
    PassaFalha(" < COLimiteDif.ExcluirDiaEspec");
}

std::string COLimiteDif::fBuscaNomeDia(std::uint8_t dia)
try {
    switch (dia) {
    case 1:
        return "Domingo";
    case 2:
        return "Segunda";
    case 3:
        return "Terça";
    case 4:
        return "Quarta";
    case 5:
        return "Quinta";
    case 6:
        return "Sexta";
    case 7:
        return "Sábado";
    case 8:
        return "Feriado";
    default:
        return "";
    }
} catch (...) {
    PassaFalha(" < COLimiteDif.fBuscaNomeDia");
}
