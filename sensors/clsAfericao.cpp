#include "sensors/clsAfericao.h"

#include "host/Correspondencia.h"
#include "host/Indicador.h"
#include "sensors/ChaveDeLista.h"
#include "sensors/clsSensor.h"

namespace {

// All but Ativo, which is read by a rule of its own.
constexpr std::tuple Campos{Par{&AfericaoED::NroIntAfericao, &clsAfericao::NroIntAfericao, Escreve::SeHouver},
                            Par{&AfericaoED::Numero, &clsAfericao::Numero},
                            Par{&AfericaoED::Marca, &clsAfericao::Marca},
                            Par{&AfericaoED::DataVerificacao, &clsAfericao::DataVerificacao},
                            Par{&AfericaoED::DataVencimento, &clsAfericao::DataVencimento},
                            Par{&AfericaoED::NroIntImgCertif, &clsAfericao::NroIntImgCertif},
                            Par{&AfericaoED::TipoAfer, &clsAfericao::TipoAfer},
                            Par{&AfericaoED::PortDimel, &clsAfericao::PortDimel}};

} // namespace

clsAfericao::clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const std::string &numero,
                         const std::string &marca, Data verificacao, Data vencimento, double nroIntImgCertif)
    : DadosDaAfericao{.Numero = numero,
                      .Marca = marca,
                      .DataVerificacao = verificacao,
                      .DataVencimento = vencimento,
                      .NroIntImgCertif = nroIntImgCertif,
                      .PortDimel = {}},
      m_Sensor(sensor),
      m_NumeroChave(numeroChave)
{
}

clsAfericao::clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const AfericaoED &ed)
    : m_Sensor(sensor),
      m_NumeroChave(numeroChave)
{
    LeCampos<Campos>(*this, ed);
    Ativo = ed.Ativo != Indicador::Nao;
}

clsAfericao::clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const clsAfericao &origem)
    : DadosDaAfericao(origem),
      m_Sensor(sensor),
      m_NumeroChave(numeroChave)
{
}

void clsAfericao::Finaliza() noexcept
{
    m_Sensor = nullptr;
}

Ref<clsSensor> clsAfericao::Sensor() const
{
    return m_Sensor.Alvo();
}

std::string clsAfericao::Chave() const
{
    return m_NumeroChave == 0 ? std::string() : ChaveDeLista('A', m_NumeroChave);
}

Ref<AfericaoED> clsAfericao::ToAfericaoED() const
try {
    auto ED = Novo<AfericaoED>();
    EscreveCampos<Campos>(*this, *ED);
    ED->Ativo = Ativo ? Indicador::Sim : Indicador::Nao;
    return ED;
} catch (...) {
    PassaFalha(" < clsAfericao.ToAfericaoED");
}
