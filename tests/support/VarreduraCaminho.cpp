#include "tests/support/VarreduraCaminho.h"

#include "tests/support/VarreduraProcedimentos.h"
#include "tests/support/VarreduraTrechos.h"

#include <algorithm>
#include <sstream>

namespace {

bool ComecaPor(const std::string &linha, const std::string &inicio)
{
    if (!linha.starts_with(inicio)) {
        return false;
    }
    // A name alone is that whole name.
    const bool soNome = inicio.find_first_of("(\":") == std::string::npos;
    return !soNome || linha.size() == inicio.size() || linha[inicio.size()] == '(' || linha[inicio.size()] == ' ';
}

std::vector<std::string> Separa(const std::string &texto, char separador)
{
    std::vector<std::string> partes;
    std::istringstream entrada(texto);
    for (std::string parte; std::getline(entrada, parte, separador);) {
        partes.push_back(parte);
    }
    return partes;
}

} // namespace

VarreduraCaminho::VarreduraCaminho(const std::string &arvore)
{
    Le(arvore, 0, "");
}

void VarreduraCaminho::Le(const std::string &arvore, std::size_t fundo, const std::string &parametro)
{
    std::vector<std::size_t> fundos{fundo}; // at each level of the text
    for (std::string linha : Separa(arvore, '\n')) {
        const std::size_t inicio = linha.find_first_not_of(' ');
        if (inicio == std::string::npos) {
            continue;
        }
        for (std::size_t onde = linha.find("$1"); onde != std::string::npos; onde = linha.find("$1")) {
            linha.replace(onde, 2, parametro);
        }
        std::string texto = linha.substr(inicio);
        if (inicio / 2 >= fundos.size()) {
            m_Defeitos.push_back("Recuo demais: " + texto);
            continue;
        }
        fundos.resize(inicio / 2 + 1);
        m_Pilha.resize(fundos.back());
        while (!texto.starts_with("- ") && !texto.starts_with("@")) {
            const std::size_t seta = texto.find(" > ");
            Procedimento(texto.substr(0, seta));
            texto.erase(0, seta == std::string::npos ? seta : seta + 3);
            if (texto.empty()) {
                break;
            }
        }
        if (texto.starts_with("- ")) {
            Chamada(texto.substr(2));
        } else if (!texto.empty()) {
            const std::size_t branco = texto.find(' ');
            if (const auto trecho = TrechoDeCaminho(texto.substr(1, branco - 1))) {
                Le(*trecho, m_Pilha.size(), branco == std::string::npos ? "" : texto.substr(branco + 1));
            } else {
                m_Defeitos.push_back("Trecho desconhecido: " + texto);
            }
        } else {
            fundos.push_back(m_Pilha.size());
        }
    }
}

void VarreduraCaminho::Procedimento(const std::string &nome)
{
    m_Pilha.push_back(nome);
    if (nome != "pessoa" && !DesfechoDe(nome)) {
        m_Defeitos.push_back("Procedimento desconhecido: " + nome);
    }
}

void VarreduraCaminho::Chamada(std::string texto)
{
    Folha folha;
    if (texto.ends_with(" *")) {
        folha.Repete = true;
        texto.resize(texto.size() - 2);
    }
    folha.Inicios = Separa(texto, '|');
    folha.Fim = DestinoAtual();
    m_Folhas.push_back(std::move(folha));
}

VarreduraCaminho::Destino VarreduraCaminho::DestinoAtual()
{
    Destino destino;
    for (auto procedimento = m_Pilha.rbegin(); procedimento != m_Pilha.rend(); ++procedimento) {
        if (*procedimento == "pessoa") {
            break;
        }
        const auto desfecho = DesfechoDe(*procedimento);
        if (!desfecho) {
            continue; // told as a defect
        }
        if (desfecho->Tipo == Desfecho::Fim::Ignora) {
            destino.Ignorada = true;
            break;
        }
        if (desfecho->Tipo == Desfecho::Fim::Mostra) {
            destino.Contexto = desfecho->Texto;
            break;
        }
        destino.Caudas += desfecho->Texto;
    }
    return destino;
}

std::optional<std::vector<VarreduraCaminho::Destino>>
VarreduraCaminho::Confronta(const std::vector<std::string> &trilha, std::string &motivo) const
{
    std::vector<Destino> destinos;
    std::size_t passo = 0;
    const auto cabe = [&](const Folha &folha) {
        return passo < trilha.size() &&
               std::any_of(folha.Inicios.begin(), folha.Inicios.end(),
                           [&](const std::string &inicio) { return ComecaPor(trilha[passo], inicio); });
    };
    const auto difere = [&](const std::string &esperada) {
        motivo = "Chamada " + std::to_string(passo + 1) + ": esperada " + esperada + "; vieram:";
        for (std::size_t outra = passo; outra < std::min(trilha.size(), passo + 60); ++outra) {
            motivo += "\n  " + trilha[outra].substr(0, 160);
        }
        return std::nullopt;
    };
    for (const Folha &folha : m_Folhas) {
        if (!cabe(folha)) {
            return difere(folha.Inicios.front());
        }
        do {
            destinos.push_back(folha.Fim);
            ++passo;
        } while (folha.Repete && cabe(folha));
    }
    if (passo != trilha.size()) {
        return difere("nenhuma");
    }
    return destinos;
}
