#include "server/Certificado.h"

#include "host/Falha.h"
#include "services/Disco.h"

#include <fcntl.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>

namespace servidor {

namespace {

template <auto Solta> struct Solto {
    template <class T> void operator()(T *coisa) const { Solta(coisa); }
};
using Bio = std::unique_ptr<BIO, Solto<BIO_free_all>>;
using X509_ = std::unique_ptr<X509, Solto<X509_free>>;
using Chave_ = std::unique_ptr<EVP_PKEY, Solto<EVP_PKEY_free>>;

constexpr const char *NomeDoCertificado = "servidor.crt";
constexpr const char *NomeDaChave = "servidor.key";

[[noreturn]] void Falhou(const std::string &frase)
{
    throw Falha(NumeroFalha::ErroDeAcesso, "Servidor", frase);
}

std::string LeArquivo(const std::filesystem::path &caminho)
{
    std::error_code erro;
    std::ifstream arquivo(caminho, std::ios::binary);
    const int porque = arquivo ? 0 : errno;
    if (porque != 0 || std::filesystem::is_directory(caminho, erro)) {
        Falhou("O arquivo " + caminho.string() +
               " não pôde ser lido: " + (porque == 0 ? "é uma pasta" : mesa::MotivoDoSistema(porque)) + ".");
    }
    std::stringstream tudo;
    tudo << arquivo.rdbuf();
    return tudo.str();
}

Bio Octetos(const std::string &texto)
{
    return Bio(BIO_new_mem_buf(texto.data(), static_cast<int>(texto.size())));
}

X509_ CertificadoDe(const std::string &pem)
{
    return X509_(PEM_read_bio_X509(Octetos(pem).get(), nullptr, nullptr, nullptr));
}

// A key under a password would ask for it at the terminal.
int SemSenha(char *, int, int, void *)
{
    return -1;
}

Chave_ ChaveDe(const std::string &pem)
{
    return Chave_(PEM_read_bio_PrivateKey(Octetos(pem).get(), nullptr, SemSenha, nullptr));
}

std::string DiaDe(const ASN1_TIME *momento)
{
    std::tm partes{};
    ASN1_TIME_to_tm(momento, &partes);
    std::array<char, 32> texto{};
    std::strftime(texto.data(), texto.size(), "%d/%m/%Y às %H:%M (UTC)", &partes);
    return texto.data();
}

// Why they are of no use; the files' names are for the sentence.
std::string RecusaDoPar(const ParDeChaves &par, const std::string &arquivo, const std::string &arquivoDaChave)
{
    ERR_clear_error();
    const X509_ certificado = CertificadoDe(par.Certificado);
    if (!certificado) {
        return "O arquivo " + arquivo + " não tem um certificado (PEM).";
    }
    const Chave_ chave = ChaveDe(par.Chave);
    if (!chave) {
        return "O arquivo " + arquivoDaChave + " não tem uma chave privada (PEM), ou ela pede uma senha.";
    }
    if (X509_check_private_key(certificado.get(), chave.get()) != 1) {
        return "A chave de " + arquivoDaChave + " não é a do certificado de " + arquivo + ".";
    }
    if (X509_cmp_current_time(X509_get0_notAfter(certificado.get())) <= 0) {
        return "O certificado de " + arquivo + " venceu em " + DiaDe(X509_get0_notAfter(certificado.get())) + ".";
    }
    if (X509_cmp_current_time(X509_get0_notBefore(certificado.get())) > 0) {
        return "O certificado de " + arquivo + " só vale a partir de " + DiaDe(X509_get0_notBefore(certificado.get())) +
               ".";
    }
    return "";
}

// What this machine is called, as an extension of the certificate takes it.
std::string NomesDestaMaquina()
{
    std::set<std::string> nomes{"DNS:localhost", "IP:127.0.0.1", "IP:::1"};
    std::array<char, 256> nome{};
    if (::gethostname(nome.data(), nome.size() - 1) == 0) {
        const std::string maquina(nome.data());
        constexpr const char *letras = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-";
        if (!maquina.empty() && maquina.find_first_not_of(letras) == std::string::npos) {
            nomes.insert("DNS:" + maquina);
        }
    }
    ifaddrs *primeiro = nullptr;
    if (::getifaddrs(&primeiro) == 0) {
        for (const ifaddrs *um = primeiro; um != nullptr; um = um->ifa_next) {
            const int familia = um->ifa_addr == nullptr ? AF_UNSPEC : um->ifa_addr->sa_family;
            if (familia != AF_INET && familia != AF_INET6) {
                continue;
            }
            std::array<char, NI_MAXHOST> texto{};
            const socklen_t tamanho = familia == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
            if (::getnameinfo(um->ifa_addr, tamanho, texto.data(), texto.size(), nullptr, 0, NI_NUMERICHOST) == 0 &&
                std::strchr(texto.data(), '%') == nullptr) {
                nomes.insert("IP:" + std::string(texto.data()));
            }
        }
        ::freeifaddrs(primeiro);
    }
    std::string todos;
    for (const std::string &um : nomes) {
        todos += (todos.empty() ? "" : ",") + um;
    }
    return todos;
}

void PoeExtensao(X509 &certificado, int qual, const std::string &valor)
{
    X509V3_CTX contexto;
    X509V3_set_ctx_nodb(&contexto);
    X509V3_set_ctx(&contexto, &certificado, &certificado, nullptr, nullptr, 0);
    const std::unique_ptr<X509_EXTENSION, Solto<X509_EXTENSION_free>> extensao(
        X509V3_EXT_conf_nid(nullptr, &contexto, qual, valor.c_str()));
    if (!extensao || X509_add_ext(&certificado, extensao.get(), -1) != 1) {
        Falhou("O certificado do servidor não pôde ser feito.");
    }
}

template <class Escreve> std::string Pem(Escreve &&escreve)
{
    const Bio memoria(BIO_new(BIO_s_mem()));
    if (!memoria || escreve(memoria.get()) != 1) {
        Falhou("O certificado do servidor não pôde ser escrito.");
    }
    char *octetos = nullptr;
    const long tamanho = BIO_get_mem_data(memoria.get(), &octetos);
    return {octetos, static_cast<std::size_t>(tamanho)};
}

ParDeChaves Novo()
{
    constexpr long dezAnos = 3652L * 24 * 60 * 60;
    constexpr int bitsDoNumero = 127;
    const Chave_ chave(EVP_EC_gen("P-256"));
    const X509_ certificado(X509_new());
    if (!chave || !certificado) {
        Falhou("O certificado do servidor não pôde ser feito.");
    }
    X509 &novo = *certificado;
    X509_set_version(&novo, 2);
    const std::unique_ptr<BIGNUM, Solto<BN_free>> numero(BN_new());
    BN_rand(numero.get(), bitsDoNumero, BN_RAND_TOP_ONE, BN_RAND_BOTTOM_ANY);
    BN_to_ASN1_INTEGER(numero.get(), X509_get_serialNumber(&novo));
    X509_gmtime_adj(X509_getm_notBefore(&novo), -3600); // a desk's clock may be a little behind
    X509_gmtime_adj(X509_getm_notAfter(&novo), dezAnos);
    X509_set_pubkey(&novo, chave.get());
    X509_NAME *nome = X509_get_subject_name(&novo);
    const std::string comum = "Servidor do registro de equipamentos";
    X509_NAME_add_entry_by_txt(nome, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char *>(comum.c_str()), -1,
                               -1, 0);
    X509_set_issuer_name(&novo, nome);
    PoeExtensao(novo, NID_basic_constraints, "critical,CA:FALSE");
    PoeExtensao(novo, NID_key_usage, "critical,digitalSignature");
    PoeExtensao(novo, NID_ext_key_usage, "serverAuth");
    PoeExtensao(novo, NID_subject_alt_name, NomesDestaMaquina());
    if (X509_sign(&novo, chave.get(), EVP_sha256()) == 0) {
        Falhou("O certificado do servidor não pôde ser assinado.");
    }
    return {Pem([&](BIO *onde) { return PEM_write_bio_X509(onde, &novo); }), Pem([&](BIO *onde) {
                return PEM_write_bio_PrivateKey(onde, chave.get(), nullptr, nullptr, 0, nullptr, nullptr);
            })};
}

// Under a name that nobody looks for until it is whole.
void Grava(const std::filesystem::path &caminho, const std::string &texto, mode_t modo)
{
    const std::string novo = caminho.string() + ".novo";
    ::unlink(novo.c_str());
    const int arquivo = ::open(novo.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, modo);
    const bool escrito = arquivo >= 0 &&
                         ::write(arquivo, texto.data(), texto.size()) == static_cast<ssize_t>(texto.size()) &&
                         ::fsync(arquivo) == 0;
    const int erro = errno;
    if (arquivo >= 0) {
        ::close(arquivo);
    }
    if (!escrito || ::rename(novo.c_str(), caminho.c_str()) != 0) {
        const int porque = escrito ? errno : erro;
        ::unlink(novo.c_str());
        Falhou("O arquivo " + caminho.string() + " não pôde ser gravado: " + mesa::MotivoDoSistema(porque) + ".");
    }
}

} // namespace

std::string ParDeChaves::Digital() const
{
    const X509_ certificado = CertificadoDe(Certificado);
    std::array<unsigned char, EVP_MAX_MD_SIZE> resumo{};
    unsigned int tamanho = 0;
    if (!certificado || X509_digest(certificado.get(), EVP_sha256(), resumo.data(), &tamanho) != 1) {
        return "";
    }
    constexpr const char *digitos = "0123456789ABCDEF";
    std::string texto;
    for (unsigned int n = 0; n < tamanho; ++n) {
        texto += n == 0 ? "" : ":";
        texto += digitos[resumo[n] >> 4];
        texto += digitos[resumo[n] & 15];
    }
    return texto;
}

std::string ParDeChaves::AvisoDeVencimento() const
{
    constexpr std::time_t antes = 60L * 24 * 60 * 60;
    const X509_ certificado = CertificadoDe(Certificado);
    const ASN1_TIME *fim = certificado ? X509_get0_notAfter(certificado.get()) : nullptr;
    std::time_t limite = std::time(nullptr) + antes;
    if (fim == nullptr || X509_cmp_time(fim, &limite) > 0) {
        return "";
    }
    return "O certificado do servidor vence em " + DiaDe(fim) + ": depois disso as mesas o recusam.";
}

std::string ParDeChaves::RecusaDosArquivos(const std::string &certificado, const std::string &chave)
try {
    return RecusaDoPar({LeArquivo(certificado), LeArquivo(chave)}, certificado, chave);
} catch (const Falha &falha) {
    return falha.Descricao;
}

ParDeChaves ParDeChaves::DosArquivos(const std::string &certificado, const std::string &chave)
{
    ParDeChaves par{LeArquivo(certificado), LeArquivo(chave)};
    if (const std::string recusa = RecusaDoPar(par, certificado, chave); !recusa.empty()) {
        Falhou(recusa);
    }
    return par;
}

std::optional<ParDeChaves> ParDeChaves::ConferePasta(const std::string &pasta)
{
    const std::filesystem::path certificado = std::filesystem::path(pasta) / NomeDoCertificado;
    std::error_code erro;
    if (std::filesystem::exists(certificado, erro)) {
        return DosArquivos(certificado.string(), (std::filesystem::path(pasta) / NomeDaChave).string());
    }
    if (::access(pasta.c_str(), R_OK | W_OK | X_OK) != 0) {
        Falhou("O certificado do servidor ainda não existe, e na pasta " + pasta +
               " não se pode gravar: " + mesa::MotivoDoSistema(errno) + ".");
    }
    return std::nullopt;
}

ParDeChaves ParDeChaves::Proprio(const std::string &pasta)
{
    // Two servers that start at the same time in one directory have one certificate.
    const int tranca = ::open(pasta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (tranca < 0 || ::flock(tranca, LOCK_EX) != 0) {
        const int erro = errno;
        if (tranca >= 0) {
            ::close(tranca);
        }
        Falhou("A pasta do certificado, " + pasta + ", não pôde ser aberta: " + mesa::MotivoDoSistema(erro) + ".");
    }
    const std::unique_ptr<const int, void (*)(const int *)> solta(&tranca, [](const int *qual) { ::close(*qual); });
    const std::filesystem::path certificado = std::filesystem::path(pasta) / NomeDoCertificado;
    const std::filesystem::path chave = std::filesystem::path(pasta) / NomeDaChave;
    std::error_code erro;
    // A certificate that was there is the one that the desks know: only where there is none a new one is made.
    if (!std::filesystem::exists(certificado, erro)) {
        const ParDeChaves novo = Novo();
        Grava(chave, novo.Chave, S_IRUSR | S_IWUSR);
        Grava(certificado, novo.Certificado, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
    }
    return DosArquivos(certificado.string(), chave.string());
}

} // namespace servidor
