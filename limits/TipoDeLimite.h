#pragma once

#include <cstdint>

// Numbers of the three kinds of row that hang on an equipment, as the windows have them.
inline constexpr std::int16_t TipoLimiteDif = 1;
inline constexpr std::int16_t TipoDiaEspecifico = 2;
inline constexpr std::int16_t TipoHorarioProibido = 3;

// What a kind is.
struct TipoDeLimite {
    std::int16_t Tipo = 0;
    const char *Descr = "";
    std::uint8_t TipoLimite = 0; // the numbering of LimiteDifED; 0 for a kind whose record is a DiaEspecificoED
    bool ComVelocidade = true;
    // Operations of EquiptoRN.
    const char *Lista = "";
    const char *Consulta = "";
    const char *Inclui = "";
    const char *Altera = "";
    const char *Desativa = "";

    // A row of a day of the week, a LimiteDifED; otherwise a DiaEspecificoED.
    bool DaSemana() const { return TipoLimite > 0; }
    bool DeUmaData() const { return Tipo == TipoDiaEspecifico; }
};

// The kind of that number; one without a label when there is none.
inline TipoDeLimite TipoDeLimiteDe(std::int16_t tipo)
{
    switch (tipo) {
    case TipoLimiteDif:
        return {.Tipo = tipo,
                .Descr = "Limite Diferenciado",
                .TipoLimite = 1,
                .Lista = "listaLimiteDif",
                .Consulta = "consultaSimplesLimiteDif",
                .Inclui = "alteraListaLimitesDif",
                .Altera = "alteraListaLimitesDif",
                .Desativa = "desativaLimiteDif"};
    case TipoDiaEspecifico:
        return {.Tipo = tipo,
                .Descr = "Dia Específico",
                .Lista = "listaDiaEspecifico",
                .Consulta = "consultaSimplesDiaEspecifico",
                .Inclui = "adicionaDiaEspecifico",
                .Altera = "alteraDiaEspecifico",
                .Desativa = "desativaDiaEspecifico"};
    case TipoHorarioProibido: {
        TipoDeLimite proibido = TipoDeLimiteDe(TipoLimiteDif); // the same record and operations
        proibido.Tipo = tipo;
        proibido.Descr = "Horário Proibido";
        proibido.TipoLimite = 2;
        proibido.ComVelocidade = false;
        return proibido;
    }
    default: { // a specific day in all but the name and the date
        TipoDeLimite nenhum = TipoDeLimiteDe(TipoDiaEspecifico);
        nenhum.Tipo = tipo;
        nenhum.Descr = "";
        return nenhum;
    }
    }
}
