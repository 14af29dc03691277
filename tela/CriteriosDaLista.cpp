#include "tela/CriteriosDaLista.h"

#include "controls/CheckBox.h"
#include "controls/ztCombo.h"
#include "controls/ztMask.h"
#include "host/Texto.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace {

constexpr const char *EntreCriterios = "\n";
constexpr const char *EntrePartes = "\t"; // of a criterion: its name, and what it is

// The first choice, nothing typed, nothing marked.
std::string SemNada(IControle &controle)
{
    if (auto *combo = dynamic_cast<ztCombo *>(&controle)) {
        return combo->Itens().empty() ? std::string() : combo->Itens().front().Valor;
    }
    return dynamic_cast<CheckBox *>(&controle) != nullptr ? "0" : "";
}

} // namespace

CriteriosDaLista::CriteriosDaLista(const IForm &form, std::vector<ClienteOferecido> clientes)
    : m_Clientes(std::move(clientes))
{
    const Desenho desenho = form.Desenho();
    Junta(form, desenho.Raiz);
}

// Of the pieces in a list, which are its criteria.
void CriteriosDaLista::Junta(const IForm &form, const Peca &peca)
{
    for (const Peca &contida : peca.Pecas) {
        if (contida.Especie() == EspecieControle::ztList) {
            const auto junta = [&](const auto &eu, const Peca &criterio) -> void {
                for (const Ref<IControle> &controle : form.Controles()) {
                    const bool conhecido = dynamic_cast<ztClienteSetor *>(controle.Ponteiro()) != nullptr ||
                                           dynamic_cast<ztCombo *>(controle.Ponteiro()) != nullptr ||
                                           dynamic_cast<ztMask *>(controle.Ponteiro()) != nullptr ||
                                           dynamic_cast<CheckBox *>(controle.Ponteiro()) != nullptr;
                    if (conhecido && controle->Nome() == criterio.Nome && controle->Indice() == criterio.Indice) {
                        const bool cliente = dynamic_cast<ztClienteSetor *>(controle.Ponteiro()) != nullptr;
                        m_Controles.push_back({controle, cliente ? Valor(*controle) : SemNada(*controle)});
                    }
                }
                for (const Peca &dentro : criterio.Pecas) {
                    eu(eu, dentro);
                }
            };
            for (const Peca &criterio : contida.Pecas) {
                junta(junta, criterio);
            }
        } else {
            Junta(form, contida);
        }
    }
}

std::string CriteriosDaLista::Valor(IControle &controle) const
{
    if (auto *cliente = dynamic_cast<ztClienteSetor *>(&controle)) {
        return cliente->Cliente() + EntrePartes + cliente->Setor();
    }
    if (auto *combo = dynamic_cast<ztCombo *>(&controle)) {
        return combo->Valor();
    }
    if (auto *texto = dynamic_cast<ztMask *>(&controle)) {
        return texto->Text();
    }
    return std::to_string(dynamic_cast<CheckBox &>(controle).Value());
}

void CriteriosDaLista::Define(IControle &controle, const std::string &valor) const
{
    if (Valor(controle) == valor) {
        return;
    }
    if (auto *cliente = dynamic_cast<ztClienteSetor *>(&controle)) {
        const std::vector<std::string> partes = Divide(valor, EntrePartes);
        const auto oferecido = std::ranges::find(m_Clientes, partes.front(), &ClienteOferecido::Nome);
        if (partes.size() == 2 && oferecido != m_Clientes.end()) {
            const bool temSetor = std::ranges::find(oferecido->Setores, partes[1]) != oferecido->Setores.end();
            cliente->Escolhe(partes[0], temSetor ? partes[1] : std::string());
        }
    } else if (auto *combo = dynamic_cast<ztCombo *>(&controle)) {
        const auto item = std::ranges::find(combo->Itens(), valor, &ztCombo::Item::Valor);
        if (item != combo->Itens().end()) {
            combo->Escolhe(static_cast<std::int32_t>(item - combo->Itens().begin()));
        }
    } else if (auto *texto = dynamic_cast<ztMask *>(&controle)) {
        texto->Preenche(valor);
    } else if (valor == "0" || valor == "1") {
        dynamic_cast<CheckBox &>(controle).Clica();
    }
}

std::string CriteriosDaLista::Texto() const
{
    std::string texto;
    for (const Criterio &criterio : m_Controles) {
        const std::string valor = Valor(*criterio.Controle);
        // What is typed where nothing is asked for is no criterion.
        if (valor != criterio.Inicial && criterio.Controle->Visible()) {
            texto += criterio.Controle->Nome() + EntrePartes + valor + EntreCriterios;
        }
    }
    return texto;
}

void CriteriosDaLista::Poe(const std::string &texto)
{
    if (texto.empty()) {
        return;
    }
    const std::vector<std::string> linhas = Divide(texto, EntreCriterios);
    for (const Criterio &criterio : m_Controles) {
        const std::string comeco = criterio.Controle->Nome() + EntrePartes;
        const auto linha =
            std::ranges::find_if(linhas, [&](const std::string &uma) { return uma.starts_with(comeco); });
        if (linha != linhas.end()) {
            Define(*criterio.Controle, linha->substr(comeco.size()));
        }
    }
    VaiAoPrimeiro();
}

// From the last one: what depends on one before it is still asked for.
void CriteriosDaLista::Limpa()
{
    for (const Criterio &criterio : m_Controles | std::views::reverse) {
        Define(*criterio.Controle, criterio.Inicial);
    }
    VaiAoPrimeiro();
}

void CriteriosDaLista::VaiAoPrimeiro() const
{
    if (Ha()) {
        ComoBase(m_Controles.front().Controle)->Foco();
    }
}
