#include "windows/host/LogradourosWindows.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "windows/automation/Tardio.h"
#include "windows/host/Classes.h"

#include <algorithm>
#include <charconv>

namespace nativo {
namespace {

// The object that knows streets; empty where the table of classes tells none.
Com<IDispatch> DeQuemSabe()
{
    return Classes::Identificador(Classes::Logradouros).empty() ? nullptr : Classes::CriaObjeto(Classes::Logradouros);
}

Logradouro Le(const Com<IDispatch> &objeto)
{
    const Tardio tardio(objeto);
    return {tardio.Chama<std::int32_t>("Codigo"), tardio.Chama<std::int32_t>("CodMunic"),
            tardio.Chama<std::string>("Nome"), tardio.Chama<std::string>("Bairro"), tardio.Chama<std::string>("Cep")};
}

std::vector<MunicipioDeEndereco> DoBanco()
{
    std::vector<MunicipioDeEndereco> municipios;
    const Ref<ICursor> cursor = goGeral->MDB()->OpenRecordset(
        "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO",
        InstantaneoSomenteLeitura, Valor(), Valor());
    while (!cursor->EOF_()) {
        municipios.push_back(
            {cursor->Fields("COD_MUNIC")->Value().CLng(), cursor->Fields("NOME_MUNICIPIO")->Value().Texto()});
        cursor->MoveNext();
    }
    cursor->Close();
    return municipios;
}

} // namespace

const std::vector<MunicipioDeEndereco> &LogradourosWindows::Municipios() const
{
    // Anew for each picker: another session may have another database. The combo of municipalities has shown the
    // failure already, when there is one.
    IgnoraErro([&] { m_Municipios = DoBanco(); });
    return m_Municipios;
}

std::vector<Logradouro> LogradourosWindows::Procura(std::int32_t codMunic, const std::string &procurado,
                                                    std::size_t maximo) const
{
    std::vector<Logradouro> achados;
    if (const Com<IDispatch> ruas = DeQuemSabe()) {
        const Tardio colecao(LeObjeto(
            Tardio(ruas).Chama<Variante>("Procura", codMunic, procurado, static_cast<std::int32_t>(maximo)).Bruta()));
        const std::int32_t quantos = std::min(colecao.Chama<std::int32_t>("Count"), static_cast<std::int32_t>(maximo));
        for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
            achados.push_back(Le(LeObjeto(colecao.Chama<Variante>("Item", posicao).Bruta())));
        }
        return achados;
    }
    std::int32_t codigo = 0;
    const char *fim = procurado.data() + procurado.size();
    const auto lido = std::from_chars(procurado.data(), fim, codigo);
    if (lido.ec == std::errc() && lido.ptr == fim && codigo > 0) {
        achados.push_back({.Codigo = codigo, .CodMunic = codMunic, .Nome = {}, .Bairro = {}, .Cep = {}});
    }
    return achados;
}

std::optional<Logradouro> LogradourosWindows::PorCodigo(std::int32_t codigo) const
{
    if (codigo <= 0) {
        return std::nullopt;
    }
    if (const Com<IDispatch> ruas = DeQuemSabe()) {
        const Com<IDispatch> rua = LeObjeto(Tardio(ruas).Chama<Variante>("PorCodigo", codigo).Bruta());
        return rua ? std::optional(Le(rua)) : std::nullopt;
    }
    return Logradouro{.Codigo = codigo, .CodMunic = 0, .Nome = {}, .Bairro = {}, .Cep = {}};
}

} // namespace nativo
