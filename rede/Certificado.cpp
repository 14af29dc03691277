#include "rede/Certificado.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <arpa/inet.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace rede {

namespace {

template <auto Libera> struct Liberta {
    template <class T> void operator()(T *alvo) const { Libera(alvo); }
};
using Contexto = std::unique_ptr<SSL_CTX, Liberta<SSL_CTX_free>>;
using Conexao = std::unique_ptr<SSL, Liberta<SSL_free>>;
using Certidao = std::unique_ptr<X509, Liberta<X509_free>>;
using Enderecos = std::unique_ptr<addrinfo, Liberta<freeaddrinfo>>;

class Soquete {
  public:
    explicit Soquete(int numero) : m_Numero(numero) {}
    Soquete(Soquete &&outro) noexcept : m_Numero(std::exchange(outro.m_Numero, -1)) {}
    Soquete &operator=(Soquete &&outro) noexcept
    {
        std::swap(m_Numero, outro.m_Numero);
        return *this;
    }
    ~Soquete()
    {
        if (m_Numero >= 0) {
            close(m_Numero);
        }
    }
    int Numero() const { return m_Numero; }

  private:
    int m_Numero;
};

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds Olhada{50}; // how often who waits is asked whether to go on
constexpr const char *NaoRespondeu = "não respondeu a tempo";
constexpr const char *NaoEServidor = "quem responde ali não é um servidor do registro";

class Prazo {
  public:
    Prazo(milliseconds quanto, const mesa::Segue &segue) : m_Fim(steady_clock::now() + quanto), m_Segue(segue) {}

    milliseconds Resta() const
    {
        return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(m_Fim - steady_clock::now()));
    }
    // Until `chegou`, which waits for as long as it is told, gives true. SemServidor when the time is over before.
    template <class Chegou> void Espera(const Chegou &chegou) const
    {
        while (!chegou(std::min(Resta(), Olhada))) {
            if (m_Segue && !m_Segue(0, "Procurando o servidor")) {
                throw EsperaDesistida();
            }
            if (Resta() == milliseconds(0)) {
                throw SemServidor(NaoRespondeu);
            }
        }
    }
    void Espera(int soquete, short evento) const
    {
        Espera([&](milliseconds quanto) {
            pollfd olhado{soquete, evento, 0};
            return poll(&olhado, 1, static_cast<int>(quanto.count())) > 0;
        });
    }

  private:
    steady_clock::time_point m_Fim;
    const mesa::Segue &m_Segue;
};

std::vector<Endereco> NumerosDe(const Endereco &endereco)
{
    addrinfo pedido{};
    pedido.ai_socktype = SOCK_STREAM;
    addrinfo *achados = nullptr;
    if (getaddrinfo(endereco.Maquina.c_str(), nullptr, &pedido, &achados) != 0) {
        return {};
    }
    const Enderecos todos(achados);
    std::vector<Endereco> numeros;
    for (const addrinfo *um = todos.get(); um != nullptr; um = um->ai_next) {
        char texto[NI_MAXHOST] = "";
        if (getnameinfo(um->ai_addr, um->ai_addrlen, texto, sizeof texto, nullptr, 0, NI_NUMERICHOST) == 0) {
            numeros.push_back({texto, endereco.Porta});
        }
    }
    return numeros;
}

// A name may be of several machines. Nothing bounds how long it is looked for: that is left to a thread which ends by
// itself, whether somebody still waits for it or not.
std::vector<Endereco> Procura(const Endereco &endereco, const Prazo &prazo)
{
    std::promise<std::vector<Endereco>> promessa;
    std::future<std::vector<Endereco>> achados = promessa.get_future();
    std::thread([endereco, promessa = std::move(promessa)]() mutable {
        try {
            promessa.set_value(NumerosDe(endereco));
        } catch (...) {
            promessa.set_exception(std::current_exception());
        }
    }).detach();
    prazo.Espera([&](milliseconds quanto) { return achados.wait_for(quanto) == std::future_status::ready; });
    std::vector<Endereco> numeros = achados.get();
    if (numeros.empty()) {
        throw SemServidor("a rede não conhece essa máquina");
    }
    return numeros;
}

Soquete Liga(const Endereco &numero, const Prazo &prazo)
{
    constexpr const char *semCaminho = "não há caminho até ele pela rede";
    addrinfo pedido{};
    pedido.ai_socktype = SOCK_STREAM;
    pedido.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    addrinfo *achado = nullptr;
    if (getaddrinfo(numero.Maquina.c_str(), std::to_string(numero.Porta).c_str(), &pedido, &achado) != 0) {
        throw SemServidor(semCaminho);
    }
    const Enderecos onde(achado);
    Soquete soquete(socket(onde->ai_family, onde->ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, onde->ai_protocol));
    if (soquete.Numero() < 0) {
        throw SemServidor(semCaminho);
    }
    if (connect(soquete.Numero(), onde->ai_addr, onde->ai_addrlen) == 0) {
        return soquete;
    }
    int erro = errno;
    if (erro == EINPROGRESS) {
        prazo.Espera(soquete.Numero(), POLLOUT);
        socklen_t tamanho = sizeof erro;
        getsockopt(soquete.Numero(), SOL_SOCKET, SO_ERROR, &erro, &tamanho);
        if (erro == 0) {
            return soquete;
        }
    }
    throw SemServidor(erro == ECONNREFUSED ? "não há servidor ligado ali" : semCaminho);
}

bool EhNumero(const std::string &maquina)
{
    in6_addr onde{};
    return inet_pton(AF_INET, maquina.c_str(), &onde) == 1 || inet_pton(AF_INET6, maquina.c_str(), &onde) == 1;
}

std::string Pem(X509 &certidao)
{
    const std::unique_ptr<BIO, Liberta<BIO_free>> memoria(BIO_new(BIO_s_mem()));
    PEM_write_bio_X509(memoria.get(), &certidao);
    char *texto = nullptr;
    const long tamanho = BIO_get_mem_data(memoria.get(), &texto);
    return {texto, static_cast<std::size_t>(tamanho)};
}

std::string Digital(const X509 &certidao)
{
    unsigned char soma[EVP_MAX_MD_SIZE];
    unsigned quantos = 0;
    X509_digest(&certidao, EVP_sha256(), soma, &quantos);
    std::string texto;
    for (unsigned n = 0; n < quantos; ++n) {
        char par[4];
        std::snprintf(par, sizeof par, "%02X:", soma[n]);
        texto += par;
    }
    texto.pop_back();
    return texto;
}

std::string TextoDe(const ASN1_STRING *texto)
{
    return {reinterpret_cast<const char *>(ASN1_STRING_get0_data(texto)),
            static_cast<std::size_t>(ASN1_STRING_length(texto))};
}

// The first name or address that it is for, else the common name.
std::string NomeDe(X509 &certidao)
{
    const auto libera = [](GENERAL_NAMES *nomes) { GENERAL_NAMES_free(nomes); };
    const std::unique_ptr<GENERAL_NAMES, decltype(libera)> nomes(
        static_cast<GENERAL_NAMES *>(X509_get_ext_d2i(&certidao, NID_subject_alt_name, nullptr, nullptr)), libera);
    std::string numero;
    for (int n = 0; n < sk_GENERAL_NAME_num(nomes.get()); ++n) {
        int tipo = 0;
        const auto *valor =
            static_cast<const ASN1_STRING *>(GENERAL_NAME_get0_value(sk_GENERAL_NAME_value(nomes.get(), n), &tipo));
        if (tipo == GEN_DNS) {
            // Of all machines of a domain: one of them.
            const std::string nome = TextoDe(valor);
            return nome.starts_with("*.") ? "servidor" + nome.substr(1) : nome;
        }
        if (tipo == GEN_IPADD && numero.empty()) {
            char texto[INET6_ADDRSTRLEN] = "";
            inet_ntop(ASN1_STRING_length(valor) == 4 ? AF_INET : AF_INET6, ASN1_STRING_get0_data(valor), texto,
                      sizeof texto);
            numero = texto;
        }
    }
    if (!numero.empty()) {
        return numero;
    }
    const X509_NAME *dono = X509_get_subject_name(&certidao);
    const int onde = X509_NAME_get_index_by_NID(const_cast<X509_NAME *>(dono), NID_commonName, -1);
    return onde < 0 ? "" : TextoDe(X509_NAME_ENTRY_get_data(X509_NAME_get_entry(dono, onde)));
}

// Why the certificate does not count, by the verification of the connection when an authority is asked for.
std::string DefeitoDe(const SSL &conexao, const X509 &certidao, bool autoridade)
{
    if (X509_cmp_current_time(X509_get0_notBefore(&certidao)) > 0) {
        return "o certificado dele ainda não vale; confira o relógio deste computador";
    }
    if (X509_cmp_current_time(X509_get0_notAfter(&certidao)) < 0) {
        return "o certificado dele venceu";
    }
    if (!autoridade) {
        return "";
    }
    switch (SSL_get_verify_result(&conexao)) {
    case X509_V_OK:
        return "";
    case X509_V_ERR_HOSTNAME_MISMATCH:
    case X509_V_ERR_IP_ADDRESS_MISMATCH:
        return "o certificado dele é de outra máquina";
    default:
        return "o certificado dele não é da autoridade indicada";
    }
}

// The certificate that one address shows.
Certificado DoNumero(SSL_CTX &contexto, const std::string &maquina, const Endereco &numero, bool autoridade,
                     const Prazo &prazo)
{
    const Soquete soquete = Liga(numero, prazo);
    const Conexao conexao(SSL_new(&contexto));
    // It is looked at below, so that what is wrong with it can be told in words.
    SSL_set_verify(conexao.get(), SSL_VERIFY_NONE, nullptr);
    if (EhNumero(maquina)) {
        X509_VERIFY_PARAM_set1_ip_asc(SSL_get0_param(conexao.get()), maquina.c_str());
    } else {
        SSL_set1_host(conexao.get(), maquina.c_str());
        SSL_set_tlsext_host_name(conexao.get(), maquina.c_str());
    }
    static constexpr unsigned char protocolo[] = {2, 'h', '2'};
    SSL_set_alpn_protos(conexao.get(), protocolo, sizeof protocolo);
    SSL_set_fd(conexao.get(), soquete.Numero());

    ERR_clear_error();
    for (int feito = SSL_connect(conexao.get()); feito != 1; feito = SSL_connect(conexao.get())) {
        const int erro = SSL_get_error(conexao.get(), feito);
        if (erro != SSL_ERROR_WANT_READ && erro != SSL_ERROR_WANT_WRITE) {
            const unsigned long qual = ERR_peek_error();
            ERR_clear_error();
            if (ERR_GET_REASON(qual) == SSL_R_WRONG_VERSION_NUMBER) {
                throw SemTls(NaoEServidor);
            }
            throw SemServidor(erro == SSL_ERROR_SSL ? NaoEServidor : "a conexão caiu");
        }
        prazo.Espera(soquete.Numero(), erro == SSL_ERROR_WANT_READ ? POLLIN : POLLOUT);
    }
    const Certidao certidao(SSL_get1_peer_certificate(conexao.get()));
    if (!certidao) {
        throw SemServidor(NaoEServidor);
    }
    return {Pem(*certidao), Digital(*certidao), NomeDe(*certidao), DefeitoDe(*conexao, *certidao, autoridade), numero};
}

} // namespace

Certificado Certificado::De(const Endereco &endereco, const std::string &autoridade, milliseconds quanto,
                            const mesa::Segue &segue)
{
    const Prazo prazo(quanto, segue);
    const std::vector<Endereco> numeros = EhNumero(endereco.Maquina) ? std::vector{endereco} : Procura(endereco, prazo);
    return De(endereco.Maquina, numeros, autoridade, prazo.Resta(), segue);
}

Certificado Certificado::De(const std::string &maquina, const std::vector<Endereco> &numeros,
                            const std::string &autoridade, milliseconds quanto, const mesa::Segue &segue)
{
    const Contexto contexto(SSL_CTX_new(TLS_client_method()));
    SSL_CTX_set_min_proto_version(contexto.get(), TLS1_2_VERSION);
    if (!autoridade.empty() && SSL_CTX_load_verify_locations(contexto.get(), autoridade.c_str(), nullptr) != 1) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado, "Rede",
                    "O arquivo do certificado da autoridade não pôde ser lido: " + autoridade + ".");
    }
    const Prazo todo(quanto, segue);
    for (std::size_t n = 0;; ++n) {
        try {
            const Prazo parte(todo.Resta() / (numeros.size() - n), segue);
            return DoNumero(*contexto, maquina, numeros[n], !autoridade.empty(), parte);
        } catch (const EsperaDesistida &) {
            throw;
        } catch (const SemTls &) {
            throw; // it is there
        } catch (const SemServidor &) {
            if (n + 1 == numeros.size()) {
                throw;
            }
        }
    }
}

} // namespace rede
