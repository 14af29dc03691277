#include "tests/services/PapelDeTrabalho.h"

#include "services/DialetoPostgres.h"
#include "tests/services/Motor.h"

#include <string_view>

namespace papel {

namespace {

const std::string Trabalho = "trabalho_de_teste";

} // namespace

std::string ComTrabalho(const std::string &onde)
{
    motor::Linhas(onde, "DO $$BEGIN CREATE ROLE " + Trabalho +
                            " LOGIN; EXCEPTION WHEN duplicate_object OR unique_violation THEN NULL; END$$");
    return onde + "?papel_de_trabalho=" + Trabalho;
}

std::string DeTrabalho(const std::string &onde)
{
    if (!mesa::DialetoPostgres::Reconhece(onde)) {
        return onde;
    }
    constexpr std::string_view dono = "//postgres@";
    std::string como = onde;
    return como.replace(como.find(dono), dono.size(), "//" + Trabalho + "@");
}

} // namespace papel
