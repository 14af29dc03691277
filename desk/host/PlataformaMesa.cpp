#include "desk/host/PlataformaMesa.h"

#include "desk/host/Caminhos.h"
#include "host/Conversoes.h"
#include "host/Falha.h"
#include "host/Texto.h"
#include "services/Disco.h"
#include "tela/Twips.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace mesa {

namespace {

class AplicacaoDoModulo : public IAplicacao {
  public:
    std::string_view NomeTipo() const override { return "App"; }
    std::string Nome() const override { return std::string(NomeComponente); }
    std::string Titulo() const override { return "Equipamentos"; }
    std::string Descricao() const override { return "Registro de Equipamentos"; }
};

[[noreturn]] void FalhaDeArquivo(int erro)
{
    switch (erro) {
    case ENOENT:
        throw Falha(NumeroFalha::ArquivoNaoEncontrado);
    case ENOTDIR:
        throw Falha(NumeroFalha::CaminhoNaoEncontrado);
    case ENOSPC:
        throw Falha(NumeroFalha::DiscoCheio);
    case EACCES:
    case EPERM:
    case EROFS:
        throw Falha(NumeroFalha::PermissaoNegada);
    default:
        throw Falha(NumeroFalha::ErroDeAcesso);
    }
}

// Whether a name matches a pattern of the platform, where "*" stands for anything; case does not count.
bool Casa(std::string_view padrao, std::string_view nome)
{
    if (padrao.empty()) {
        return nome.empty();
    }
    if (padrao.front() == '*') {
        return Casa(padrao.substr(1), nome) || (!nome.empty() && Casa(padrao, nome.substr(1)));
    }
    return !nome.empty() && padrao.front() == nome.front() && Casa(padrao.substr(1), nome.substr(1));
}

} // namespace

PlataformaMesa::PlataformaMesa(Ref<IJanelas> janelas, std::filesystem::path diretorioModulo,
                               std::function<Data()> agora)
    : m_Janelas(std::move(janelas)),
      m_Forms(m_Janelas),
      m_DiretorioModulo(std::move(diretorioModulo)),
      m_Agora(std::move(agora)),
      m_Aplicacao(Novo<AplicacaoDoModulo>())
{
    FazPastaPrivada(m_DiretorioModulo);
}

void PlataformaMesa::DefinePonteiro(std::int16_t valor)
{
    m_Ponteiro = valor;
    m_Janelas->DefineEspera(valor == PonteiroAmpulheta);
}

void PlataformaMesa::ProcessaMensagens()
{
    m_Janelas->ProcessaMensagens();
}

std::int32_t PlataformaMesa::LarguraTela() const
{
    return m_Janelas->LarguraTela() * TwipsPorPixel;
}

std::int32_t PlataformaMesa::AlturaTela() const
{
    return m_Janelas->AlturaTela() * TwipsPorPixel;
}

bool PlataformaMesa::PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim)
{
    return m_Janelas->PerguntaSimNao(texto, titulo, padraoSim);
}

void PlataformaMesa::CaixaInformacao(const std::string &texto, const std::string &titulo)
{
    m_Janelas->Informa(texto, titulo);
}

void PlataformaMesa::DefineTextoJanela(std::int64_t hwnd, const std::string &texto)
{
    m_Forms.DefineTexto(hwnd, texto);
}

bool PlataformaMesa::TemIcone(const std::string &chave) const
{
    return chave == "Equipamentos";
}

std::string PlataformaMesa::DataCurta(Data data) const
{
    return Format(data, "dd/mm/yyyy");
}

std::string PlataformaMesa::CaminhoModulo() const
{
    return CaminhoDoModulo(m_DiretorioModulo);
}

bool PlataformaMesa::ExisteArquivo(const std::string &caminho) const
{
    return std::filesystem::is_regular_file(CaminhoDoSistema(caminho));
}

std::int64_t PlataformaMesa::TamanhoArquivo(const std::string &caminho) const
{
    return static_cast<std::int64_t>(std::filesystem::file_size(CaminhoDoSistema(caminho)));
}

void PlataformaMesa::ApagaArquivo(const std::string &caminho)
{
    if (!ExisteArquivo(caminho)) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado); // a directory is no file, and stays
    }
    std::filesystem::remove(CaminhoDoSistema(caminho));
}

void PlataformaMesa::GravaArquivo(const std::string &caminho, const Bytes &bytes)
{
    const std::filesystem::path arquivo = CaminhoDoSistema(caminho);
    if (arquivo.has_parent_path() && !std::filesystem::is_directory(arquivo.parent_path())) {
        throw Falha(NumeroFalha::CaminhoNaoEncontrado);
    }
    const char *modo = std::filesystem::exists(arquivo) ? "r+b" : "wb";
    const auto fecha = [](std::FILE *aberto) { std::fclose(aberto); };
    std::unique_ptr<std::FILE, decltype(fecha)> aberto(std::fopen(arquivo.c_str(), modo), fecha);
    const bool gravou =
        aberto && (bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), aberto.get()) == bytes.size());
    if (!gravou || std::fflush(aberto.get()) != 0) {
        FalhaDeArquivo(errno);
    }
}

std::string PlataformaMesa::PrimeiroArquivo(const std::string &padrao)
{
    const std::filesystem::path caminho = CaminhoDoSistema(padrao);
    const std::string figura = LCase(caminho.filename().string());
    m_Nomes = NomesEm(caminho.parent_path());
    std::erase_if(m_Nomes, [&](const std::string &nome) { return !Casa(figura, LCase(nome)); });
    std::reverse(m_Nomes.begin(), m_Nomes.end()); // they are given from the back
    return ProximoArquivo();
}

std::vector<std::string> PlataformaMesa::NomesEm(const std::filesystem::path &pasta) const
{
    if (const auto posta = m_Pastas.find(pasta); posta != m_Pastas.end()) {
        return posta->second();
    }
    std::vector<std::string> nomes;
    std::error_code semDiretorio;
    for (const auto &entrada : std::filesystem::directory_iterator(pasta, semDiretorio)) {
        if (entrada.is_regular_file()) {
            nomes.push_back(entrada.path().filename().string());
        }
    }
    return nomes;
}

void PlataformaMesa::PoePasta(const std::filesystem::path &pasta, std::function<std::vector<std::string>()> nomes)
{
    m_Pastas[pasta] = std::move(nomes);
}

std::string PlataformaMesa::ProximoArquivo()
{
    if (m_Nomes.empty()) {
        return "";
    }
    std::string nome = std::move(m_Nomes.back());
    m_Nomes.pop_back();
    return nome;
}

} // namespace mesa
