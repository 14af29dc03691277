#include "tests/fuzz/Alvo.h"

#include "controls/TextBox.h"
#include "controls/ztCombo.h"
#include "host/Texto.h"
#include "tests/fuzz/Impede.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The combo against a plain list of texts and values: how it is filled, what is chosen by the person and by the module,
// and the events of each choice.

namespace {

// Pieces of items: letters that differ in case and accent, delimiters, and the end of an item.
constexpr std::string_view Pecas[] = {"a", "A", "á", "Á", "b", "B", "ç", "c", "1", "|", ";", " ", "?", "??", "ab", "Ê"};
// Each piece without accent and case, as a person looks for it.
constexpr std::string_view Procuras[] = {"a", "a", "a", "a", "b", "b",  "c",  "c",
                                         "1", "|", ";", " ", "?", "??", "ab", "e"};

// A text, and what it is when accents and case do not count.
struct Frase {
    std::string Texto;
    std::string Procura;
};

Frase FraseDe(Octetos &octetos)
{
    Frase frase;
    for (int tamanho = octetos.Ate(6); tamanho > 0; --tamanho) {
        const int peca = octetos.Ate(15);
        frase.Texto += Pecas[peca];
        frase.Procura += Procuras[peca];
    }
    return frase;
}

struct Item {
    std::string Texto;
    std::string Valor;

    bool operator==(const Item &) const = default;
};

class Ensaio {
  public:
    explicit Ensaio(Octetos &octetos)
    {
        AjustesZtCombo ajustes;
        ajustes.ColunaValor = static_cast<std::int16_t>(octetos.Ate(3) - 1);
        ajustes.DelimitadorColuna = octetos.Ate(3) > 0 ? "|" : octetos.Sim() ? ";" : "ab";
        ajustes.PesquisaAoDigitar = octetos.Sim();
        m_Coluna = ajustes.ColunaValor;
        m_Delimitador = ajustes.DelimitadorColuna;
        for (int quantos = octetos.Ate(3); quantos > 0; --quantos) {
            ajustes.Conteudo += FraseDe(octetos).Texto + "??";
        }
        m_Combo = Feito<ztCombo>(m_Form, Chamado("cbo", ajustes));
        m_Form->Guarda(m_Combo);
        m_Outro = Feito<TextBox>(m_Form, Chamado<AjustesTextBox>("outro"));
        m_Form->Guarda(m_Outro);

        for (std::string_view resto = ajustes.Conteudo; !resto.empty();) {
            const std::size_t fim = resto.find("??");
            Acrescenta(std::string(resto.substr(0, fim)));
            resto.remove_prefix(fim == std::string_view::npos ? resto.size() : fim + 2);
        }
        m_AoMudar = m_Combo->Mudou().liga([this] { m_Eventos += 'm'; });
        m_AoClicar = m_Combo->Click().liga([this] {
            m_Eventos += 'c';
            Reage();
        });
        m_AoTrocar = m_Combo->Change().liga([this] { m_Eventos += 't'; });
        Confere();
    }

    void Passo(Octetos &octetos)
    {
        m_Eventos.clear();
        m_Reagiu = false;
        const int antes = m_Indice;
        switch (octetos.Ate(11)) {
        case 0:
        case 1:
        case 2: {
            const std::string item = FraseDe(octetos).Texto;
            m_Combo->AdicionaItem(item);
            Acrescenta(item);
            Exige(m_Eventos == "m", "adding an item is told to the screen alone", m_Eventos);
            break;
        }
        case 3:
            if (octetos.Ate(3) == 0) {
                m_Combo->Limpa();
                m_Itens.clear();
                m_Indice = -1;
                Exige(m_Eventos == "m", "emptying is told to the screen alone", m_Eventos);
            }
            break;
        case 4: {
            const std::string valor = !m_Itens.empty() && octetos.Sim() ? Algum(octetos).Valor : FraseDe(octetos).Texto;
            m_Combo->DefineValor(valor);
            Escolhido(antes, Primeiro(&Item::Valor, valor));
            break;
        }
        case 5: {
            const auto indice = static_cast<std::int16_t>(octetos.Ate(12) - 3);
            const bool existe = indice >= -1 && indice < static_cast<int>(m_Itens.size());
            ExigeFalha(existe ? 0 : 5, "fault of a position", std::to_string(indice),
                       [&] { m_Combo->DefineIndiceAtual(indice); });
            Escolhido(antes, existe ? indice : antes);
            break;
        }
        case 6: {
            const int indice = octetos.Ate(12) - 2;
            const bool pode = Pode() && indice >= 0 && indice < static_cast<int>(m_Itens.size());
            const bool foi = m_Combo->Escolhe(indice);
            Exige(foi == pode, "who can choose a position does");
            if (pode) {
                m_Procurado.clear();
            }
            Escolhido(antes, pode ? indice : antes);
            break;
        }
        case 7: {
            const std::string texto = !m_Itens.empty() && octetos.Sim() ? Algum(octetos).Texto : FraseDe(octetos).Texto;
            const int indice = Primeiro(&Item::Texto, texto);
            const bool pode = Pode() && indice >= 0;
            Exige(m_Combo->EscolheTexto(texto) == pode, "who can choose a text does", texto);
            if (pode) {
                m_Procurado.clear();
            }
            Escolhido(antes, pode ? indice : antes);
            break;
        }
        case 8:
            Digita(octetos);
            break;
        case 9:
            Impede(octetos, *m_Form, *m_Combo, [&](bool valor) { m_Combo->DefineComboSomenteLeitura(valor); });
            Exige(m_Combo->IndiceAtual() == antes, "what keeps the person out chooses nothing");
            break;
        case 10:
            if (octetos.Sim()) {
                m_Outro->Foco();
                m_Procurado = m_Outro->TemFoco() ? "" : m_Procurado;
            } else if (m_Combo->Apaga()) {
                m_Procurado.clear();
            }
            Exige(m_Combo->IndiceAtual() == antes && m_Eventos.empty(), "the choice stays");
            break;
        default:
            m_Reacao = octetos.Ate(3);
            m_Outra = octetos.Ate(6);
            break;
        }
        Confere();
    }

    bool Vivo() const { return !m_Form.Nada(); }

  private:
    const Item &Algum(Octetos &octetos) const { return m_Itens[octetos.Octeto() % m_Itens.size()]; }

    bool Pode() const
    {
        return m_Form && m_Form->Enabled() && m_Combo->Enabled() && m_Combo->Visible() &&
               !m_Combo->ComboSomenteLeitura();
    }

    int Primeiro(std::string Item::*qual, const std::string &procurado) const
    {
        for (std::size_t i = 0; i < m_Itens.size(); ++i) {
            if (m_Itens[i].*qual == procurado) {
                return static_cast<int>(i);
            }
        }
        return -1;
    }

    // Text and value of an item, column by column.
    void Acrescenta(const std::string &item)
    {
        if (m_Coluna < 0) {
            m_Itens.push_back({item, item});
            return;
        }
        std::vector<std::string> colunas{""};
        for (std::size_t i = 0; i < item.size();) {
            if (item.compare(i, m_Delimitador.size(), m_Delimitador) == 0) {
                colunas.emplace_back();
                i += m_Delimitador.size();
            } else {
                colunas.back() += item[i++];
            }
        }
        const auto coluna = static_cast<std::size_t>(m_Coluna);
        m_Itens.push_back({colunas[0], coluna < colunas.size() ? colunas[coluna] : colunas[0]});
    }

    void Escolhido(int antes, int agora)
    {
        if (m_Reagiu) { // its own handler chose again
            m_Indice = m_Combo->IndiceAtual();
            return;
        }
        m_Indice = agora;
        Exige(m_Eventos == (antes == agora ? "" : "mct"), "another choice raises Click and then Change", m_Eventos);
    }

    // The item that is all that was typed, else one that begins so: the present one for a first key, or the first.
    static int Primeiro(const std::vector<std::string> &itens, const std::string &chave, int atual)
    {
        const auto igual = std::ranges::find(itens, chave);
        const auto comeca = std::ranges::find_if(itens, [&](const std::string &i) { return i.starts_with(chave); });
        if (igual == itens.end() && chave.size() == 1 && atual >= 0 &&
            itens[static_cast<std::size_t>(atual)].starts_with(chave)) {
            return atual;
        }
        const auto achado = igual == itens.end() ? comeca : igual;
        return achado == itens.end() ? -1 : static_cast<int>(achado - itens.begin());
    }

    // Every key goes on from those before, or from item to item of the one letter, or is left out.
    void Digita(Octetos &octetos)
    {
        const Frase frase = FraseDe(octetos);
        const bool podia = Pode();
        const std::vector<std::string> itens = SemAcentos();
        int indice = m_Indice;
        bool todos = podia;
        std::string procurado = m_Procurado;
        std::string eventos;
        for (std::size_t i = 0; podia && i < frase.Procura.size(); ++i) {
            const std::string letra(1, frase.Procura[i]);
            std::string chave = procurado + letra;
            int onde = Primeiro(itens, chave, indice);
            if (onde < 0 && procurado == letra) {
                chave = letra;
                for (int passo = 1; passo <= static_cast<int>(itens.size()) && onde < 0; ++passo) {
                    const int item = (indice + passo) % static_cast<int>(itens.size());
                    onde = itens[static_cast<std::size_t>(item)].starts_with(letra) ? item : -1;
                }
            }
            if (onde >= 0) {
                eventos += onde == indice ? "" : "mct";
                indice = onde;
                procurado = chave;
            }
            todos = todos && onde >= 0;
        }
        const bool foi = m_Combo->Digita(frase.Texto);
        if (m_Reagiu) {
            m_Indice = m_Combo->IndiceAtual();
            m_Procurado.clear();
            m_Combo->Conclui(); // starts the search again, which the handler may have done or not
            return;
        }
        Exige(foi == todos, "whether each key found an item", frase.Texto);
        Exige(m_Eventos == eventos, "the events of the keys", m_Eventos + ", not " + eventos);
        m_Indice = indice;
        m_Procurado = procurado;
    }

    std::vector<std::string> SemAcentos() const
    {
        std::vector<std::string> textos;
        for (const Item &item : m_Itens) {
            std::string texto = item.Texto;
            for (std::size_t peca = 0; peca < std::size(Pecas); ++peca) {
                texto = Substitui(texto, Pecas[peca], Procuras[peca]);
            }
            texto.erase(0, std::min(texto.find_first_not_of(' '), texto.size()));
            textos.push_back(texto);
        }
        return textos;
    }

    // The module's own code at the event, once.
    void Reage()
    {
        const int reacao = std::exchange(m_Reacao, 0);
        m_Reagiu = m_Reagiu || reacao != 0;
        if (reacao == 1) {
            m_Combo->Limpa();
            m_Itens.clear();
        } else if (reacao == 2 && m_Outra < m_Combo->NroItens()) {
            m_Combo->DefineIndiceAtual(static_cast<std::int16_t>(m_Outra));
        } else if (reacao == 3) {
            m_Form = nullptr;
        }
    }

    void Confere() const
    {
        Exige(m_Combo->NroItens() == static_cast<std::int32_t>(m_Itens.size()), "NroItens");
        for (std::size_t i = 0; i < m_Itens.size(); ++i) {
            const ztCombo::Item &item = m_Combo->Itens()[i];
            Exige(Item{item.Texto, item.Valor} == m_Itens[i], "an item", item.Texto + "|" + item.Valor);
        }
        const int indice = m_Combo->IndiceAtual();
        Exige(indice == m_Indice, "the choice", std::to_string(indice) + ", not " + std::to_string(m_Indice));
        Exige(indice >= -1 && indice < m_Combo->NroItens(), "the choice is an item");
        const Item escolhido = indice < 0 ? Item{} : m_Itens[static_cast<std::size_t>(indice)];
        Exige(m_Combo->Valor() == escolhido.Valor && m_Combo->Texto() == escolhido.Texto,
              "value and text of the choice");
    }

    Ref<FormFalso> m_Form = FormNaTela();
    Ref<ztCombo> m_Combo;
    Ref<TextBox> m_Outro;
    Conexao m_AoMudar;
    Conexao m_AoClicar;
    Conexao m_AoTrocar;
    int m_Coluna = 1;
    std::string m_Delimitador;
    std::vector<Item> m_Itens;
    int m_Indice = -1;
    std::string m_Procurado;
    std::string m_Eventos;
    int m_Reacao = 0;
    int m_Outra = 0;
    bool m_Reagiu = false;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    Octetos octetos(dados, tamanho);
    Ensaio ensaio(octetos);
    for (int passo = 0; passo < 60 && !octetos.Acabou() && ensaio.Vivo(); ++passo) {
        ensaio.Passo(octetos);
    }
    return 0;
}
