#include "tests/support/BancoLocal.h"

#include "host/Conversoes.h"
#include "host/Texto.h"

#include <algorithm>
#include <compare>
#include <optional>
#include <utility>

namespace {

class CampoCursor : public IFields {
  public:
    explicit CampoCursor(Valor valor) : m_Valor(std::move(valor)) {}
    std::string_view NomeTipo() const override { return "Field"; }
    Valor Value() const override { return m_Valor; }

  private:
    Valor m_Valor;
};

class CursorEmMemoria : public ICursor {
  public:
    CursorEmMemoria(RefRegistro registro, std::vector<std::string> colunas, std::vector<std::vector<Valor>> linhas)
        : m_Registro(std::move(registro)),
          m_Colunas(std::move(colunas)),
          m_Linhas(std::move(linhas))
    {
    }

    std::string_view NomeTipo() const override { return "Cursor"; }

    bool EOF_() const override
    {
        Usa("Cursor.EOF");
        return m_Atual >= m_Linhas.size();
    }

    std::int32_t RecordCount() const override
    {
        Usa("Cursor.RecordCount");
        return static_cast<std::int32_t>(m_Linhas.size());
    }

    Ref<IFields> Fields(const std::string &nome) const override
    {
        Usa("Cursor.Fields");
        const auto coluna = std::find_if(m_Colunas.begin(), m_Colunas.end(),
                                         [&](const std::string &outra) { return IgualSemCaixa(outra, nome); });
        if (coluna == m_Colunas.end()) {
            throw Falha(3265, "BancoLocal", "Item não encontrado nesta coleção.");
        }
        ExigeLinha();
        return Novo<CampoCursor>(m_Linhas[m_Atual][static_cast<std::size_t>(coluna - m_Colunas.begin())]);
    }

    void MoveNext() override
    {
        Usa("Cursor.MoveNext");
        ExigeLinha();
        ++m_Atual;
    }

    void Close() override
    {
        m_Registro->Chama("Cursor.Close");
        Usa("");
        m_Fechado = true;
    }

  private:
    void Usa(std::string_view chamada) const
    {
        if (!chamada.empty()) {
            m_Registro->Passa(chamada);
        }
        if (m_Fechado) {
            throw Falha(3420, "BancoLocal", "O objeto não é válido ou não está mais definido.");
        }
    }

    void ExigeLinha() const
    {
        if (m_Atual >= m_Linhas.size()) {
            throw Falha(3021, "BancoLocal", "Nenhum registro atual.");
        }
    }

    RefRegistro m_Registro;
    std::vector<std::string> m_Colunas;
    std::vector<std::vector<Valor>> m_Linhas;
    std::size_t m_Atual = 0;
    bool m_Fechado = false;
};

std::size_t IndiceDe(const BancoLocal::Tabela &tabela, const std::string &coluna)
{
    const auto achada = std::find_if(tabela.Colunas.begin(), tabela.Colunas.end(),
                                     [&](const std::string &nome) { return IgualSemCaixa(nome, coluna); });
    if (achada == tabela.Colunas.end()) {
        throw Falha(3061, "BancoLocal", "Parâmetros insuficientes. Eram esperados 1.");
    }
    return static_cast<std::size_t>(achada - tabela.Colunas.begin());
}

bool EhTexto(const Valor &valor)
{
    return std::holds_alternative<std::string>(valor.Interno());
}

// No answer when one of the two is null; fault 3464 when a text meets a number.
std::optional<std::weak_ordering> Compara(const Valor &a, const Valor &b)
{
    if (a.EhNulo() || b.EhNulo()) {
        return std::nullopt;
    }
    if (EhTexto(a) != EhTexto(b)) {
        throw Falha(3464, "BancoLocal", "Tipo de dados incompatível na expressão de critério.");
    }
    if (EhTexto(a)) {
        return a.CStr() <=> b.CStr();
    }
    return std::weak_order(a.CDbl(), b.CDbl());
}

bool Vale(const std::string &operador, std::weak_ordering ordem)
{
    if (operador == "=") {
        return ordem == 0;
    }
    if (operador == "<>") {
        return ordem != 0;
    }
    if (operador == "<") {
        return ordem < 0;
    }
    if (operador == ">") {
        return ordem > 0;
    }
    if (operador == "<=") {
        return ordem <= 0;
    }
    return ordem >= 0;
}

Valor ValorDe(const ConsultaSQL::Operando &operando, const BancoLocal::Tabela &tabela, const std::vector<Valor> &linha)
{
    if (const auto *numero = std::get_if<double>(&operando)) {
        return *numero;
    }
    if (const auto *texto = std::get_if<std::string>(&operando)) {
        return *texto;
    }
    const auto &coluna = std::get<ConsultaSQL::Coluna>(operando);
    const Valor &valor = linha[IndiceDe(tabela, coluna.Nome)];
    return coluna.Maiusculas && !valor.EhNulo() ? Valor(UCase(valor.CStr())) : valor;
}

bool Satisfaz(const ConsultaSQL &consulta, const BancoLocal::Tabela &tabela, const std::vector<Valor> &linha)
{
    return std::all_of(consulta.Condicoes.begin(), consulta.Condicoes.end(), [&](const auto &condicao) {
        const auto ordem = Compara(ValorDe(condicao.Esquerda, tabela, linha), ValorDe(condicao.Direita, tabela, linha));
        return ordem && Vale(condicao.Operador, *ordem);
    });
}

} // namespace

BancoLocal::BancoLocal(RefRegistro registro) : m_Registro(std::move(registro))
{
    m_Tabelas.push_back({"Municipio", {"COD_MUNIC", "NOME_MUNICIPIO", "UF_MUNIC", "COD_RENAVAM"}, {}});
    m_Tabelas.push_back({"VOREQUIPTO", {"NroIntEquip", "ClienteInc", "Codigo", "Ativo", "TipoEquip"}, {}});
    PoeMunicipio(120, "Porto Alegre", "RS", 8801);
    PoeMunicipio(55, "Caxias do Sul", "RS", 8599);
    PoeMunicipio(7, "Agudo", "RS", 8503);
    PoeMunicipio(98, "Não-Me-Toque", "RS", 8763);
    PoeMunicipio(301, "Distrito Sem Código", "RS", 0);
    PoeMunicipio(900, "Florianópolis", "SC", 8105);
}

BancoLocal::Tabela &BancoLocal::TabelaDe(const std::string &nome)
{
    for (Tabela &tabela : m_Tabelas) {
        if (IgualSemCaixa(tabela.Nome, nome)) {
            return tabela;
        }
    }
    throw Falha(3078, "BancoLocal", "A tabela '" + nome + "' não foi encontrada.");
}

void BancoLocal::PoeEquipamento(std::int32_t nroIntEquip, const std::string &cliente, const std::string &codigo,
                                std::int16_t ativo, const std::string &tipoEquip)
{
    TabelaDe("VOREQUIPTO").Linhas.push_back({nroIntEquip, cliente, codigo, ativo, tipoEquip});
}

void BancoLocal::PoeMunicipio(std::int32_t codigo, const std::string &nome, const std::string &uf, std::int32_t renavam)
{
    TabelaDe("Municipio").Linhas.push_back({codigo, nome, uf, renavam});
}

std::string BancoLocal::Name() const
{
    return m_Registro->Le("MDB.Name").Resultado(std::string("C:\\HOST\\DADOS\\LOCAL.MDB"));
}

Ref<ICursor> BancoLocal::OpenRecordset(const std::string &sql, std::int16_t tipo, const Valor &opcoes,
                                       const Valor &trava)
{
    const auto linha = m_Registro->Chama("MDB.OpenRecordset", sql, tipo, opcoes, trava);
    const ConsultaSQL consulta = ConsultaSQL::De(sql);
    const Tabela &tabela = TabelaDe(consulta.Tabela);

    const std::vector<std::string> &colunas = consulta.Colunas.empty() ? tabela.Colunas : consulta.Colunas;
    std::vector<std::size_t> indices;
    indices.reserve(colunas.size());
    for (const std::string &coluna : colunas) {
        indices.push_back(IndiceDe(tabela, coluna));
    }
    std::vector<std::size_t> ordem;
    for (const std::string &coluna : consulta.Ordem) {
        ordem.push_back(IndiceDe(tabela, coluna));
    }
    Satisfaz(consulta, tabela, std::vector<Valor>(tabela.Colunas.size(), Valor(Valor::Nulo{}))); // columns exist

    std::vector<std::vector<Valor>> escolhidas;
    for (const auto &registro : tabela.Linhas) {
        if (Satisfaz(consulta, tabela, registro)) {
            escolhidas.push_back(registro);
        }
    }
    std::stable_sort(escolhidas.begin(), escolhidas.end(), [&](const auto &a, const auto &b) {
        for (std::size_t coluna : ordem) {
            if (a[coluna].EhNulo() != b[coluna].EhNulo()) {
                return a[coluna].EhNulo();
            }
            const auto comparacao = Compara(a[coluna], b[coluna]);
            if (comparacao && *comparacao != 0) {
                return *comparacao < 0;
            }
        }
        return false;
    });
    std::vector<std::vector<Valor>> linhas;
    linhas.reserve(escolhidas.size());
    for (const auto &registro : escolhidas) {
        std::vector<Valor> projetada;
        for (std::size_t indice : indices) {
            projetada.push_back(registro[indice]);
        }
        linhas.push_back(std::move(projetada));
    }
    linha.Acrescenta(" -> " + std::to_string(linhas.size()) + " linhas");
    return m_Registro->Vigia(Ref<ICursor>(Novo<CursorEmMemoria>(m_Registro, colunas, std::move(linhas))));
}
