#include "tests/support/ArquivosEmMemoria.h"

#include "host/Falha.h"
#include "host/Texto.h"

#include <algorithm>

namespace {

// Directory, folded and without the separator at its end, and name.
std::pair<std::string, std::string> Separa(const std::string &caminho)
{
    const auto barra = caminho.find_last_of('\\');
    if (barra == std::string::npos) {
        return {"", caminho};
    }
    return {ChaveSemCaixa(caminho.substr(0, barra)), caminho.substr(barra + 1)};
}

bool Casa(std::string_view nome, std::string_view padrao)
{
    if (padrao.empty()) {
        return nome.empty();
    }
    if (padrao.front() == '*') {
        return Casa(nome, padrao.substr(1)) || (!nome.empty() && Casa(nome.substr(1), padrao));
    }
    return !nome.empty() && (padrao.front() == '?' || padrao.front() == nome.front()) &&
           Casa(nome.substr(1), padrao.substr(1));
}

} // namespace

void ArquivosEmMemoria::CriaDiretorio(const std::string &caminho)
{
    m_Diretorios.insert(Separa(caminho.ends_with('\\') ? caminho : caminho + "\\").first);
}

void ArquivosEmMemoria::Poe(const std::string &caminho, Bytes bytes)
{
    auto [diretorio, nome] = Separa(caminho);
    m_Diretorios.insert(diretorio);
    std::erase_if(m_Arquivos, [&](const Arquivo &arquivo) {
        return arquivo.Diretorio == diretorio && IgualSemCaixa(arquivo.Nome, nome);
    });
    m_Arquivos.push_back({diretorio, nome, std::move(bytes)});
}

const Bytes &ArquivosEmMemoria::Conteudo(const std::string &caminho) const
{
    const Arquivo *arquivo = Acha(caminho);
    if (arquivo == nullptr) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado);
    }
    return arquivo->Conteudo;
}

bool ArquivosEmMemoria::Existe(const std::string &caminho) const
{
    return Acha(caminho) != nullptr;
}

void ArquivosEmMemoria::Protege(const std::string &caminho)
{
    Exige(caminho).Protegido = true;
}

void ArquivosEmMemoria::Apaga(const std::string &caminho)
{
    const Arquivo &arquivo = Exige(caminho);
    if (arquivo.Protegido) {
        throw Falha(NumeroFalha::ErroDeAcesso);
    }
    m_Arquivos.erase(m_Arquivos.begin() + (&arquivo - m_Arquivos.data()));
}

void ArquivosEmMemoria::Grava(const std::string &caminho, const Bytes &bytes)
{
    auto [diretorio, nome] = Separa(caminho);
    if (!m_Diretorios.contains(diretorio)) {
        throw Falha(NumeroFalha::CaminhoNaoEncontrado);
    }
    if (!Existe(caminho)) {
        m_Arquivos.push_back({diretorio, nome, {}});
    }
    Arquivo &arquivo = Exige(caminho);
    if (arquivo.Protegido) {
        throw Falha(NumeroFalha::ErroDeAcesso);
    }
    arquivo.Conteudo.resize(std::max(arquivo.Conteudo.size(), bytes.size()));
    std::copy(bytes.begin(), bytes.end(), arquivo.Conteudo.begin());
}

std::vector<std::string> ArquivosEmMemoria::Nomes(const std::string &padrao) const
{
    const auto [diretorio, figura] = Separa(padrao);
    std::vector<std::string> nomes;
    for (const Arquivo &arquivo : m_Arquivos) {
        if (arquivo.Diretorio == diretorio && Casa(ChaveSemCaixa(arquivo.Nome), ChaveSemCaixa(figura))) {
            nomes.push_back(arquivo.Nome);
        }
    }
    return nomes;
}

const ArquivosEmMemoria::Arquivo *ArquivosEmMemoria::Acha(const std::string &caminho) const
{
    const auto [diretorio, nome] = Separa(caminho);
    for (const Arquivo &arquivo : m_Arquivos) {
        if (arquivo.Diretorio == diretorio && IgualSemCaixa(arquivo.Nome, nome)) {
            return &arquivo;
        }
    }
    return nullptr;
}

ArquivosEmMemoria::Arquivo &ArquivosEmMemoria::Exige(const std::string &caminho)
{
    const Arquivo *arquivo = Acha(caminho);
    if (arquivo == nullptr) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado);
    }
    return m_Arquivos[static_cast<std::size_t>(arquivo - m_Arquivos.data())];
}
