#include "services/Resumo.h"

#include "host/Falha.h"

#include <openssl/evp.h>

#include <array>

namespace mesa {

std::string Resumo(const QByteArray &octetos)
{
    // Looked for once: of a short text each search costs more than the hash.
    static const EVP_MD *const sha256 = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    std::array<unsigned char, 32> soma{};
    // The processor's own instructions for it, which the toolkit does not know.
    if (sha256 == nullptr || EVP_Digest(octetos.constData(), static_cast<std::size_t>(octetos.size()), soma.data(),
                                        nullptr, sha256, nullptr) != 1) {
        throw Falha(NumeroFalha::ErroInterno, "Resumo", "O resumo SHA-256 não pôde ser feito.");
    }
    return QByteArray::fromRawData(reinterpret_cast<const char *>(soma.data()), soma.size()).toHex().toStdString();
}

} // namespace mesa
