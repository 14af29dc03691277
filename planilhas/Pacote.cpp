#include "planilhas/Pacote.h"

#include "planilhas/Falhas.h"

#include <zip.h>

#include <algorithm>

namespace planilhas {

namespace {

constexpr std::uint64_t MaiorPequena = 16777216;
constexpr zip_int64_t MaisPartes = 20000;

[[noreturn]] void Danificado()
{
    FalhaDeFormato("O arquivo está danificado e não abre: confira-o e tente de novo.");
}

[[noreturn]] void GrandeDemais()
{
    FalhaDeFormato("O arquivo, descompactado, é grande demais para ser lido como tabela.");
}

// What the library did not do: the system's fault where it tells one, the file's otherwise.
[[noreturn]] void Recusa(const zip_error_t &erro, const std::string &ato)
{
    const int numero = zip_error_code_zip(&erro);
    if (numero == ZIP_ER_MEMORY) {
        throw Falha(NumeroFalha::SemMemoria);
    }
    if (numero == ZIP_ER_NOENT) {
        FalhaDeArquivo(ENOENT, ato);
    }
    if (zip_error_system_type(&erro) == ZIP_ET_SYS && zip_error_code_system(&erro) != 0) {
        FalhaDeArquivo(zip_error_code_system(&erro), ato);
    }
    if (numero == ZIP_ER_ENCRNOTSUPP || numero == ZIP_ER_NOPASSWD || numero == ZIP_ER_WRONGPASSWD) {
        FalhaDeFormato("O arquivo está protegido por senha: salve-o sem senha e tente de novo.");
    }
    Danificado();
}

} // namespace

ParteDoPacote::ParteDoPacote(zip_file *aberta, std::uint64_t limite) : m_Aberta(aberta), m_Resta(limite) {}

ParteDoPacote::~ParteDoPacote()
{
    zip_fclose(m_Aberta);
}

std::size_t ParteDoPacote::Le(char *destino, std::size_t quantos)
{
    const zip_int64_t lidos = zip_fread(m_Aberta, destino, quantos);
    if (lidos < 0) {
        Recusa(*zip_file_get_error(m_Aberta), "Não foi possível ler o arquivo");
    }
    const auto octetos = static_cast<std::uint64_t>(lidos);
    if (octetos > m_Resta) {
        GrandeDemais();
    }
    m_Resta -= octetos;
    return octetos;
}

Pacote::Pacote(const std::filesystem::path &arquivo, std::uint64_t limite) : m_Aberto(nullptr), m_Limite(limite)
{
    int numero = 0;
    m_Aberto = zip_open(arquivo.c_str(), ZIP_RDONLY, &numero);
    if (m_Aberto == nullptr) {
        const int doSistema = errno;
        zip_error_t erro;
        zip_error_init_with_code(&erro, numero);
        zip_error_set(&erro, numero, zip_error_system_type(&erro) == ZIP_ET_SYS ? doSistema : 0);
        Recusa(erro, "Não foi possível ler " + arquivo.string());
    }
    if (zip_get_num_entries(m_Aberto, 0) > MaisPartes) {
        zip_discard(m_Aberto);
        FalhaDeFormato("O arquivo tem partes demais para uma planilha.");
    }
}

Pacote::~Pacote()
{
    zip_discard(m_Aberto);
}

std::int64_t Pacote::Lugar(const std::string &parte) const
{
    return zip_name_locate(m_Aberto, parte.c_str(), ZIP_FL_NOCASE);
}

bool Pacote::Tem(const std::string &parte) const
{
    return Lugar(parte) >= 0;
}

std::unique_ptr<ParteDoPacote> Pacote::Abre(const std::string &parte)
{
    return Abre(parte, m_Limite);
}

std::unique_ptr<ParteDoPacote> Pacote::AbrePequena(const std::string &parte)
{
    return Abre(parte, std::min(m_Limite, MaiorPequena));
}

std::unique_ptr<ParteDoPacote> Pacote::Abre(const std::string &parte, std::uint64_t limite)
{
    const std::int64_t lugar = Lugar(parte);
    if (lugar < 0) {
        FalhaDeFormato("O arquivo está incompleto: falta nele a parte " + parte + ".");
    }
    zip_stat_t dela;
    zip_stat_init(&dela);
    if (zip_stat_index(m_Aberto, static_cast<zip_uint64_t>(lugar), 0, &dela) == 0 &&
        (dela.valid & ZIP_STAT_SIZE) != 0 && dela.size > limite) {
        GrandeDemais();
    }
    zip_file_t *const aberta = zip_fopen_index(m_Aberto, static_cast<zip_uint64_t>(lugar), 0);
    if (aberta == nullptr) {
        Recusa(*zip_get_error(m_Aberto), "Não foi possível ler o arquivo");
    }
    return std::make_unique<ParteDoPacote>(aberta, limite);
}

} // namespace planilhas
