#include "services/Calendario.h"

#include "host/Conversoes.h"

#include <cmath>

namespace mesa {

std::int32_t DiaCivil(Data data)
{
    const Data dia{std::trunc(data.Valor)};
    if (dia.Vazia()) {
        return 0;
    }
    const PartesData partes = dia.Partes();
    return (partes.Ano * 100 + partes.Mes) * 100 + partes.Dia;
}

Data DataDoDia(std::int32_t dia)
{
    return dia == 0 ? Data{} : DataDe(dia % 100, dia / 100 % 100, dia / 10000);
}

std::int64_t Momento(Data data)
{
    const PartesData partes = data.Partes();
    const std::int64_t dia = (partes.Ano * 100 + partes.Mes) * 100 + partes.Dia;
    return dia * 1000000 + (partes.Hora * 100 + partes.Minuto) * 100 + partes.Segundo;
}

std::int64_t MaisMinutos(std::int64_t momento, std::int32_t minutos)
{
    constexpr int minutosDoDia = 1440;
    const std::int64_t hora = momento / 10000 % 100;
    const std::int64_t minuto = momento / 100 % 100 + hora * 60 + minutos;
    const std::int64_t dias = minuto >= 0 ? minuto / minutosDoDia : -((minutosDoDia - 1 - minuto) / minutosDoDia);
    const std::int64_t doDia = minuto - dias * minutosDoDia;
    const Data dia = DataDoDia(static_cast<std::int32_t>(momento / 1000000)).MaisDias(static_cast<std::int32_t>(dias));
    return DiaCivil(dia) * std::int64_t{1000000} + (doDia / 60 * 100 + doDia % 60) * 100 + momento % 100;
}

std::string TextoDoDia(std::int32_t dia)
{
    return Format(CDbl(dia % 100), "00") + "/" + Format(CDbl(dia / 100 % 100), "00") + "/" +
           Format(CDbl(dia / 10000), "0000");
}

std::string TextoDoMomento(std::int64_t momento)
{
    return TextoDoDia(static_cast<std::int32_t>(momento / 1000000)) + " às " +
           Format(CDbl(momento % 1000000), "00:00:00");
}

std::string TextoDaHora(std::int32_t hora)
{
    return Format(CDbl(hora), "00:00");
}

} // namespace mesa
