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

} // namespace mesa
