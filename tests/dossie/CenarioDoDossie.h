#pragma once

#include "dossie/FazDossie.h"
#include "tests/services/RegistroDeTeste.h"

#include <QBuffer>
#include <QByteArray>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>

// A registry in which R-001 has a calibration for the whole of 2026.
class CenarioDoDossie : public testing::Test {
  protected:
    // A document of that many pages; the same bytes each time.
    static const QByteArray &Certificado(int paginas)
    {
        static std::map<int, QByteArray> feitos;
        QByteArray &feito = feitos[paginas];
        if (feito.isEmpty()) {
            QBuffer onde(&feito);
            onde.open(QIODevice::WriteOnly);
            QPdfWriter escritor(&onde);
            escritor.setResolution(100);
            QPainter pincel(&escritor);
            pincel.setFont(QFont("DejaVu Sans", 20));
            for (int pagina = 1; pagina <= paginas; ++pagina) {
                if (pagina > 1) {
                    escritor.newPage();
                }
                pincel.drawText(50, 100, QString("CERTIFICADO DE VERIFICAÇÃO, folha %1").arg(pagina));
                pincel.drawRect(20, 20, escritor.width() - 40, escritor.height() - 40);
            }
        }
        return feito;
    }

    // The equipment's number.
    std::int32_t ComCertificado(const QByteArray &certificado)
    {
        double documento = 0;
        std::string recusa;
        if (!m_Ana->GuardaDocumento(Bytes(certificado.begin(), certificado.end()), documento, recusa)) {
            throw std::runtime_error(recusa);
        }
        return IncluiComSensores(m_Ana, {{AfericaoDe("7311", DataDe(1, 1, 2026), DataDe(31, 12, 2026), documento)}});
    }
    static Ref<mesa::ConsultaProvaED> Pergunta(std::int32_t equipamento, Data dia, std::int32_t hora = -1)
    {
        using mesa::ConsultaProvaED;
        return Com(Com(Novo<ConsultaProvaED>(), &ConsultaProvaED::NroIntEquip, equipamento, &ConsultaProvaED::Dia, dia),
                   &ConsultaProvaED::Hora, hora);
    }
    Ref<mesa::ProvaED> Prova(const Ref<mesa::ConsultaProvaED> &pergunta)
    {
        return Exigido(Pede(m_Ana, "consultaProva", pergunta, "ProvaRN")).Como<mesa::ProvaED>();
    }
    QByteArray Faz(const Ref<mesa::ConsultaProvaED> &pergunta)
    {
        std::string recusa;
        const auto feito = dossie::FazDossie(m_Ana).Faz(pergunta, {}, recusa);
        EXPECT_TRUE(feito) << recusa;
        return feito.value_or(QByteArray());
    }

    RegistroDeTeste m_Registro;
    Ref<mesa::SessaoServico> m_Ana = m_Registro.Sessao("ana");
};
