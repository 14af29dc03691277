#include "search/CVORPesqEquip.h"

namespace {

[[noreturn]] void Recusa(const std::string &metodo)
{
    throw Falha(-1, std::string(NomeComponente) + ".CVORPesqEquip", "AVISO: Método " + metodo + " depreciado");
}

} // namespace

bool CVORPesqEquip::CarregaPesqEquip(std::int32_t &, std::string &, std::string &)
{
    Recusa("CarregaPesqEquip");
}

bool CVORPesqEquip::CarregaPesqEquip2(std::int32_t &, std::string &, std::string &, std::int16_t *,
                                      std::optional<std::string>)
{
    Recusa("CarregaPesqEquip2");
}

bool CVORPesqEquip::CarregaPesqEquip3(std::int32_t &, std::string &, std::string &, std::int16_t *,
                                      std::optional<std::string>, std::optional<bool>)
{
    Recusa("CarregaPesqEquip3");
}

bool CVORPesqEquip::BuscaEquipto(std::int32_t &, std::string &, std::string &, std::int16_t *,
                                 std::optional<std::string>, std::optional<bool>)
{
    Recusa("BuscaEquipto");
}

bool CVORPesqEquip::ConsultaAfericaoVigente(std::int32_t, std::string &, std::string &, Data &, Data)
{
    Recusa("ConsultaAfericaoVigente");
}
