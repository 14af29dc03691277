#include "services/AberturaSQLite.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/ArquivoSQLite.h"
#include "services/ErroSql.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <system_error>
#include <vector>

namespace mesa {

namespace {

namespace fs = std::filesystem;

using Bytes = std::vector<unsigned char>;

const std::string EmRestauracao = "O registro está sendo restaurado. Tente de novo quando isso terminar.";

// Where the database writes in the first page of a file.
constexpr std::size_t TamanhoDaPagina = 16; // two bytes, 1 for 65536
constexpr std::size_t ModoDeGravar = 18;    // one byte, and one for reading: 1 without a log, 2 with one

fs::path Parte(const fs::path &arquivo, const char *parte)
{
    return arquivo.string() + parte;
}

std::uintmax_t Tamanho(const fs::path &arquivo)
{
    std::error_code erro;
    const std::uintmax_t tamanho = fs::file_size(arquivo, erro);
    return erro ? 0 : tamanho;
}

// A log that is there belongs to the file only when the file says that it has one: the database says so in the file
// before it makes the log, and takes it back after the log is gone.
bool TemDiarioAlheio(const fs::path &arquivo)
{
    if (Tamanho(Parte(arquivo, "-wal")) == 0 || Tamanho(arquivo) == 0) {
        return false;
    }
    return ArquivoSQLite(arquivo, ArquivoSQLite::Modo::Parado).Comeco(ModoDeGravar + 1).back() == 1;
}

std::uint32_t Numero(const Bytes &bytes, std::size_t onde)
{
    std::uint32_t numero = 0;
    for (std::size_t qual = onde; qual < onde + 4; ++qual) {
        numero = numero << 8 | bytes.at(qual);
    }
    return numero;
}

// Files that an interrupted restoration was about to keep: the registry itself, under a further name.
std::vector<fs::path> OutrosNomes(const fs::path &arquivo)
{
    std::vector<fs::path> outros;
    std::error_code erro;
    if (fs::hard_link_count(arquivo, erro) < 2 || erro) {
        return outros;
    }
    const std::string comeco = ComecoDosGuardados(arquivo);
    for (const auto &entrada : fs::directory_iterator(arquivo.parent_path(), erro)) {
        if (entrada.path().filename().string().rfind(comeco, 0) == 0 && fs::equivalent(entrada.path(), arquivo, erro)) {
            outros.push_back(entrada.path());
        }
    }
    return outros;
}

} // namespace

// A journal that the database would play back into the file, and that holds more than a registry's ever does: the first
// page, when its log was being switched on or off.
bool TemJornalAlheio(const fs::path &arquivo)
{
    constexpr std::array<unsigned char, 8> marca = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};
    constexpr std::size_t paginasAntes = 16;
    constexpr std::size_t setor = 20;
    constexpr std::size_t pagina = 24;
    constexpr std::size_t cabecalho = 28;

    std::ifstream lido(Parte(arquivo, "-journal"), std::ios::binary);
    const Bytes jornal((std::istreambuf_iterator<char>(lido)), std::istreambuf_iterator<char>());
    if (jornal.size() < cabecalho || !std::equal(marca.begin(), marca.end(), jornal.begin())) {
        return false;
    }
    const std::size_t tamanho = Numero(jornal, pagina);
    const std::size_t inicio = Numero(jornal, setor);
    const std::uintmax_t noArquivo = Tamanho(arquivo);
    if (noArquivo == 0 || tamanho == 0 || (Numero(jornal, paginasAntes) == 0 && noArquivo <= tamanho)) {
        return false; // there was nothing yet
    }
    // The record of a page: its number, itself, a checksum.
    if (noArquivo != std::uintmax_t{Numero(jornal, paginasAntes)} * tamanho ||
        jornal.size() > inicio + 2 * (tamanho + 8) || jornal.size() < inicio + 4 + tamanho ||
        Numero(jornal, inicio) != 1) {
        return jornal.size() > inicio;
    }
    Bytes primeira = ArquivoSQLite(arquivo, ArquivoSQLite::Modo::Parado).Comeco(tamanho);
    Bytes guardada(jornal.begin() + static_cast<std::ptrdiff_t>(inicio + 4),
                   jornal.begin() + static_cast<std::ptrdiff_t>(inicio + 4 + tamanho));
    for (Bytes *qual : {&primeira, &guardada}) {
        // The mode, the counter of changes, and by whom and for which count the size stands there.
        for (const auto &[onde, quantos] : {std::pair<std::size_t, std::size_t>{ModoDeGravar, 2}, {24, 4}, {92, 8}}) {
            std::fill_n(qual->begin() + static_cast<std::ptrdiff_t>(onde), quantos, static_cast<unsigned char>(0));
        }
    }
    return primeira != guardada;
}

fs::path LugarVerdadeiro(const fs::path &arquivo)
{
    std::error_code erro;
    const fs::path verdadeiro = fs::weakly_canonical(fs::absolute(arquivo), erro);
    return erro ? fs::absolute(arquivo) : verdadeiro;
}

fs::path LugarEmRestauracao(const fs::path &arquivo)
{
    return arquivo.parent_path() / (arquivo.stem().string() + ".em-restauracao.db");
}

std::string ComecoDosGuardados(const fs::path &arquivo)
{
    return arquivo.stem().string() + ".antes-";
}

void DesfazRestauracao(const fs::path &arquivo)
{
    for (const fs::path &outro : OutrosNomes(arquivo)) {
        for (const char *parte : {"-wal", "-journal"}) {
            if (fs::exists(Parte(outro, parte)) && !fs::exists(Parte(arquivo, parte))) {
                fs::rename(Parte(outro, parte), Parte(arquivo, parte));
            }
        }
        fs::remove(outro);
        SincronizaPasta(arquivo.parent_path());
    }
    if (fs::exists(LugarEmRestauracao(arquivo))) {
        // Making it anew and leaving it removes it, unless another one is making it.
        IgnoraErro([&] { ArquivoEmPreparo(LugarEmRestauracao(arquivo), ""); });
    }
}

void SeparaDiarioAlheio(const fs::path &arquivo)
{
    if (!TemDiarioAlheio(arquivo)) {
        return;
    }
    fs::path lugar = Parte(arquivo, "-wal.de-outro");
    for (int numero = 2; fs::exists(lugar); ++numero) {
        lugar = Parte(arquivo, "-wal.de-outro-") += std::to_string(numero);
    }
    fs::rename(Parte(arquivo, "-wal"), lugar);
    fs::remove(Parte(arquivo, "-shm"));
    SincronizaPasta(arquivo.parent_path());
}

namespace {

void ExigeJornalProprio(const fs::path &arquivo)
{
    if (TemJornalAlheio(arquivo)) {
        throw Falha(
            NumeroFalha::ErroDeAcesso, "Servicos",
            "Ao lado do registro " + arquivo.string() + " há o arquivo " +
                Parte(arquivo, "-journal").filename().string() +
                ", de uma gravação interrompida que não é deste arquivo ou que não foi feita por este programa. "
                "Nada foi aberto, porque ela o mudaria: restaure uma cópia pelo programa, ou guarde esse "
                "arquivo em outra pasta.");
    }
}

} // namespace

AberturaSQLite::AberturaSQLite(const fs::path &arquivo, const DetectorDeRede &rede)
    : m_Arquivo(LugarVerdadeiro(arquivo))
{
    const fs::path pasta = m_Arquivo.parent_path();
    m_Trava.emplace(pasta, TravaDaPasta::Uso::DeTodos, EmRestauracao);
    const std::string disco = rede(m_Arquivo);
    if (!fs::exists(m_Arquivo)) {
        if (!disco.empty()) {
            throw ErroSql(MotivoSql::Acesso, "A pasta " + pasta.string() + " fica em um disco de rede (" + disco +
                                                 "), onde um registro não pode ser gravado com segurança");
        }
        return;
    }
    std::vector<fs::path> gravados = {pasta, m_Arquivo};
    for (const char *parte : PartesAoLado) {
        if (fs::exists(Parte(m_Arquivo, parte))) {
            gravados.push_back(Parte(m_Arquivo, parte));
        }
    }
    const bool grava = std::all_of(gravados.begin(), gravados.end(), PodeGravar);
    if (disco.empty() && grava) {
        if (!OutrosNomes(m_Arquivo).empty() || fs::exists(LugarEmRestauracao(m_Arquivo)) ||
            TemDiarioAlheio(m_Arquivo)) {
            m_Trava.reset();
            m_Trava.emplace(pasta, TravaDaPasta::Uso::DeUm, EmRestauracao);
            DesfazRestauracao(m_Arquivo);
            SeparaDiarioAlheio(m_Arquivo);
        }
        ExigeJornalProprio(m_Arquivo);
        return;
    }
    const std::string rede1 = "O registro está em um disco de rede (" + disco + ")";
    const bool temDiario = Tamanho(Parte(m_Arquivo, "-wal")) > 0 && !TemDiarioAlheio(m_Arquivo);
    // One that begins with zeros is over.
    if (temDiario || std::ifstream(Parte(m_Arquivo, "-journal"), std::ios::binary).get() > 0) {
        const std::string qual = Parte(m_Arquivo, temDiario ? "-wal" : "-journal").filename().string();
        throw Falha(NumeroFalha::PermissaoNegada, "Servicos",
                    disco.empty()
                        ? "O registro não pode ser aberto: parte do que foi gravado está ainda no arquivo " + qual +
                              ", ao lado dele, e falta permissão para gravar em " + pasta.string() +
                              ". Abra-o uma vez com permissão para gravar, ou copie os dois arquivos juntos para uma "
                              "pasta sua e abra-o lá."
                        : rede1 + " e parte do que foi gravado está ainda no arquivo " + qual +
                              ", ao lado dele. Feche-o no computador em que o disco está, ou copie os dois arquivos "
                              "juntos para um disco deste computador e abra-o lá.");
    }
    m_SoConsulta =
        disco.empty() ? "O registro só pode ser consultado: falta permissão para gravar no arquivo ou na sua pasta, ou "
                        "o disco só pode ser lido."
                      : rede1 + ", onde trabalhar nele o danificaria: só pode ser consultado. Para trabalhar, copie-o "
                                "para um disco deste computador e abra-o lá.";
}

} // namespace mesa
