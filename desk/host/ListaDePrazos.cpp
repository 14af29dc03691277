#include "desk/host/ListaDePrazos.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Conversoes.h"
#include "services/CalendarioDePrazos.h"
#include "services/Referencias.h"
#include "shell/ModGeral.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace mesa {

namespace {

std::string DiasEmPalavras(const PrazoED &prazo)
{
    return prazo.DataVencimento.Valor().Vazia() ? "" : CStr(prazo.Dias.Valor());
}

std::string NomeDoMunicipio(std::int32_t codigo)
{
    const Municipio *municipio = Referencias::Tabelas().AchaMunicipio(codigo);
    return municipio != nullptr ? municipio->Nome + " - " + municipio->UF : codigo == 0 ? "" : CStr(codigo);
}

constexpr const char *Cancelada = "A leitura dos prazos foi cancelada.";

// Of Colunas().
enum Coluna : std::size_t { Sensor = 5, Vencimento = 8, Dias = 9, Situacao = 10 };

std::vector<std::string> Textos(const PrazoED &prazo)
{
    const Data vence = prazo.DataVencimento;
    return {prazo.Codigo,
            prazo.SubCodigo,
            gFunDescrEquipto(prazo.TipoEquip),
            prazo.SetorInc,
            NomeDoMunicipio(prazo.CodMunic),
            prazo.NroSensor.Valor() == 0 ? "" : CStr(prazo.NroSensor.Valor()),
            prazo.Marca,
            prazo.Numero,
            vence.Vazia() ? "" : Format(vence, "dd/mm/yyyy"),
            DiasEmPalavras(prazo),
            Prazos::Nome(static_cast<EstadoDePrazo>(prazo.Estado.Valor()))};
}

} // namespace

const std::string &IconeDoPrazo(EstadoDePrazo estado)
{
    static const std::array<std::string, 11> icones{
        "",           "prazovalido",    "prazo90",     "prazo60",        "prazo30", "prazovencido", "prazolacuna",
        "prazonunca", "prazodocumento", "prazovarias", "prazodispensado"};
    return icones.at(static_cast<std::size_t>(estado));
}

std::string NomeDoGrupo(AgrupamentoDePrazos por, const std::string &chave)
{
    switch (por) {
    case AgrupamentoDePrazos::Setor:
        return chave.empty() ? "(sem setor)" : chave;
    case AgrupamentoDePrazos::Municipio: {
        const std::string nome = NomeDoMunicipio(CLng(chave));
        return nome.empty() ? "(sem município)" : nome;
    }
    case AgrupamentoDePrazos::Tipo:
        return gFunDescrEquipto(chave);
    default:
        return "";
    }
}

std::string NomeDoMes(std::int32_t mes)
{
    static const std::array<std::string, 12> nomes{"janeiro",  "fevereiro", "março",    "abril",
                                                   "maio",     "junho",     "julho",    "agosto",
                                                   "setembro", "outubro",   "novembro", "dezembro"};
    return nomes.at(static_cast<std::size_t>(mes % 100 - 1)) + " de " + CStr(mes / 100);
}

std::string MesCurto(std::int32_t mes)
{
    static const std::array<std::string, 12> nomes{"jan", "fev", "mar", "abr", "mai", "jun",
                                                   "jul", "ago", "set", "out", "nov", "dez"};
    return nomes.at(static_cast<std::size_t>(mes % 100 - 1));
}

ListaDe<DocumentoPrazoED> ComoLista(const DocumentosDanificados &danificados)
{
    auto lista = Novo<Colecao<Ref<DocumentoPrazoED>>>();
    for (const Ref<DocumentoPrazoED> &um : danificados) {
        lista->Add(um);
    }
    return lista;
}

const std::vector<std::string> &ListaDePrazos::Colunas()
{
    static const std::vector<std::string> colunas = {"Código",     "Subcódigo", "Tipo",        "Setor",
                                                     "Município",  "Sensor",    "Certificado", "Nº INMETRO",
                                                     "Vencimento", "Dias",      "Situação"};
    return colunas;
}

bool ListaDePrazos::Carrega(std::string &recusa, const Segue &segue)
{
    ListaDePrazos nova(m_Sessao, m_Recorte);
    nova.m_HaMais = true;
    nova.m_TrabFoto = 1;
    if (!nova.LeAte(LinhasPorVez, segue, recusa)) {
        return false;
    }
    *this = std::move(nova);
    return true;
}

bool ListaDePrazos::Atualiza(std::string &recusa, const Segue &segue)
{
    ListaDePrazos nova(m_Sessao, m_Recorte);
    nova.m_Recorte.ComoEm = {};
    if (!nova.Carrega(recusa, segue)) {
        return false;
    }
    *this = std::move(nova);
    return true;
}

bool ListaDePrazos::CarregaMais(std::string &recusa, const Segue &segue)
{
    return LeAte(m_Prazos.size() + LinhasPorVez, segue, recusa);
}

bool ListaDePrazos::CarregaResto(std::string &recusa, const Segue &segue)
{
    return LeAte(std::numeric_limits<std::size_t>::max(), segue, recusa);
}

bool ListaDePrazos::LeAte(std::size_t quantas, const Segue &segue, std::string &recusa)
{
    bool desistiu = false;
    const auto continua = [&] {
        desistiu =
            desistiu ||
            (segue && !segue(0, m_Prazos.size() == 1 ? "1 prazo lido" : CStr(m_Prazos.size()) + " prazos lidos"));
        return !desistiu;
    };
    const Ref<SessaoServico> sessao = m_Sessao();
    const Acompanhamento acompanha(*sessao, [&](double, const std::string &) { return continua(); });
    while (m_HaMais && m_Prazos.size() < quantas) {
        auto pedido = Novo<ListaPrazosED>();
        switch (m_Recorte.Por) {
        case AgrupamentoDePrazos::Setor:
            pedido->SetorInc = m_Recorte.Grupo;
            break;
        case AgrupamentoDePrazos::Municipio:
            pedido->CodMunic = CLng(m_Recorte.Grupo);
            break;
        case AgrupamentoDePrazos::Tipo:
            pedido->TipoEquip = m_Recorte.Grupo;
            break;
        default:
            break;
        }
        if (m_Recorte.Estado) {
            pedido->Estado = static_cast<std::uint8_t>(*m_Recorte.Estado);
        }
        if (m_Recorte.Mes != 0) {
            pedido->Mes = m_Recorte.Mes;
        }
        pedido->Danificados = ComoLista(m_Recorte.Danificados);
        if (const Data comoEm = m_ComoEm.Vazia() ? m_Recorte.ComoEm : m_ComoEm; !comoEm.Vazia()) {
            pedido->ComoEm = comoEm;
        }
        pedido->DepoisDe = m_DepoisDe;
        pedido->TrabFoto = m_TrabFoto;
        Ref<Objeto> enviado = pedido;
        Valor retorno;
        if (!sessao->Executa("PrazosRN", "listaPrazos", enviado, retorno, recusa)) {
            recusa = desistiu ? Cancelada : recusa;
            return false;
        }
        const auto pagina = retorno.Como<ListaPrazosED>();
        const ListaDe<PrazoED> &prazos = pagina->Prazos;
        for (std::int32_t n = 1; !prazos.Nada() && n <= prazos->Count(); ++n) {
            m_Prazos.push_back(prazos->Item(n));
        }
        m_DepoisDe = pagina->DepoisDe;
        m_TrabFoto = pagina->TrabFoto;
        m_HaMais = m_TrabFoto != 0;
        m_ComoEm = pagina->ComoEm;
        m_Fuso = pagina->Fuso;
        m_Registro = pagina->Registro;
        if (!continua()) {
            recusa = Cancelada;
            return false;
        }
    }
    return true;
}

void ListaDePrazos::Ordena(std::size_t coluna, bool crescente)
{
    const auto chave = [&](const PrazoED &prazo) -> std::pair<double, std::string> {
        const Data vence = prazo.DataVencimento;
        const double semVencimento = std::numeric_limits<double>::max();
        switch (coluna) {
        case Sensor:
            return {prazo.NroSensor.Valor(), ""};
        case Vencimento:
        case Dias:
            return {vence.Vazia() ? semVencimento : vence.Valor, ""};
        case Situacao:
            return {prazo.Estado.Valor(), ""};
        default:
            return {0, ChaveOrdem(Textos(prazo).at(coluna))};
        }
    };
    std::vector<std::pair<std::pair<double, std::string>, Ref<PrazoED>>> comChave;
    comChave.reserve(m_Prazos.size());
    for (const Ref<PrazoED> &prazo : m_Prazos) {
        comChave.emplace_back(chave(*prazo), prazo);
    }
    std::ranges::stable_sort(comChave, [&](const auto &um, const auto &outro) {
        return crescente ? um.first < outro.first : outro.first < um.first;
    });
    std::ranges::transform(comChave, m_Prazos.begin(), [](const auto &um) { return um.second; });
}

std::vector<std::string> ListaDePrazos::Linha(std::size_t linha) const
{
    return Textos(*m_Prazos.at(linha));
}

const std::string &ListaDePrazos::Icone(std::size_t linha) const
{
    return IconeDoPrazo(static_cast<EstadoDePrazo>(m_Prazos.at(linha)->Estado.Valor()));
}

EquipamentoRecente ListaDePrazos::Equipamento(std::size_t linha) const
{
    const PrazoED &prazo = *m_Prazos.at(linha);
    return {prazo.NroIntEquip, prazo.Codigo, prazo.TipoEquip, "", true, m_ComoEm};
}

std::string ListaDePrazos::Nota() const
{
    const std::string quantas = m_Prazos.size() == 1 ? "1 linha" : CStr(m_Prazos.size()) + " linhas";
    return quantas + (m_HaMais ? " até aqui; há mais." : ".") + " Os prazos são os do dia " +
           Format(m_ComoEm, "dd/mm/yyyy") + ".";
}

bool ListaDePrazos::TemCalendario() const
{
    return std::ranges::any_of(m_Prazos,
                               [](const Ref<PrazoED> &prazo) { return !prazo->DataVencimento.Valor().Vazia(); });
}

std::string ListaDePrazos::Calendario() const
{
    CalendarioDePrazos calendario(m_Registro, Instante(m_ComoEm, m_Fuso));
    for (const Ref<PrazoED> &prazo : m_Prazos) {
        calendario.Poe(*prazo, gFunDescrEquipto(prazo->TipoEquip));
    }
    return calendario.Quantos() == 0 ? "" : calendario.Texto();
}

} // namespace mesa
