#include "services/Senhas.h"

#include "host/Falha.h"

#include <sodium.h>

#include <array>

namespace mesa {

std::string Senhas::Embaralha(const Segredo &senha, const CustoDaSenha &custo)
{
    const Segredo composta = senha.Composto();
    std::array<char, crypto_pwhash_STRBYTES> texto{};
    if (sodium_init() < 0 || crypto_pwhash_str(texto.data(), composta.Texto().data(), composta.Texto().size(),
                                               custo.Passadas, custo.Memoria) != 0) {
        throw Falha(NumeroFalha::SemMemoria, "Servicos", "Não há memória para conferir a senha.");
    }
    return texto.data();
}

bool Senhas::Confere(const std::string &embaralhada, const Segredo &senha, const CustoDaSenha &custo)
{
    if (embaralhada.empty()) {
        Embaralha(senha, custo);
        return false;
    }
    const Segredo composta = senha.Composto();
    return sodium_init() >= 0 &&
           crypto_pwhash_str_verify(embaralhada.c_str(), composta.Texto().data(), composta.Texto().size()) == 0;
}

bool Senhas::Envelheceu(const std::string &embaralhada, const CustoDaSenha &custo)
{
    return crypto_pwhash_str_needs_rehash(embaralhada.c_str(), custo.Passadas, custo.Memoria) != 0;
}

std::string Senhas::Estica(const std::string &texto, const std::string &sal, const CustoDaSenha &custo)
{
    std::array<unsigned char, crypto_pwhash_SALTBYTES> octetosDoSal{};
    std::array<unsigned char, 32> esticado{};
    if (sodium_init() < 0 ||
        crypto_generichash(octetosDoSal.data(), octetosDoSal.size(),
                           reinterpret_cast<const unsigned char *>(sal.data()), sal.size(), nullptr, 0) != 0 ||
        crypto_pwhash(esticado.data(), esticado.size(), texto.data(), texto.size(), octetosDoSal.data(), custo.Passadas,
                      custo.Memoria, crypto_pwhash_ALG_ARGON2ID13) != 0) {
        throw Falha(NumeroFalha::SemMemoria, "Servicos", "Não há memória para conferir a senha.");
    }
    std::array<char, 2 * esticado.size() + 1> digitos{};
    return sodium_bin2hex(digitos.data(), digitos.size(), esticado.data(), esticado.size());
}

} // namespace mesa
