#include "tests/support/RegistroEmMemoria.h"

#include "host/Indicador.h"
#include "host/Texto.h"

#include <tuple>

namespace {

template <class R, class T> void FundeMembro(R &guardado, const R &pedido, Campo<T> R::*onde)
{
    if constexpr (!DetalheRegistro::EhListaDe<T>::value) {
        if ((pedido.*onde).Escrito()) {
            guardado.*onde = (pedido.*onde).Valor();
        }
    }
}

// Takes over the members written, lists excepted.
template <class R> void Funde(R &guardado, const R &pedido)
{
    std::apply([&](const auto &...membro) { (FundeMembro(guardado, pedido, membro.Onde), ...); }, R::Membros());
}

template <class R> Ref<R> CopiaInteira(const R &registro)
{
    return ComoTipo<R>(registro.Copia());
}

template <class R> Ref<R> CopiaSemListas(const R &registro)
{
    auto copia = Novo<R>();
    Funde(*copia, registro);
    return copia;
}

// The record of a list whose number is that one; Nothing when there is none.
template <class R, class T> Ref<R> AchaNaLista(const ListaDe<R> &lista, Campo<T> R::*numero, T procurado)
{
    if (!lista.Nada()) {
        for (std::int32_t posicao = 1; posicao <= lista->Count(); ++posicao) {
            if ((*lista->Item(posicao).*numero).Valor() == procurado) {
                return lista->Item(posicao);
            }
        }
    }
    return nullptr;
}

// Merges the records of a list into those stored under their numbers, each new one with the next number; then `dentro`
// what is in them.
template <class R, class T, class Numero, class Dentro>
void FundeLista(Campo<ListaDe<R>> &guardados, const Campo<ListaDe<R>> &pedidos, Campo<T> R::*numero, Numero &ultimo,
                Dentro &&dentro)
{
    if (pedidos.Valor().Nada()) {
        return;
    }
    if (guardados.Valor().Nada()) {
        guardados = Novo<Colecao<Ref<R>>>();
    }
    for (std::int32_t posicao = 1; posicao <= pedidos.Valor()->Count(); ++posicao) {
        const R &vindo = *pedidos.Valor()->Item(posicao);
        const T seu = (vindo.*numero).Valor();
        Ref<R> guardado = seu > 0 ? AchaNaLista(guardados.Valor(), numero, seu) : nullptr;
        if (guardado.Nada()) {
            guardado = Novo<R>();
            (*guardado).*numero = ++ultimo;
            guardados.Valor()->Add(guardado);
        }
        const T dele = ((*guardado).*numero).Valor();
        Funde(*guardado, vindo);
        (*guardado).*numero = dele;
        dentro(*guardado, vindo);
    }
}

template <class R> Ref<R> Acha(const std::map<std::int32_t, Ref<R>> &registros, std::int32_t numero)
{
    const auto achado = registros.find(numero);
    return achado == registros.end() ? nullptr : achado->second;
}

// Merges into the record of that number, or stores a new one when the number is 0. False when it is unknown.
template <class R> bool Guarda(std::map<std::int32_t, Ref<R>> &registros, std::int32_t &ultimo, const R &pedido)
{
    Ref<R> guardado = Acha(registros, pedido.NroInt);
    if (guardado.Nada()) {
        if (pedido.NroInt.Valor() != 0) {
            return false;
        }
        guardado = Novo<R>();
        registros[++ultimo] = guardado;
    }
    Funde(*guardado, pedido);
    guardado->NroInt = pedido.NroInt.Valor() == 0 ? ultimo : pedido.NroInt.Valor();
    return true;
}

template <class R> Resposta Simples(const std::map<std::int32_t, Ref<R>> &registros, std::int32_t numero)
{
    const Ref<R> achado = Acha(registros, numero);
    if (achado.Nada()) {
        return Resposta::Recusa("Registro não encontrado.");
    }
    return CopiaInteira(*achado);
}

template <class R> Resposta Desativa(std::map<std::int32_t, Ref<R>> &registros, std::int32_t numero)
{
    const Ref<R> achado = Acha(registros, numero);
    if (achado.Nada()) {
        return Resposta::Recusa("Registro não encontrado.");
    }
    achado->Ativo = Indicador::Nao;
    return {};
}

// Copies of the active ones of an equipment.
template <class R, class Criterio>
ListaDe<R> Ativos(const std::map<std::int32_t, Ref<R>> &registros, const R &pedido, Criterio &&criterio)
{
    ListaDe<R> lista = Novo<Colecao<Ref<R>>>();
    for (const auto &[numero, registro] : registros) {
        if (registro->NroIntEquip.Valor() == pedido.NroIntEquip.Valor() && criterio(*registro) &&
            registro->Ativo.Valor() != Indicador::Nao) {
            lista->Add(CopiaInteira(*registro));
        }
    }
    return lista;
}

bool Casa(const std::string &procurado, const std::string &guardado)
{
    return procurado.empty() || UCase(procurado) == UCase(guardado);
}

// Every sensor and calibration sent with a number is stored under it.
bool ConheceSensores(const EquiptoED &guardado, const EquiptoED &pedido)
{
    const ListaDe<SensorED> sensores = pedido.Sensores;
    for (std::int32_t s = 1; !sensores.Nada() && s <= sensores->Count(); ++s) {
        const SensorED &vindo = *sensores->Item(s);
        const Ref<SensorED> sensor =
            AchaNaLista(guardado.Sensores.Valor(), &SensorED::NroIntSensor, vindo.NroIntSensor.Valor());
        if (sensor.Nada() && vindo.NroIntSensor.Valor() > 0) {
            return false;
        }
        const ListaDe<AfericaoED> afericoes = vindo.Afericoes;
        for (std::int32_t a = 1; !afericoes.Nada() && a <= afericoes->Count(); ++a) {
            const double numero = afericoes->Item(a)->NroIntAfericao;
            if (numero > 0 &&
                (sensor.Nada() || AchaNaLista(sensor->Afericoes.Valor(), &AfericaoED::NroIntAfericao, numero).Nada())) {
                return false;
            }
        }
    }
    return true;
}

const std::string SemEquipamento = "Equipamento não encontrado.";

} // namespace

RegistroEmMemoria::RegistroEmMemoria(HostRoteirizado &host) : m_Host(host)
{
    const std::string rn = "EquiptoRN";
    using Equipto = const Ref<EquiptoED> &;
    using Limite = const Ref<LimiteDifED> &;
    using Dia = const Ref<DiaEspecificoED> &;
    host.Atende<EquiptoED>(rn, "inclui", [this](Equipto pedido) { return Inclui(*pedido); });
    host.Atende<EquiptoED>(rn, "altera", [this](Equipto pedido) { return Altera(*pedido); });
    host.Atende<EquiptoED>(rn, "consulta", [this](Equipto pedido) { return Consulta(*pedido, true); });
    host.Atende<EquiptoED>(rn, "consultaSimples", [this](Equipto pedido) { return Consulta(*pedido, false); });
    host.Atende<ListaEquiptoED>(rn, "lista2", [this](const Ref<ListaEquiptoED> &pedido) { return Lista(*pedido); });
    host.Atende<EquiptoED>(rn, "desativa", [this](Equipto pedido) { return DefineAtivo(*pedido, Indicador::Nao); });
    host.Atende<EquiptoED>(rn, "reativa", [this](Equipto pedido) { return DefineAtivo(*pedido, Indicador::Sim); });
    host.Atende<ConsultaAfericaoED>(rn, "consultaSimplesAfericaoVigente",
                                    [this](const Ref<ConsultaAfericaoED> &pedido) { return AfericaoVigente(*pedido); });
    host.Atende<LimiteDifED>(rn, "listaLimiteDif", [this](Limite pedido) { return ListaLimites(*pedido); });
    host.Atende<LimiteDifED>(rn, "consultaSimplesLimiteDif",
                             [this](Limite pedido) { return Simples(m_Limites, pedido->NroInt); });
    host.Atende<LimiteDifED>(rn, "desativaLimiteDif",
                             [this](Limite pedido) { return Desativa(m_Limites, pedido->NroInt); });
    host.Atende<EquiptoED>(rn, "alteraListaLimitesDif", [this](Equipto pedido) { return AlteraLimites(*pedido); });
    host.Atende<DiaEspecificoED>(rn, "listaDiaEspecifico", [this](Dia pedido) { return ListaDias(*pedido); });
    host.Atende<DiaEspecificoED>(rn, "consultaSimplesDiaEspecifico",
                                 [this](Dia pedido) { return Simples(m_Dias, pedido->NroInt); });
    host.Atende<DiaEspecificoED>(rn, "desativaDiaEspecifico",
                                 [this](Dia pedido) { return Desativa(m_Dias, pedido->NroInt); });
    host.Atende<DiaEspecificoED>(rn, "adicionaDiaEspecifico", [this](Dia pedido) { return AlteraDia(*pedido); });
    host.Atende<DiaEspecificoED>(rn, "alteraDiaEspecifico", [this](Dia pedido) { return AlteraDia(*pedido); });
    host.Atende<RelatorioAfericaoED>("RelatorioRN", "consultaRelatorioRVOR011",
                                     [this](const Ref<RelatorioAfericaoED> &pedido) { return Certificado(*pedido); });
    host.objMTM->AoAlterarTabela = [this](const std::string &tabela) {
        if (IgualSemCaixa(tabela, "VOREQUIPTO")) {
            PublicaTabela();
        }
    };
}

std::int32_t RegistroEmMemoria::Poe(const Ref<EquiptoED> &equipto)
{
    Inclui(*equipto);
    EquiptoED &guardado = *Equipamento(m_UltimoEquip);
    if (equipto->Ativo.Escrito()) {
        guardado.Ativo = equipto->Ativo.Valor();
    }
    FundeSensores(guardado, *equipto);
    PublicaTabela();
    return m_UltimoEquip;
}

std::int32_t RegistroEmMemoria::PoeLimite(const Ref<LimiteDifED> &limite)
{
    Guarda(m_Limites, m_UltimoLimite, *limite);
    return m_UltimoLimite;
}

std::int32_t RegistroEmMemoria::PoeDia(const Ref<DiaEspecificoED> &dia)
{
    Guarda(m_Dias, m_UltimoDia, *dia);
    return m_UltimoDia;
}

void RegistroEmMemoria::PoeCertificado(std::int32_t codOat, const std::string &serie, const std::string &documento)
{
    m_Certificados[{codOat, serie}] = documento;
}

Ref<EquiptoED> RegistroEmMemoria::Equipamento(std::int32_t nroIntEquip) const
{
    return Acha(m_Equipamentos, nroIntEquip);
}

Ref<LimiteDifED> RegistroEmMemoria::Limite(std::int32_t nroInt) const
{
    return Acha(m_Limites, nroInt);
}

Ref<DiaEspecificoED> RegistroEmMemoria::Dia(std::int32_t nroInt) const
{
    return Acha(m_Dias, nroInt);
}

// A new equipment is active, whatever was sent, and comes alone.
Resposta RegistroEmMemoria::Inclui(const EquiptoED &pedido)
{
    auto guardado = CopiaSemListas(pedido);
    guardado->NroIntEquip = ++m_UltimoEquip;
    guardado->Ativo = Indicador::Sim;
    Assina(*guardado);
    m_Equipamentos[m_UltimoEquip] = guardado;
    return CopiaInteira(*guardado);
}

Resposta RegistroEmMemoria::Altera(const EquiptoED &pedido)
{
    const Ref<EquiptoED> guardado = Equipamento(pedido.NroIntEquip);
    if (guardado.Nada()) {
        return Resposta::Recusa(SemEquipamento);
    }
    if (!ConheceSensores(*guardado, pedido)) {
        return Resposta::Recusa("Sensor ou aferição não encontrados.");
    }
    const std::uint8_t ativo = guardado->Ativo;
    Funde(*guardado, pedido);
    guardado->Ativo = ativo;
    FundeSensores(*guardado, pedido);
    Assina(*guardado);
    return {};
}

Resposta RegistroEmMemoria::Consulta(const EquiptoED &pedido, bool completa) const
{
    const Ref<EquiptoED> guardado = Equipamento(pedido.NroIntEquip);
    if (guardado.Nada()) {
        return Resposta::Recusa(SemEquipamento);
    }
    return completa ? CopiaInteira(*guardado) : CopiaSemListas(*guardado);
}

Resposta RegistroEmMemoria::Lista(const ListaEquiptoED &pedido) const
{
    auto lista = Novo<ListaEquiptoED>();
    ListaDe<EquiptoED> pagina = Novo<Colecao<Ref<EquiptoED>>>();
    lista->ProxNroIntEquip = 0;
    for (const auto &[numero, equipto] : m_Equipamentos) {
        const bool inativo = equipto->Ativo.Valor() == Indicador::Nao;
        if (numero < pedido.ProxNroIntEquip || !Casa(pedido.ClienteInc, equipto->ClienteInc) ||
            !Casa(pedido.SetorInc, equipto->SetorInc) || !Casa(pedido.Codigo, equipto->Codigo) ||
            !Casa(pedido.SubCodigo, equipto->SubCodigo) || !Casa(pedido.TipoEquip, equipto->TipoEquip) ||
            (pedido.TipoAgente.Escrito() && pedido.TipoAgente.Valor() != equipto->TipoAgente.Valor()) ||
            (pedido.Ativo.Escrito() && (pedido.Ativo.Valor() == Indicador::Nao) != inativo)) {
            continue;
        }
        if (pagina->Count() == TamanhoPagina) {
            lista->ProxNroIntEquip = numero;
            break;
        }
        pagina->Add(CopiaSemListas(*equipto));
    }
    if (pagina->Count() > 0) {
        lista->Equipamentos = pagina;
    }
    return lista;
}

Resposta RegistroEmMemoria::DefineAtivo(const EquiptoED &pedido, std::uint8_t ativo)
{
    const Ref<EquiptoED> guardado = Equipamento(pedido.NroIntEquip);
    if (guardado.Nada()) {
        return Resposta::Recusa(SemEquipamento);
    }
    guardado->Ativo = ativo;
    Assina(*guardado);
    return {};
}

// The first active calibration of an active sensor whose period holds the day; a fresh record when there is none.
Resposta RegistroEmMemoria::AfericaoVigente(const ConsultaAfericaoED &pedido) const
{
    const Ref<EquiptoED> guardado = Equipamento(pedido.NroIntEquip);
    if (guardado.Nada()) {
        return Resposta::Recusa(SemEquipamento);
    }
    const ListaDe<SensorED> sensores = guardado->Sensores;
    for (std::int32_t s = 1; !sensores.Nada() && s <= sensores->Count(); ++s) {
        const ListaDe<AfericaoED> afericoes = sensores->Item(s)->Afericoes;
        if (sensores->Item(s)->Ativo.Valor() == Indicador::Nao) {
            continue;
        }
        for (std::int32_t a = 1; !afericoes.Nada() && a <= afericoes->Count(); ++a) {
            const AfericaoED &afericao = *afericoes->Item(a);
            if (afericao.Ativo.Valor() != Indicador::Nao &&
                afericao.DataVerificacao.Valor() <= pedido.DtInfracao.Valor() &&
                pedido.DtInfracao.Valor() <= afericao.DataVencimento.Valor()) {
                return CopiaInteira(afericao);
            }
        }
    }
    return Novo<AfericaoED>();
}

Resposta RegistroEmMemoria::ListaLimites(const LimiteDifED &pedido) const
{
    auto equipto = Novo<EquiptoED>();
    equipto->ListaLimiteDif = Ativos(m_Limites, pedido, [&](const LimiteDifED &limite) {
        return limite.TipoLimite.Valor() == pedido.TipoLimite.Valor();
    });
    return equipto;
}

Resposta RegistroEmMemoria::ListaDias(const DiaEspecificoED &pedido) const
{
    auto equipto = Novo<EquiptoED>();
    equipto->ListaDiaEspecifico = Ativos(m_Dias, pedido, [](const DiaEspecificoED &) { return true; });
    return equipto;
}

Resposta RegistroEmMemoria::AlteraLimites(const EquiptoED &pedido)
{
    const ListaDe<LimiteDifED> limites = pedido.ListaLimiteDif;
    for (std::int32_t posicao = 1; posicao <= limites->Count(); ++posicao) {
        const std::int32_t numero = limites->Item(posicao)->NroInt;
        if (numero != 0 && Limite(numero).Nada()) {
            return Resposta::Recusa("Registro não encontrado.");
        }
    }
    for (std::int32_t posicao = 1; posicao <= limites->Count(); ++posicao) {
        Guarda(m_Limites, m_UltimoLimite, *limites->Item(posicao));
    }
    return {};
}

Resposta RegistroEmMemoria::AlteraDia(const DiaEspecificoED &pedido)
{
    return Guarda(m_Dias, m_UltimoDia, pedido) ? Resposta() : Resposta::Recusa("Registro não encontrado.");
}

Resposta RegistroEmMemoria::Certificado(const RelatorioAfericaoED &pedido) const
{
    const auto certificado = m_Certificados.find({pedido.CodOat, pedido.Serie});
    if (certificado == m_Certificados.end()) {
        return Resposta::Recusa("Certificado não encontrado.");
    }
    auto resposta = CopiaInteira(pedido);
    resposta->Documento = certificado->second;
    return resposta;
}

void RegistroEmMemoria::FundeSensores(EquiptoED &guardado, const EquiptoED &pedido)
{
    FundeLista(guardado.Sensores, pedido.Sensores, &SensorED::NroIntSensor, m_UltimoSensor,
               [this](SensorED &sensor, const SensorED &vindo) {
                   FundeLista(sensor.Afericoes, vindo.Afericoes, &AfericaoED::NroIntAfericao, m_UltimaAfericao,
                              [](AfericaoED &, const AfericaoED &) {});
               });
}

void RegistroEmMemoria::Assina(EquiptoED &equipto) const
{
    const PartesData agora = m_Host.Tela->Relogio.Partes();
    equipto.ClienteTrans = m_Host.objMTM->Cliente;
    equipto.OperadorTrans = Operador;
    equipto.DataTrans = agora.Ano * 10000 + agora.Mes * 100 + agora.Dia;
    equipto.HoraTrans = agora.Hora * 10000 + agora.Minuto * 100 + agora.Segundo;
}

void RegistroEmMemoria::PublicaTabela()
{
    m_Host.MDB->TabelaDe("VOREQUIPTO").Linhas.clear();
    for (const auto &[numero, equipto] : m_Equipamentos) {
        m_Host.MDB->PoeEquipamento(numero, equipto->ClienteInc, equipto->Codigo,
                                   static_cast<std::int16_t>(equipto->Ativo.Valor()), equipto->TipoEquip);
    }
}
