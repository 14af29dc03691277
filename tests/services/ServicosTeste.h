#pragma once

#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

// The services over a registry of the test's own, with Ana at work.
class ServicosTeste : public testing::Test {
  protected:
    // What is refused answers nothing.
    static std::string RecusaDe(const Ref<mesa::SessaoServico> &sessao, const std::string &metodo,
                                const Ref<Objeto> &pedido, const std::string &classeRN = "EquiptoRN")
    {
        const Retorno retorno = Pede(sessao, metodo, pedido, classeRN);
        EXPECT_FALSE(retorno.Feita) << metodo;
        EXPECT_TRUE(retorno.Resposta.EhVazio()) << metodo;
        return retorno.Recusa;
    }
    static Retorno Faz(const Ref<mesa::SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
                       const std::string &classeRN = "EquiptoRN")
    {
        Retorno retorno = Pede(sessao, metodo, pedido, classeRN);
        EXPECT_TRUE(retorno.Feita) << metodo << ": " << retorno.Recusa;
        return retorno;
    }
    static double Guarda(const Ref<mesa::SessaoServico> &sessao, const Bytes &bytes)
    {
        double numero = 0;
        std::string recusa;
        EXPECT_TRUE(sessao->GuardaDocumento(bytes, numero, recusa)) << recusa;
        return numero;
    }
    static Bytes Le(const Ref<mesa::SessaoServico> &sessao, double documento)
    {
        Bytes lidos;
        std::string recusa;
        EXPECT_TRUE(sessao->LeDocumento(documento, lidos, recusa)) << recusa;
        return lidos;
    }
    // Neither gives anything to whom it is refused.
    static std::string RecusaAoGuardar(const Ref<mesa::SessaoServico> &sessao, const Bytes &bytes)
    {
        double numero = 77;
        std::string recusa;
        EXPECT_FALSE(sessao->GuardaDocumento(bytes, numero, recusa));
        EXPECT_EQ(numero, 77);
        return recusa;
    }
    static std::string RecusaAoLer(const Ref<mesa::SessaoServico> &sessao, double documento)
    {
        Bytes lidos = {1};
        std::string recusa;
        EXPECT_FALSE(sessao->LeDocumento(documento, lidos, recusa)) << documento;
        EXPECT_EQ(lidos, Bytes{1});
        return recusa;
    }
    // Why a statement past the services is not done.
    std::string MotivoDe(const std::string &sql)
    {
        try {
            m_Registro.Sql(sql);
        } catch (const std::runtime_error &erro) {
            return erro.what();
        }
        return "done";
    }
    std::string Linhas(const std::string &tabela) { return m_Registro.Sql("SELECT COUNT(*) FROM " + tabela); }

    RegistroDeTeste m_Registro;
    Ref<mesa::SessaoServico> m_Ana = m_Registro.Sessao("ana");
};

// The same with the halves of a year.
class ServicosDeAfericoes : public ServicosTeste {
  protected:
    // The equipment's number, with one sensor for each list of calibrations.
    std::int32_t ComSensores(const std::vector<std::vector<Ref<AfericaoED>>> &sensores)
    {
        return IncluiComSensores(m_Ana, sensores);
    }

    const Data Jan = DataDe(1, 1, 2026);
    const Data Jun = DataDe(30, 6, 2026);
    const Data Jul = DataDe(1, 7, 2026);
    const Data Dez = DataDe(31, 12, 2026);
};
