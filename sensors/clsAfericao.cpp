#include "sensors/clsAfericao.h"

#include "host/Indicador.h"
#include "sensors/clsSensor.h"

void clsAfericao::Finaliza() noexcept
{
    m_Sensor = nullptr;
}

Ref<clsSensor> clsAfericao::Sensor() const
{
    return m_Sensor.Alvo();
}

Ref<AfericaoED> clsAfericao::ToAfericaoED() const
try {
    auto ED = Novo<AfericaoED>();
    AfericaoED &ed = *ED;
    if (NroIntAfericao > 0) {
        ed.NroIntAfericao = NroIntAfericao;
    }
    ed.Numero = Numero;
    ed.Marca = Marca;
    ed.DataVerificacao = DataVerificacao;
    ed.DataVencimento = DataVencimento;
    ed.Ativo = Ativo ? Indicador::Sim : Indicador::Nao;
    ed.NroIntImgCertif = NroIntImgCertif;
    ed.TipoAfer = TipoAfer;
    ed.PortDimel = PortDimel;
    return ED;
} catch (...) {
    PassaFalha(" < clsAfericao.ToAfericaoED");
}
