#include "sensors/clsAfericao.h"

#include "host/Indicador.h"
#include "sensors/ChaveDeLista.h"
#include "sensors/clsSensor.h"

clsAfericao::clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const std::string &numero,
                         const std::string &marca, Data verificacao, Data vencimento, double nroIntImgCertif)
    : Numero(numero),
      Marca(marca),
      DataVerificacao(verificacao),
      DataVencimento(vencimento),
      NroIntImgCertif(nroIntImgCertif),
      m_Sensor(sensor),
      m_NumeroChave(numeroChave)
{
}

clsAfericao::clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const AfericaoED &ed)
    : NroIntAfericao(ed.NroIntAfericao),
      Numero(ed.Numero),
      Marca(ed.Marca),
      DataVerificacao(ed.DataVerificacao),
      DataVencimento(ed.DataVencimento),
      Ativo(ed.Ativo != Indicador::Nao),
      NroIntImgCertif(ed.NroIntImgCertif),
      TipoAfer(ed.TipoAfer),
      PortDimel(ed.PortDimel),
      m_Sensor(sensor),
      m_NumeroChave(numeroChave)
{
}

clsAfericao::clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const clsAfericao &origem)
    : Alterado(origem.Alterado),
      NroIntAfericao(origem.NroIntAfericao),
      Numero(origem.Numero),
      Marca(origem.Marca),
      DataVerificacao(origem.DataVerificacao),
      DataVencimento(origem.DataVencimento),
      Ativo(origem.Ativo),
      NroIntImgCertif(origem.NroIntImgCertif),
      TipoAfer(origem.TipoAfer),
      PortDimel(origem.PortDimel),
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
