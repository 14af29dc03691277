#include "desk/host/EquipamentosRecentes.h"

#include "host/Conversoes.h"
#include "host/Texto.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

namespace mesa {

namespace {

constexpr const char *Chave = "equipamentosRecentes";
constexpr std::uint8_t Desativado = 2;
constexpr double SegundosDoDia = 24 * 60 * 60;

template <class N> std::optional<N> Numero(const std::string &texto)
{
    N numero{};
    const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
    return erro == std::errc() && fim == texto.data() + texto.size() ? std::optional(numero) : std::nullopt;
}

Ref<EquiptoED> Com(std::int32_t nroIntEquip)
{
    auto equipto = Novo<EquiptoED>();
    equipto->NroIntEquip = nroIntEquip;
    return equipto;
}

} // namespace

bool Renova(SessaoServico &sessao, EquipamentoRecente &qual, std::string &recusa)
{
    Ref<Objeto> pedido = Com(qual.NroIntEquip);
    Valor retorno;
    if (!sessao.Executa("EquiptoRN", "consultaSimples", pedido, retorno, recusa)) {
        return false;
    }
    const auto agora = retorno.Como<EquiptoED>();
    qual.Codigo = agora->Codigo;
    qual.TipoEquip = agora->TipoEquip;
    qual.Cliente = agora->ClienteInc;
    qual.Ativo = agora->Ativo != Desativado;
    return true;
}

std::vector<EquipamentosRecentes::Visto> EquipamentosRecentes::Vistos() const
{
    std::vector<Visto> vistos;
    for (const std::string &linha : Divide(m_Lembrancas->Lembranca(Chave), "\n")) {
        const std::vector<std::string> partes = Divide(linha, " ");
        const auto numero = partes.size() == 2 ? Numero<std::int32_t>(partes[0]) : std::nullopt;
        const auto segundos = numero ? Numero<std::int64_t>(partes[1]) : std::nullopt;
        if (!segundos || vistos.size() == Maximo) {
            continue;
        }
        const Data quando{static_cast<double>(*segundos) / SegundosDoDia};
        const bool repetido = std::ranges::find(vistos, *numero, &Visto::NroIntEquip) != vistos.end();
        if (*numero > 0 && quando.NoCalendario() && !repetido) {
            vistos.push_back({*numero, quando});
        }
    }
    return vistos;
}

void EquipamentosRecentes::Viu(std::int32_t nroIntEquip, Data quando)
{
    std::vector<Visto> vistos = Vistos();
    std::erase_if(vistos, [&](const Visto &visto) { return visto.NroIntEquip == nroIntEquip; });
    vistos.insert(vistos.begin(), {nroIntEquip, quando});
    vistos.resize(std::min(vistos.size(), Maximo));
    std::string texto;
    for (const Visto &visto : vistos) {
        texto += std::to_string(visto.NroIntEquip) + " " +
                 std::to_string(std::llround(visto.Quando.Valor * SegundosDoDia)) + "\n";
    }
    m_Lembrancas->Lembra(Chave, texto);
}

std::vector<EquipamentoRecente> EquipamentosRecentes::Todos(IMDB &banco) const
{
    std::vector<EquipamentoRecente> todos;
    for (const Visto &visto : Vistos()) {
        const Ref<ICursor> linha =
            banco.OpenRecordset("SELECT Codigo, TipoEquip, ClienteInc, Ativo FROM VOREQUIPTO WHERE NroIntEquip = " +
                                    std::to_string(visto.NroIntEquip),
                                InstantaneoSomenteLeitura, Valor(), Valor());
        if (!linha->EOF_()) {
            todos.push_back({visto.NroIntEquip, linha->Fields("Codigo")->Value().Texto(),
                             linha->Fields("TipoEquip")->Value().Texto(), linha->Fields("ClienteInc")->Value().Texto(),
                             linha->Fields("Ativo")->Value().CLng() == 1, visto.Quando});
        }
        linha->Close();
    }
    return todos;
}

} // namespace mesa
