#include "tests/support/RegistroChamadas.h"

#include <algorithm>
#include <optional>

namespace {

std::vector<std::string> Textos(const std::vector<std::shared_ptr<std::string>> &linhas)
{
    std::vector<std::string> textos;
    textos.reserve(linhas.size());
    for (const auto &linha : linhas) {
        textos.push_back(*linha);
    }
    return textos;
}

} // namespace

void RegistroChamadas::Passa(std::string_view nome)
{
    m_Trilha.push_back(std::make_shared<std::string>(nome));
    Confere(nome, nullptr);
}

void RegistroChamadas::Nota(std::string texto)
{
    m_Linhas.push_back(std::make_shared<std::string>(std::move(texto)));
}

std::vector<std::string> RegistroChamadas::Linhas() const
{
    return Textos(m_Linhas);
}

std::vector<std::string> RegistroChamadas::Trilha() const
{
    return Textos(m_Trilha);
}

void RegistroChamadas::FalhaNaChamada(std::int32_t n, std::int32_t numero, std::string descricao)
{
    m_Falhas.push_back({FalhaProgramada::Alvo::Chamada, "", n, numero, std::move(descricao)});
}

void RegistroChamadas::FalhaNoPasso(std::int32_t n, std::int32_t numero, std::string descricao)
{
    m_Falhas.push_back({FalhaProgramada::Alvo::Passo, "", n, numero, std::move(descricao)});
}

void RegistroChamadas::FalhaEm(std::string nome, std::int32_t n, std::int32_t numero, std::string descricao)
{
    m_Falhas.push_back({FalhaProgramada::Alvo::Nome, std::move(nome), n, numero, std::move(descricao)});
}

std::vector<std::string> RegistroChamadas::FalhasPendentes() const
{
    std::vector<std::string> nomes;
    for (const auto &falha : m_Falhas) {
        if (falha.Tipo == FalhaProgramada::Alvo::Nome) {
            nomes.push_back(falha.Nome);
        }
    }
    return nomes;
}

bool RegistroChamadas::Vigiado(const Objeto &objeto) const noexcept
{
    return std::any_of(m_Vigiados.begin(), m_Vigiados.end(),
                       [&](const ObjetoVigiado &vigiado) { return vigiado.Alvo.lock().get() == &objeto; });
}

std::vector<std::string> RegistroChamadas::Vivos() const
{
    std::vector<std::string> vivos;
    for (const auto &vigiado : m_Vigiados) {
        if (vigiado.Alvo.use_count() > vigiado.Donos) {
            vivos.push_back(vigiado.Tipo);
        }
    }
    return vivos;
}

RegistroChamadas::Linha RegistroChamadas::Anota(const std::string &nome, std::string texto)
{
    auto linha = std::make_shared<std::string>(std::move(texto));
    m_Linhas.push_back(linha);
    m_Trilha.push_back(linha);
    ++m_Chamadas;
    Confere(nome, linha);
    return Linha(std::move(linha));
}

void RegistroChamadas::Confere(std::string_view nome, const std::shared_ptr<std::string> &linha)
{
    if (AoChamar != nullptr) {
        AoChamar(nome);
    }
    if (AntesDaChamada) {
        AntesDaChamada();
    }
    std::optional<FalhaProgramada> vencida;
    std::erase_if(m_Falhas, [&](FalhaProgramada &falha) {
        if ((falha.Tipo == FalhaProgramada::Alvo::Nome && falha.Nome != nome) ||
            (falha.Tipo == FalhaProgramada::Alvo::Chamada && linha == nullptr)) {
            return false;
        }
        if (--falha.Faltam > 0) {
            return false;
        }
        vencida = std::move(falha);
        return true;
    });
    if (vencida) {
        ++m_FalhasDisparadas;
        m_ChamadaQueFalhou = nome;
        if (linha) {
            *linha += " !! " + std::to_string(vencida->Numero);
        }
        throw Falha(vencida->Numero, std::string(nome), vencida->Descricao);
    }
}
