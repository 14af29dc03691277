#include "comando/Acesso.h"
#include "comando/ArquivoNovo.h"
#include "comando/Dia.h"
#include "comando/Fim.h"
#include "comando/Json.h"
#include "comando/Pedido.h"
#include "comando/Subcomando.h"
#include "host/ConsultaAfericaoED.h"
#include "host/Conversoes.h"
#include "host/EquiptoED.h"
#include "host/Indicador.h"
#include "host/ListaEquiptoED.h"
#include "host/Texto.h"

#include <ostream>

namespace comando {

namespace {

constexpr std::int16_t TipoConsultaVigente = 1;
constexpr std::uint8_t Declaracao = 2;

// An equipment, and what was in force of it; Nothing when nothing was.
struct Achado {
    Ref<EquiptoED> Equipamento;
    Ref<AfericaoED> Vigente;
};

class ComandoConsulta : public Subcomando {
  public:
    std::string Nome() const override { return "consulta"; }
    std::string Resumo() const override { return "Diz que aferição de um equipamento estava vigente num dia."; }

    void Descreve(CLI::App &linha) override
    {
        CLI::Option *codigo =
            linha.add_option("--codigo", m_Codigo, "O equipamento, pelo código inteiro; maiúsculas não contam.")
                ->type_name("COD");
        linha.add_option("--numero", m_Numero, "O equipamento, pelo número interno.")->type_name("N")->excludes(codigo);
        linha.add_option("--dia", m_Dia, "O dia, como 20/11/2026 ou 2026-11-20.")->type_name("DIA")->required();
        linha.add_option("--hora", m_Hora, "A hora, como 14:30 ou 14:30:05, que acompanha a resposta.")
            ->type_name("HORA");
        linha
            .add_option("--certificado", m_Certificado,
                        "Grava também o certificado da aferição no arquivo ARQ, que não pode existir.")
            ->type_name("ARQ");
        linha.add_flag("--json", m_Json, "Responde em JSON, para programas.")->disable_flag_override();
        m_Acesso.Descreve(linha);
    }

    Codigo Faz(Ambiente &ambiente) override
    {
        if (m_Codigo.empty() && m_Numero == 0) {
            throw Fim(Codigo::UsoErrado, "Falta o equipamento: --codigo ou --numero.");
        }
        m_Quando = LeMomento(m_Dia, m_Hora);
        m_Acesso.Resolve(ambiente);
        if (!m_Certificado.empty()) {
            ExigeLivre(m_Certificado);
        }
        const Ref<mesa::SessaoServico> sessao = m_Acesso.Entra(ambiente);
        const auto achado = Acha(sessao);
        if (!achado) {
            ambiente.Erros << "Não há equipamento de código " << m_Codigo << ".\n";
            if (m_Json) {
                Escreve(ambiente.Saida, EmJson({}));
            }
            return Codigo::Nao;
        }
        if (achado->Vigente && !m_Certificado.empty()) {
            Bytes documento;
            std::string recusa;
            if (!sessao->LeDocumento(achado->Vigente->NroIntImgCertif, documento, recusa)) {
                throw Fim(Codigo::Recusado, recusa);
            }
            GravaNovo(m_Certificado, documento);
        }
        if (m_Json) {
            Escreve(ambiente.Saida, EmJson(*achado));
        } else if (achado->Vigente) {
            ambiente.Saida << EmTexto(*achado);
        }
        if (!achado->Vigente) {
            ambiente.Erros << "O equipamento " << achado->Equipamento->Codigo.Valor()
                           << " não tinha aferição vigente em " << Format(m_Quando, "dd/mm/yyyy") << ".\n";
            return Codigo::Nao;
        }
        return Codigo::Feito;
    }

  private:
    Ref<AfericaoED> VigenteDe(const Ref<mesa::SessaoServico> &sessao, std::int32_t numero) const
    {
        auto pedido = Novo<ConsultaAfericaoED>();
        pedido->NroIntEquip = numero;
        pedido->DtInfracao = m_Quando;
        pedido->TipoConsulta = TipoConsultaVigente;
        const auto vigente = Pede<AfericaoED>(sessao, "EquiptoRN", "consultaSimplesAfericaoVigente", pedido);
        return vigente->NroIntAfericao == 0 ? Ref<AfericaoED>() : vigente;
    }

    // All of that code, deactivated ones too: the answer is about a day on which another one may have had it.
    std::vector<Ref<EquiptoED>> DoCodigo(const Ref<mesa::SessaoServico> &sessao) const
    {
        std::vector<Ref<EquiptoED>> achados;
        std::int32_t proximo = 0;
        do {
            auto pedido = Novo<ListaEquiptoED>();
            pedido->Codigo = m_Codigo;
            pedido->ProxNroIntEquip = proximo;
            const auto pagina = Pede<ListaEquiptoED>(sessao, "EquiptoRN", "lista2", pedido);
            const auto &lista = pagina->Equipamentos.Valor();
            for (std::int32_t n = 1; lista && n <= lista->Count(); ++n) {
                if (IgualSemCaixa(lista->Item(n)->Codigo.Valor(), m_Codigo)) {
                    achados.push_back(lista->Item(n));
                }
            }
            proximo = pagina->ProxNroIntEquip;
        } while (proximo > 0);
        return achados;
    }

    std::optional<Achado> Acha(const Ref<mesa::SessaoServico> &sessao) const
    {
        if (m_Codigo.empty()) {
            auto pedido = Novo<EquiptoED>();
            pedido->NroIntEquip = m_Numero;
            const auto equipamento = Pede<EquiptoED>(sessao, "EquiptoRN", "consultaSimples", pedido);
            return Achado{equipamento, VigenteDe(sessao, m_Numero)};
        }
        std::vector<Achado> achados;
        for (const auto &equipamento : DoCodigo(sessao)) {
            achados.push_back({equipamento, VigenteDe(sessao, equipamento->NroIntEquip)});
        }
        if (achados.size() > 1) {
            std::vector<Achado> comVigente = achados;
            std::erase_if(comVigente, [](const Achado &um) { return um.Vigente.Nada(); });
            if (comVigente.size() != 1) {
                throw Fim(Codigo::Nao, Varios(achados));
            }
            achados = comVigente;
        }
        return achados.empty() ? std::nullopt : std::optional(achados.front());
    }

    // Never a guess.
    std::string Varios(const std::vector<Achado> &achados) const
    {
        std::string frase = "Há mais de um equipamento de código " + m_Codigo + ", e não se sabe de qual se trata:";
        for (const Achado &um : achados) {
            frase += "\n  --numero " + CStr(um.Equipamento->NroIntEquip.Valor()) + "  " +
                     um.Equipamento->Descricao.Valor() +
                     (um.Equipamento->Ativo == Indicador::Nao ? " (desativado)" : "");
        }
        return frase;
    }

    std::string EmTexto(const Achado &achado) const
    {
        const EquiptoED &equipamento = *achado.Equipamento;
        const AfericaoED &vigente = *achado.Vigente;
        const bool declaracao = vigente.TipoAfer == Declaracao;
        std::string texto = "Equipamento: " + equipamento.Codigo.Valor() + " (número interno " +
                            CStr(equipamento.NroIntEquip.Valor()) + "), " + equipamento.Descricao.Valor() + "\n";
        texto += "Em: " + Format(m_Quando, m_Hora.empty() ? "dd/mm/yyyy" : "dd/mm/yyyy hh:nn:ss") + "\n";
        texto += std::string(declaracao ? "Declaração de conformidade: " : "Aferição: ") + vigente.Numero.Valor() +
                 " (número interno " + CStr(vigente.NroIntAfericao.Valor()) + ")\n";
        texto += "Marca: " + vigente.Marca.Valor() + "\n";
        if (declaracao) {
            texto += "Portaria: " + vigente.PortDimel.Valor() + "\n";
        }
        texto += "Verificada em: " + Format(vigente.DataVerificacao, "dd/mm/yyyy") + "\n";
        texto += "Vale até: " + Format(vigente.DataVencimento, "dd/mm/yyyy") + "\n";
        return texto;
    }

    Json EmJson(const std::optional<Achado> &achado) const
    {
        Json resposta = {{"equipamento", nullptr},
                         {"dia", Format(m_Quando, "yyyy-mm-dd")},
                         {"hora", m_Hora.empty() ? Json() : Json(Format(m_Quando, "hh:nn:ss"))},
                         {"vigente", nullptr}};
        if (achado) {
            const EquiptoED &equipamento = *achado->Equipamento;
            resposta["equipamento"] = {
                {"numero", equipamento.NroIntEquip.Valor()},   {"codigo", equipamento.Codigo.Valor()},
                {"subcodigo", equipamento.SubCodigo.Valor()},  {"descricao", equipamento.Descricao.Valor()},
                {"tipo", equipamento.TipoEquip.Valor()},       {"modelo", equipamento.Modelo.Valor()},
                {"ativo", equipamento.Ativo != Indicador::Nao}};
        }
        if (achado && achado->Vigente) {
            const AfericaoED &vigente = *achado->Vigente;
            const bool declaracao = vigente.TipoAfer == Declaracao;
            resposta["vigente"] = {
                {"numero", static_cast<std::int64_t>(vigente.NroIntAfericao.Valor())},
                {"especie", declaracao ? "declaração" : "aferição"},
                {"certificado", vigente.Numero.Valor()},
                {"marca", vigente.Marca.Valor()},
                {"portaria", vigente.PortDimel.Valor().empty() ? Json() : Json(vigente.PortDimel.Valor())},
                {"verificacao", Format(vigente.DataVerificacao, "yyyy-mm-dd")},
                {"vencimento", Format(vigente.DataVencimento, "yyyy-mm-dd")},
                {"documento", static_cast<std::int64_t>(vigente.NroIntImgCertif.Valor())}};
        }
        return resposta;
    }

    Acesso m_Acesso{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    std::string m_Codigo;
    std::int32_t m_Numero = 0;
    std::string m_Dia;
    std::string m_Hora;
    std::string m_Certificado;
    bool m_Json = false;
    Data m_Quando;
};

const Conhecido conhecido(FazUm<ComandoConsulta>);

} // namespace

} // namespace comando
