#include "comando/Acesso.h"
#include "comando/ArquivoNovo.h"
#include "comando/Json.h"
#include "comando/Pedido.h"
#include "comando/Subcomando.h"
#include "host/Conversoes.h"
#include "services/CalendarioDePrazos.h"
#include "services/Prazos.h"
#include "services/PrazosED.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

namespace comando {

namespace {

using mesa::EstadoDePrazo;

// The states, by a word each.
constexpr std::array<std::pair<const char *, EstadoDePrazo>, 10> EstadosDitos = {
    {{"valido", EstadoDePrazo::Valido},
     {"90", EstadoDePrazo::Em90},
     {"60", EstadoDePrazo::Em60},
     {"30", EstadoDePrazo::Em30},
     {"vencido", EstadoDePrazo::Vencido},
     {"lacuna", EstadoDePrazo::Lacuna},
     {"nunca-aferido", EstadoDePrazo::NuncaAferido},
     {"sem-documento", EstadoDePrazo::SemDocumento},
     {"varias-em-vigor", EstadoDePrazo::VariasEmVigor},
     {"dispensado", EstadoDePrazo::Dispensado}}};

std::string Palavras()
{
    std::string palavras;
    for (const auto &um : EstadosDitos) {
        palavras += (palavras.empty() ? "" : ", ") + std::string(um.first);
    }
    return palavras;
}

std::string PalavraDo(std::uint8_t estado)
{
    const auto dito =
        std::ranges::find(EstadosDitos, static_cast<EstadoDePrazo>(estado), [](const auto &um) { return um.second; });
    return dito == EstadosDitos.end() ? "" : dito->first;
}

// Whether nobody has to do anything about an equipment because of it.
bool EmPaz(EstadoDePrazo estado)
{
    return estado == EstadoDePrazo::Valido || estado == EstadoDePrazo::Dispensado;
}

Json EmJson(const mesa::PrazoED &prazo)
{
    const bool comDia = !prazo.DataVencimento.Valor().Vazia();
    return {{"numero", prazo.NroIntEquip.Valor()},
            {"codigo", prazo.Codigo.Valor()},
            {"subcodigo", prazo.SubCodigo.Valor()},
            {"tipo", prazo.TipoEquip.Valor()},
            {"setor", prazo.SetorInc.Valor().empty() ? Json() : Json(prazo.SetorInc.Valor())},
            {"sensor", prazo.NroIntSensor == 0 ? Json() : Json(prazo.NroSensor.Valor())},
            {"estado", PalavraDo(prazo.Estado)},
            {"certificado", prazo.Numero.Valor().empty() ? Json() : Json(prazo.Numero.Valor())},
            {"vencimento", comDia ? Json(Format(prazo.DataVencimento, "yyyy-mm-dd")) : Json()},
            {"dias", comDia ? Json(prazo.Dias.Valor()) : Json()}};
}

class ComandoPrazos : public Subcomando {
  public:
    std::string Nome() const override { return "prazos"; }
    std::string Resumo() const override
    {
        return "Conta os equipamentos por prazo da aferição, ou lista os de um prazo e os que mudaram desde ontem.";
    }

    void Descreve(CLI::App &linha) override
    {
        linha.add_option("--estado", m_Estado, "Lista os equipamentos neste estado: " + Palavras() + ".")
            ->type_name("ESTADO")
            ->check([](const std::string &dito) {
                const bool ha = std::ranges::any_of(EstadosDitos, [&](const auto &um) { return dito == um.first; });
                return ha ? "" : "Não existe o estado \"" + dito + "\"; há " + Palavras() + ".";
            });
        linha
            .add_flag("--desde-ontem", m_DesdeOntem,
                      "Lista só os que hoje estão num estado em que ontem não estavam; os válidos e os dispensados, só "
                      "com --estado. Sem nenhum, não escreve nada.")
            ->disable_flag_override();
        linha
            .add_option(
                "--calendario", m_Calendario,
                "Grava os vencimentos da lista no arquivo ARQ, que não pode existir e que calendários importam.")
            ->type_name("ARQ");
        linha.add_flag("--json", m_Json, "Responde em JSON, para programas.")->disable_flag_override();
        m_Acesso.Descreve(linha);
    }

    Codigo Faz(Ambiente &ambiente) override
    {
        m_Acesso.Resolve(ambiente);
        if (!m_Calendario.empty()) {
            ExigeLivre(m_Calendario);
        }
        const Ref<mesa::SessaoServico> sessao = m_Acesso.Entra(ambiente);
        const auto painel = Painel(sessao);
        DizFalhas(ambiente, *painel);
        if (m_Estado.empty() && !m_DesdeOntem && m_Calendario.empty()) {
            Conta(ambiente, *painel);
            return Codigo::Feito;
        }
        m_Momento = painel->ComoEm.Valor();
        for (const auto &[palavra, estado] : EstadosDitos) {
            if (m_Estado.empty() ? !m_DesdeOntem || !EmPaz(estado) : m_Estado == palavra) {
                Le(sessao, estado);
            }
        }
        if (!m_Calendario.empty()) {
            GravaCalendario(ambiente);
        }
        Lista(ambiente);
        return Codigo::Feito;
    }

  private:
    Ref<mesa::PainelPrazosED> Painel(const Ref<mesa::SessaoServico> &sessao) const
    {
        return Pede<mesa::PainelPrazosED>(sessao, "PrazosRN", "consultaPainel", Novo<mesa::PainelPrazosED>());
    }

    // Those whose state cannot be told, which are in no list and in no number.
    static void DizFalhas(Ambiente &ambiente, const mesa::PainelPrazosED &painel)
    {
        const auto &falhas = painel.Falhas.Valor();
        const std::int32_t ditas = falhas ? falhas->Count() : 0;
        for (std::int32_t n = 1; n <= ditas; ++n) {
            ambiente.Erros << falhas->Item(n)->Motivo.Valor() << '\n';
        }
        if (painel.NaoContados > ditas) {
            ambiente.Erros << "E mais " << painel.NaoContados - ditas << " assim.\n";
        }
    }

    void Conta(Ambiente &ambiente, const mesa::PainelPrazosED &painel) const
    {
        const auto &contagens = painel.Contagens.Valor();
        Json estados = Json::array();
        for (const auto &[palavra, estado] : EstadosDitos) {
            std::int32_t quantos = 0;
            for (std::int32_t n = 1; contagens && n <= contagens->Count(); ++n) {
                if (contagens->Item(n)->Estado.Valor() == static_cast<std::uint8_t>(estado)) {
                    quantos = contagens->Item(n)->Quantos;
                }
            }
            if (m_Json) {
                estados.push_back({{"estado", palavra}, {"nome", mesa::Prazos::Nome(estado)}, {"quantos", quantos}});
            } else {
                ambiente.Saida << mesa::Prazos::Nome(estado) << ": " << quantos << '\n';
            }
        }
        if (m_Json) {
            Escreve(ambiente.Saida, Json{{"dia", Format(painel.ComoEm, "yyyy-mm-dd")},
                                         {"equipamentos", painel.Equipamentos.Valor()},
                                         {"estados", estados},
                                         {"naoContados", painel.NaoContados.Valor()}});
        }
    }

    // Those in the state at that moment.
    std::vector<Ref<mesa::PrazoED>> Todos(const Ref<mesa::SessaoServico> &sessao, EstadoDePrazo estado, Data momento)
    {
        std::vector<Ref<mesa::PrazoED>> todos;
        std::int32_t depoisDe = 0;
        std::uint8_t comFoto = 0;
        do {
            auto pedido = Novo<mesa::ListaPrazosED>();
            pedido->Estado = static_cast<std::uint8_t>(estado);
            pedido->DepoisDe = depoisDe;
            pedido->TrabFoto = comFoto;
            pedido->ComoEm = momento;
            const auto pagina = Pede<mesa::ListaPrazosED>(sessao, "PrazosRN", "listaPrazos", pedido);
            const auto &prazos = pagina->Prazos.Valor();
            for (std::int32_t n = 1; prazos && n <= prazos->Count(); ++n) {
                todos.push_back(prazos->Item(n));
            }
            m_Registro = pagina->Registro;
            depoisDe = pagina->DepoisDe;
            comFoto = pagina->TrabFoto;
        } while (comFoto != 0);
        return todos;
    }

    // Those in the state that are asked for. Whether one was in it yesterday already the registry says by the same
    // rule.
    void Le(const Ref<mesa::SessaoServico> &sessao, EstadoDePrazo estado)
    {
        std::vector<Ref<mesa::PrazoED>> hoje = Todos(sessao, estado, m_Momento);
        if (m_DesdeOntem && !hoje.empty()) {
            std::set<std::int32_t> ontem;
            for (const Ref<mesa::PrazoED> &um : Todos(sessao, estado, m_Momento.MaisDias(-1))) {
                ontem.insert(um->NroIntEquip);
            }
            std::erase_if(hoje, [&](const Ref<mesa::PrazoED> &um) { return ontem.contains(um->NroIntEquip); });
        }
        m_Prazos.insert(m_Prazos.end(), hoje.begin(), hoje.end());
    }

    void GravaCalendario(Ambiente &ambiente) const
    {
        mesa::CalendarioDePrazos calendario(m_Registro, ambiente.Agora());
        for (const Ref<mesa::PrazoED> &um : m_Prazos) {
            calendario.Poe(*um, "Equipamento do tipo " + um->TipoEquip.Valor());
        }
        if (calendario.Quantos() > 0) {
            const std::string texto = calendario.Texto();
            GravaNovo(m_Calendario, Bytes(texto.begin(), texto.end()));
        } else if (!m_DesdeOntem) {
            ambiente.Erros << "Nenhum dos equipamentos tem vencimento: o arquivo " << m_Calendario
                           << " não foi gravado.\n";
        }
    }

    void Lista(Ambiente &ambiente) const
    {
        Json todos = Json::array();
        for (const Ref<mesa::PrazoED> &um : m_Prazos) {
            if (m_Json) {
                todos.push_back(EmJson(*um));
                continue;
            }
            const bool comDia = !um->DataVencimento.Valor().Vazia();
            ambiente.Saida << um->Codigo.Valor() << '\t'
                           << mesa::Prazos::Nome(static_cast<EstadoDePrazo>(um->Estado.Valor())) << '\t'
                           << (comDia ? Format(um->DataVencimento, "dd/mm/yyyy") : "") << '\t'
                           << (comDia ? CStr(um->Dias.Valor()) : "") << '\t' << um->Numero.Valor() << '\n';
        }
        if (m_Json && !(m_DesdeOntem && m_Prazos.empty())) {
            Escreve(ambiente.Saida, Json{{"prazos", todos}});
        }
    }

    Acesso m_Acesso{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    std::string m_Estado;
    bool m_DesdeOntem = false;
    std::string m_Calendario;
    bool m_Json = false;
    Data m_Momento; // of which the lists are
    std::vector<Ref<mesa::PrazoED>> m_Prazos;
    std::string m_Registro;
};

const Conhecido conhecido(FazUm<ComandoPrazos>);

} // namespace

} // namespace comando
