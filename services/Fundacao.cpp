#include "services/Fundacao.h"

#include "services/Historico.h"
#include "services/MapaRegistro.h"
#include "services/ServicoLayouts.h"

#include <QUuid>

#include <sodium.h>

#include <array>

namespace mesa {

namespace {

template <std::size_t N> QString EmHexadecimal(const std::array<unsigned char, N> &octetos)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(octetos.data()), N).toHex();
}

} // namespace

void Fundacao::EscreveIdentidade(Banco &banco, TipoDeRegistro tipo, const Instante &agora)
{
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publica{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secreta{};
    if (sodium_init() < 0 || crypto_sign_keypair(publica.data(), secreta.data()) != 0) {
        throw Falha(NumeroFalha::ErroInterno, "Servicos", "Não foi possível fazer as chaves do registro.");
    }
    banco.Insere("REGISTRO", {{"Nro", 1},
                              {"Identificador", QUuid::createUuid().toString(QUuid::WithoutBraces)},
                              {"Tipo", static_cast<int>(tipo)},
                              {"CriadoEm", qlonglong(agora.Utc())},
                              {"Fuso", agora.Fuso},
                              {"ChavePublica", EmHexadecimal(publica)},
                              {"ChaveSecreta", EmHexadecimal(secreta)}});
    sodium_memzero(secreta.data(), secreta.size());
}

void Fundacao::Funda(Banco &banco, TipoDeRegistro tipo, const Instante &agora)
{
    EscreveIdentidade(banco, tipo, agora);
    Historico(banco).Registra(agora, 0, {"REGISTRO", 1, 1, "REGISTRO", 1, "inclui"});
    for (const Ref<LayoutED> &layout : LayoutsDoPrograma()) {
        const std::int64_t numero = MapaRegistro::Insere(banco, "LAYOUT", *layout);
        Historico(banco).Registra(agora, 0, {"LAYOUT", numero, 1, "LAYOUT", numero, "inclui"});
    }
}

} // namespace mesa
