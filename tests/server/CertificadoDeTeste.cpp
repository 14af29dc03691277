#include "tests/server/CertificadoDeTeste.h"

#include <openssl/pem.h>
#include <openssl/x509.h>

#include <cstdio>

namespace certificado_de_teste {

void ValeEntre(const std::string &pasta, long de, long ate)
{
    std::FILE *aberto = std::fopen((pasta + "/servidor.crt").c_str(), "r");
    X509 *lido = PEM_read_X509(aberto, nullptr, nullptr, nullptr);
    std::fclose(aberto);
    aberto = std::fopen((pasta + "/servidor.key").c_str(), "r");
    EVP_PKEY *dele = PEM_read_PrivateKey(aberto, nullptr, nullptr, nullptr);
    std::fclose(aberto);
    X509_gmtime_adj(X509_getm_notBefore(lido), de);
    X509_gmtime_adj(X509_getm_notAfter(lido), ate);
    X509_sign(lido, dele, EVP_sha256());
    std::FILE *novo = std::fopen((pasta + "/servidor.crt").c_str(), "w");
    PEM_write_X509(novo, lido);
    std::fclose(novo);
    X509_free(lido);
    EVP_PKEY_free(dele);
}

} // namespace certificado_de_teste
