#include "host/Conversoes.h"
#include "services/TextoBusca.h"
#include "tests/services/ServicosTeste.h"

#include <string>
#include <type_traits>
#include <utility>

using namespace mesa;

namespace {

template <class T> using Criterio = Campo<T> ListaEquiptoED::*;

class ServicosPesquisa : public ServicosTeste {
  protected:
    void Poe(const std::string &codigo, std::uint8_t medidor = 1, const std::string &tipo = "P")
    {
        const auto equipto = EquipamentoDe(codigo);
        Inclui(m_Ana, tipo == "P" ? equipto : DoTipo(equipto, tipo, medidor));
    }
    Ref<ListaEquiptoED> Lista(const Ref<ListaEquiptoED> &pedido = Novo<ListaEquiptoED>())
    {
        return Faz(m_Ana, "lista2", pedido).Como<ListaEquiptoED>();
    }
    Ref<ListaEquiptoED> Pagina(std::int32_t primeiro)
    {
        return Lista(Com(Novo<ListaEquiptoED>(), &ListaEquiptoED::ProxNroIntEquip, primeiro));
    }
    template <class T> std::string CodigosDe(Criterio<T> criterio, std::type_identity_t<T> valor)
    {
        return Codigos(Com(Novo<ListaEquiptoED>(), criterio, valor));
    }
    // Codes found, in their order.
    std::string Codigos(const Ref<ListaEquiptoED> &pedido = Novo<ListaEquiptoED>())
    {
        const auto lista = Lista(pedido);
        if (!lista->Equipamentos.Escrito()) {
            return "absent";
        }
        std::string texto;
        for (std::int32_t n = 1; n <= lista->Equipamentos.Valor()->Count(); ++n) {
            texto += (n > 1 ? " " : "") + lista->Equipamentos.Valor()->Item(n)->Codigo.Valor();
        }
        return texto;
    }
    // Copies of the first equipment with codes of six digits, straight into the file.
    void Multiplica(int quantos)
    {
        m_Registro.Sql(
            "CREATE TEMP TABLE modelo AS SELECT * FROM EQUIPAMENTO WHERE NroIntEquip = 1; "
            "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i <= " +
            std::to_string(quantos) +
            ") INSERT INTO EQUIPAMENTO SELECT i, ClienteInc, SetorInc, printf('%06d', i), SubCodigo, Descricao, "
            "CodMunic, "
            "TipoVia, TipoEquip, VelocPermitida, ArquivoLayout, TemImagemEntrelacada, Modelo, TemLimiteDif, "
            "TemPerfilMag, "
            "NroIntRejLimDif, Ativo, ClienteTrans, OperadorTrans, DataTrans, HoraTrans, TipoAgente, txtObsNotif, "
            "printf('%06d', i), printf('%06d', i), SubCodigoBusca, TrabFoto, 1 FROM n, modelo");
    }
};

TEST_F(ServicosPesquisa, NothingFound_ListIsAbsent)
{
    const auto lista = Lista();
    EXPECT_FALSE(lista->Equipamentos.Escrito());
    EXPECT_EQ(lista->ProxNroIntEquip.Valor(), 0);
}

TEST_F(ServicosPesquisa, Rows_CarryWhatTheListShows)
{
    Poe("R-001");
    const auto lista = Lista();
    ASSERT_EQ(lista->Equipamentos.Valor()->Count(), 1);
    const EquiptoED &e = *lista->Equipamentos.Valor()->Item(1);
    EXPECT_EQ(e.NroIntEquip.Valor(), 1);
    EXPECT_EQ(e.Descricao.Valor(), "Av. Ipiranga, sentido centro");
    EXPECT_EQ(e.CodMunic.Valor(), 4314902);
    EXPECT_EQ(e.TipoEquip.Valor(), "P");
    EXPECT_EQ(e.Modelo.Valor(), "Fictício 300");
    EXPECT_EQ(e.TemLimiteDif.Valor(), 1);
    EXPECT_EQ(e.VelocPermitida.Valor(), 60);
    EXPECT_FALSE(e.Sensores.Escrito());
}

TEST_F(ServicosPesquisa, Codes_MatchFromTheirBeginningWithoutCaseAndAccents)
{
    for (const auto &[codigo, subcodigo] : {std::pair("São-1", "Çá_9"), {"SAO-2", ""}, {"x-são", "ca_1"}, {"SA", ""}}) {
        Inclui(m_Ana, Com(EquipamentoDe(codigo), &EquiptoED::SubCodigo, subcodigo));
    }
    const auto codigo = [&](const std::string &texto) { return CodigosDe(&ListaEquiptoED::Codigo, texto); };
    const auto subcodigo = [&](const std::string &texto) { return CodigosDe(&ListaEquiptoED::SubCodigo, texto); };
    EXPECT_EQ(codigo("sao"), "São-1 SAO-2");
    EXPECT_EQ(codigo("SÃO"), "São-1 SAO-2");
    EXPECT_EQ(codigo("são-2"), "SAO-2");
    EXPECT_EQ(codigo("s"), "São-1 SAO-2 SA");
    EXPECT_EQ(codigo("o"), "absent");
    EXPECT_EQ(codigo("%"), "absent");
    EXPECT_EQ(codigo("S_O"), "absent");
    EXPECT_EQ(codigo("'"), "absent");
    EXPECT_EQ(codigo(""), "São-1 SAO-2 x-são SA");
    EXPECT_EQ(subcodigo("CÃ"), "São-1 x-são");
    EXPECT_EQ(subcodigo("ca_9"), "São-1");
}

TEST_F(ServicosPesquisa, Filters_NarrowByWhatIsSent)
{
    Inclui(m_Ana, Com(EquipamentoDe("P1"), &EquiptoED::SetorInc, "Metrologia"));
    Poe("R1", 2, "R");
    Poe("E1", 3, "E");
    Poe("P2");
    Faz(m_Ana, "desativa", SoNumero(4));
    EXPECT_EQ(Codigos(), "P1 R1 E1 P2");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::Ativo, 1), "P1 R1 E1");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::Ativo, 2), "P2");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::IndTrabFoto, 1), "P1 R1 P2");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::IndTrabFoto, 2), "E1");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::SetorInc, "Metrologia"), "P1");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::TipoEquip, "R"), "R1");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::TipoAgente, 3), "E1");
    const auto todos = Com(Novo<ListaEquiptoED>(), &ListaEquiptoED::ClienteInc, "Autoridade Estadual de Trânsito",
                           &ListaEquiptoED::Ativo, 1);
    Com(todos, &ListaEquiptoED::IndTrabFoto, 1, &ListaEquiptoED::TipoEquip, "P");
    EXPECT_EQ(Codigos(Com(todos, &ListaEquiptoED::Codigo, "p")), "P1");
}

TEST_F(ServicosPesquisa, EachType_IsInItsPhotoWorkMode)
{
    int numero = 0;
    for (const char *tipo : {"C", "L", "P", "F", "M", "R", "V", "A", "E", "U"}) {
        Poe(tipo, static_cast<std::uint8_t>("1111223233"[numero++] - '0'), tipo);
    }
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::IndTrabFoto, 1), "C L P F M R V");
    EXPECT_EQ(CodigosDe(&ListaEquiptoED::IndTrabFoto, 2), "A E U");
}

TEST_F(ServicosPesquisa, OtherClients_AreNotSeen)
{
    Poe("P1");
    Inclui(m_Registro.Sessao("elisa"), EquipamentoDe("X1"));
    EXPECT_EQ(Codigos(), "P1");
    EXPECT_EQ(RecusaDe(m_Ana, "lista2",
                       Com(Novo<ListaEquiptoED>(), &ListaEquiptoED::ClienteInc, "Autoridade Municipal de Trânsito")),
              "Ana Souza consulta equipamentos do cliente Autoridade Estadual de Trânsito, e não de Autoridade "
              "Municipal de Trânsito.");
}

TEST_F(ServicosPesquisa, Pages_OfFiftyByInternalNumber)
{
    Poe("000001");
    Multiplica(101);
    const auto primeira = Lista();
    EXPECT_EQ(primeira->Equipamentos.Valor()->Count(), 50);
    EXPECT_EQ(primeira->Equipamentos.Valor()->Item(50)->NroIntEquip.Valor(), 50);
    EXPECT_EQ(primeira->ProxNroIntEquip.Valor(), 51);
    const auto segunda = Pagina(51);
    EXPECT_EQ(segunda->Equipamentos.Valor()->Item(1)->NroIntEquip.Valor(), 51);
    EXPECT_EQ(segunda->ProxNroIntEquip.Valor(), 101);
    const auto ultima = Pagina(101);
    EXPECT_EQ(ultima->Equipamentos.Valor()->Count(), 2);
    EXPECT_EQ(ultima->ProxNroIntEquip.Valor(), 0);
    const auto cheia = Pagina(53);
    EXPECT_EQ(cheia->Equipamentos.Valor()->Count(), 50); // exactly the last page
    EXPECT_EQ(cheia->ProxNroIntEquip.Valor(), 0);
}

// Beyond a number of matches the search goes another way; it must find the same.
TEST_F(ServicosPesquisa, Codes_OfManyMatches_AreFoundAndPagedTheSame)
{
    Poe("000001");
    Multiplica(2500);
    for (const char *inicio : {"00", "0019", "002", "002400"}) {
        std::string achados;
        std::string esperados;
        for (int n = 1; n <= 2501; ++n) {
            const std::string codigo = Format(CDbl(n), "000000");
            esperados += codigo.rfind(inicio, 0) == 0 ? codigo + " " : "";
        }
        std::int32_t proxima = 0;
        int paginas = 0;
        do {
            const auto lista = Lista(Com(Novo<ListaEquiptoED>(), &ListaEquiptoED::Codigo, inicio,
                                         &ListaEquiptoED::ProxNroIntEquip, proxima));
            ASSERT_TRUE(lista->Equipamentos.Escrito());
            for (std::int32_t n = 1; n <= lista->Equipamentos.Valor()->Count(); ++n) {
                achados += lista->Equipamentos.Valor()->Item(n)->Codigo.Valor() + " ";
            }
            proxima = lista->ProxNroIntEquip;
        } while (proxima > 0 && ++paginas < 100);
        EXPECT_EQ(achados, esperados) << inicio;
    }
}

TEST(TextoBusca, WithoutCaseAndAccents)
{
    EXPECT_EQ(TextoBusca("São João"), "sao joao");
    EXPECT_EQ(TextoBusca("ÁÀÂÃÄÇÉÊÍÓÔÕÚÜÑ"), "aaaaaceeiooouun");
    EXPECT_EQ(TextoBusca("A\u0303"), "a"); // the accent as a character of its own
    EXPECT_EQ(TextoBusca("R-1._x"), "r-1._x");
    EXPECT_EQ(TextoBusca(""), "");
}

} // namespace
