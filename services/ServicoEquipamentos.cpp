#include "services/ServicoEquipamentos.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "host/Texto.h"
#include "services/Codigos.h"
#include "services/Conferencia.h"
#include "services/Historico.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/Referencias.h"
#include "services/RegrasDoTipo.h"
#include "services/ServicoLayouts.h"
#include "services/ServicoSensores.h"
#include "services/TextoBusca.h"

#include <string_view>

namespace mesa {

namespace {

const std::string_view ViaNaGeracao = "I"; // told each time the photo bank is made
const std::string_view TiposDeVia[] = {"", "R", "U", ViaNaGeracao};
constexpr std::uint8_t MedidorEstatico = 2;

// Refused where there is no such type, as in a row that came past the services.
const TipoOferecido &TipoDe(const EquiptoED &equipto)
{
    const TipoOferecido *tipo = Referencias::Tabelas().Tipo(equipto.TipoEquip);
    if (tipo == nullptr) {
        throw Recusa("Não existe o tipo de equipamento \"" + equipto.TipoEquip.Valor() + "\".");
    }
    return *tipo;
}

// Columns that the services keep beside those of the record.
Celulas Derivados(const EquiptoED &equipto, std::int64_t versao)
{
    return {{"CodigoChave", Q(UCase(equipto.Codigo.Valor()))},
            {"CodigoBusca", Q(TextoBusca(equipto.Codigo))},
            {"SubCodigoBusca", Q(TextoBusca(equipto.SubCodigo))},
            {"TrabFoto", TipoDe(equipto).TrabFoto ? Indicador::Sim : Indicador::Nao},
            {"Versao", qlonglong(versao)}};
}

std::uint8_t SimOuNao(std::uint8_t indicador)
{
    return indicador == Indicador::Sim ? Indicador::Sim : Indicador::Nao;
}

void FirmaIndicadores(EquiptoED &equipto)
{
    equipto.TemImagemEntrelacada = SimOuNao(equipto.TemImagemEntrelacada);
    equipto.TemLimiteDif = SimOuNao(equipto.TemLimiteDif);
    equipto.TemPerfilMag = SimOuNao(equipto.TemPerfilMag);
}

} // namespace

bool EquipamentoGravado::Ativo() const
{
    return Registro->Ativo.Valor() != Indicador::Nao;
}

std::string EquipamentoGravado::Nome() const
{
    return "O equipamento " + Registro->Codigo.Valor();
}

EquipamentoGravado ServicoEquipamentos::Acha(std::int32_t nroIntEquip) const
{
    static const QString sql = "SELECT " + MapaRegistro::Lista<EquiptoED>() +
                               ", Versao FROM EQUIPAMENTO WHERE NroIntEquip = ? AND ClienteInc = ?";
    mesa::Consulta linha(m_Operacao.Dados(), sql, {nroIntEquip, Q(m_Operacao.Quem().Cliente)});
    if (!linha.Proxima()) {
        throw Recusa("O cliente " + m_Operacao.Quem().Cliente + " não tem equipamento de número interno " +
                     CStr(nroIntEquip) + ".");
    }
    EquipamentoGravado gravado{Novo<EquiptoED>(), 0};
    MapaRegistro::Preenche(*gravado.Registro, linha);
    gravado.Versao = linha.Inteiro(static_cast<int>(MapaRegistro::Colunas<EquiptoED>().size()));
    gravado.Registro->VersaoLida = gravado.Versao;
    return gravado;
}

Ref<EquiptoED> ServicoEquipamentos::Inclui(const EquiptoED &pedido)
{
    m_Operacao.Exige("I", "incluir equipamentos");
    if (pedido.NroIntEquip.Valor() != 0) {
        throw Recusa("Este equipamento já foi incluído, com o número interno " + CStr(pedido.NroIntEquip.Valor()) +
                     ".");
    }
    const Operador &quem = m_Operacao.Quem();
    auto novo = Novo<EquiptoED>();
    MapaRegistro::Sobrepoe(*novo, pedido);
    if (novo->ClienteInc.Valor().empty()) {
        novo->ClienteInc = quem.Cliente;
    }
    if (novo->ClienteInc.Valor() != quem.Cliente) {
        throw Recusa(quem.Nome + " registra equipamentos do cliente " + quem.Cliente + ", e não de " +
                     novo->ClienteInc.Valor() + ".");
    }
    if (quem.CodMunic != 0 && novo->CodMunic.Valor() != quem.CodMunic) {
        throw Recusa(quem.Nome + " registra equipamentos somente no município de código " + CStr(quem.CodMunic) + ".");
    }
    novo->Ativo = Indicador::Sim;
    FirmaIndicadores(*novo);
    ConfereRegistro(*novo, nullptr);
    ServicoLayouts(m_Operacao).ConfereOferecido(novo->ArquivoLayout);
    if (!TipoDe(*novo).Em(novo->TipoAgente)) {
        throw Recusa("O tipo de medidor " + CStr(novo->TipoAgente.Valor()) + " não tem o tipo de equipamento \"" +
                     novo->TipoEquip.Valor() + "\".");
    }
    ConfereCodigoLivre(*novo);
    Assina(*novo);

    novo->NroIntEquip =
        static_cast<std::int32_t>(MapaRegistro::Insere(m_Operacao.Dados(), "EQUIPAMENTO", *novo, Derivados(*novo, 1)));
    Registra("inclui", novo->NroIntEquip, 1);
    ServicoSensores(m_Operacao, *novo, 1).Grava(pedido.Sensores);
    return Completo(novo->NroIntEquip);
}

void ServicoEquipamentos::Altera(EquiptoED &pedido)
{
    m_Operacao.Exige("A", "alterar equipamentos");
    const EquipamentoGravado gravado = Acha(pedido.NroIntEquip);
    const std::int32_t numero = pedido.NroIntEquip;
    m_Operacao.ConfereVersao(pedido, Raiz::Equipamento, numero, gravado.Versao, gravado.Nome());
    if (!gravado.Ativo()) {
        throw Recusa(gravado.Nome() + " está desativado e não pode ser alterado. Reative-o antes.");
    }
    ConfereImutaveis(pedido, gravado);

    auto novo = Novo<EquiptoED>();
    MapaRegistro::Sobrepoe(*novo, *gravado.Registro);
    MapaRegistro::Sobrepoe(*novo, pedido);
    novo->Ativo = gravado.Registro->Ativo.Valor();
    novo->ClienteTrans = gravado.Registro->ClienteTrans.Valor();
    novo->OperadorTrans = gravado.Registro->OperadorTrans.Valor();
    novo->DataTrans = gravado.Registro->DataTrans.Valor();
    novo->HoraTrans = gravado.Registro->HoraTrans.Valor();
    FirmaIndicadores(*novo);
    ConfereRegistro(*novo, gravado.Registro.Ponteiro());
    if (novo->ArquivoLayout.Valor() != gravado.Registro->ArquivoLayout.Valor()) {
        ServicoLayouts(m_Operacao).ConfereOferecido(novo->ArquivoLayout);
    }

    const std::int64_t versao = gravado.Versao + 1;
    const bool mudou = MapaRegistro::Json(*novo) != MapaRegistro::Json(*gravado.Registro);
    const bool mudouSensores = ServicoSensores(m_Operacao, *novo, versao).Grava(pedido.Sensores);
    if (!mudou && !mudouSensores) {
        return;
    }
    Assina(*novo);
    Atualiza(*novo, versao);
    Registra("altera", numero, versao);
    m_Operacao.Marca(pedido, versao);
}

Ref<EquiptoED> ServicoEquipamentos::Consulta(const EquiptoED &pedido)
{
    m_Operacao.Exige("", "consultar equipamentos");
    return Completo(pedido.NroIntEquip);
}

Ref<EquiptoED> ServicoEquipamentos::Completo(std::int32_t nroIntEquip)
{
    const EquipamentoGravado gravado = Acha(nroIntEquip);
    gravado.Registro->Sensores = ServicoSensores(m_Operacao, *gravado.Registro, gravado.Versao).Ativos();
    return gravado.Registro;
}

Ref<EquiptoED> ServicoEquipamentos::ConsultaSimples(const EquiptoED &pedido)
{
    m_Operacao.Exige("", "consultar equipamentos");
    return Acha(pedido.NroIntEquip).Registro;
}

void ServicoEquipamentos::Desativa(EquiptoED &pedido)
{
    m_Operacao.Exige("E", "desativar equipamentos");
    DefineAtivo(pedido, Indicador::Nao);
}

void ServicoEquipamentos::Reativa(EquiptoED &pedido)
{
    m_Operacao.Exige("E", "reativar equipamentos");
    DefineAtivo(pedido, Indicador::Sim);
}

void ServicoEquipamentos::DefineAtivo(EquiptoED &pedido, std::uint8_t ativo)
{
    const EquipamentoGravado gravado = Acha(pedido.NroIntEquip);
    const bool reativa = ativo == Indicador::Sim;
    if (gravado.Ativo() == reativa) {
        throw Recusa(gravado.Nome() + (reativa ? " já está ativo" : " já está desativado") + "; última alteração " +
                     Historico(m_Operacao.Dados()).Ultima("EQUIPAMENTO", pedido.NroIntEquip) + ".");
    }
    m_Operacao.ConfereVersao(pedido, Raiz::Equipamento, pedido.NroIntEquip, gravado.Versao, gravado.Nome());
    auto novo = Novo<EquiptoED>();
    MapaRegistro::Sobrepoe(*novo, *gravado.Registro);
    novo->Ativo = ativo;
    if (reativa) {
        ConfereCodigoLivre(*novo);
    }
    Assina(*novo);
    const std::int64_t versao = gravado.Versao + 1;
    Atualiza(*novo, versao);
    Registra(reativa ? "reativa" : "desativa", pedido.NroIntEquip, versao);
    m_Operacao.Marca(pedido, versao);
}

// What was stored and stays as it was is not asked for again.
void ServicoEquipamentos::ConfereRegistro(const EquiptoED &e, const EquiptoED *antes) const
{
    const auto mudou = [&]<class T>(Campo<T> EquiptoED::*campo) {
        return antes == nullptr || (e.*campo).Valor() != (antes->*campo).Valor();
    };
    TipoDe(e);
    const RegrasDoTipo regras = RegrasDe(e.TipoEquip.Valor());
    const auto obrigatorio = [&](std::string_view membro, bool muda, bool informado, bool pelaRegra) {
        if (muda && !informado) {
            throw Recusa(Conferencia::OCampo(membro) + " precisa ser informado" +
                         (pelaRegra ? " para o tipo de equipamento \"" + e.TipoEquip.Valor() + "\"" : "") + ".");
        }
    };
    const auto preenchido = [&](Campo<std::string> EquiptoED::*campo) { return !Trim((e.*campo).Valor()).empty(); };
    obrigatorio("Codigo", mudou(&EquiptoED::Codigo), preenchido(&EquiptoED::Codigo), false);
    obrigatorio("Descricao", mudou(&EquiptoED::Descricao), preenchido(&EquiptoED::Descricao), false);
    obrigatorio("Modelo", mudou(&EquiptoED::Modelo), preenchido(&EquiptoED::Modelo), false);
    Conferencia::Membros("EQUIPAMENTO", e);
    const auto semOfensa = [&](std::string_view membro, Campo<std::string> EquiptoED::*campo) {
        const std::string ofensa = mudou(campo) ? Codigos::Ofende((e.*campo).Valor()) : std::string();
        if (!ofensa.empty()) {
            throw Recusa(Conferencia::OCampo(membro) + " " + ofensa + ".");
        }
    };
    semOfensa("Codigo", &EquiptoED::Codigo);
    semOfensa("SubCodigo", &EquiptoED::SubCodigo);

    const Referencias &tabelas = Referencias::Tabelas();
    if (std::find(std::begin(TiposDeVia), std::end(TiposDeVia), e.TipoVia.Valor()) == std::end(TiposDeVia)) {
        throw Recusa("Não existe o tipo de via \"" + e.TipoVia.Valor() + "\".");
    }
    if (e.CodMunic.Valor() != 0 && mudou(&EquiptoED::CodMunic) && !tabelas.TemMunicipio(e.CodMunic)) {
        throw Recusa("Não existe o município de código " + CStr(e.CodMunic.Valor()) + ".");
    }
    if (e.NroIntRejLimDif.Valor() != 0 && mudou(&EquiptoED::NroIntRejLimDif) &&
        !tabelas.TemRejeicao(e.NroIntRejLimDif)) {
        throw Recusa("Não existe a rejeição de número " + CStr(e.NroIntRejLimDif.Valor()) + ".");
    }
    if (!e.SetorInc.Valor().empty() && mudou(&EquiptoED::SetorInc)) {
        mesa::Consulta setor(m_Operacao.Dados(), "SELECT 1 FROM SETOR WHERE CodCliente = ? AND Nome = ? AND Ativo = 1",
                             {m_Operacao.Quem().CodCliente, Q(e.SetorInc)});
        if (!setor.Proxima()) {
            throw Recusa("O cliente " + m_Operacao.Quem().Cliente + " não tem o setor \"" + e.SetorInc.Valor() + "\".");
        }
    }

    obrigatorio("CodMunic", mudou(&EquiptoED::CodMunic), e.CodMunic.Valor() != 0 || !regras.PedeMunicipio, true);
    obrigatorio("ArquivoLayout", mudou(&EquiptoED::ArquivoLayout),
                preenchido(&EquiptoED::ArquivoLayout) || !regras.TemLayout, true);
    // The form does not send the speed of a static meter.
    obrigatorio("VelocPermitida", mudou(&EquiptoED::VelocPermitida),
                e.VelocPermitida.Valor() > 0 || !regras.TemVelocidade || e.TipoAgente.Valor() == MedidorEstatico, true);
    const std::string doTipo = "Equipamentos do tipo \"" + e.TipoEquip.Valor() + "\" ";
    if (e.TipoVia.Valor() == ViaNaGeracao && mudou(&EquiptoED::TipoVia) && !regras.ViaNaGeracao) {
        throw Recusa(doTipo + "têm o seu tipo de via: ele não é informado na geração do banco de fotos.");
    }
    if (e.TemLimiteDif.Valor() == Indicador::Sim && mudou(&EquiptoED::TemLimiteDif) && !regras.TemLimites) {
        throw Recusa(doTipo + "não trabalham com limites diferenciados.");
    }
    // When limits are given up, the form does not send a rejection: what is stored of it stays.
    if (e.NroIntRejLimDif.Valor() != 0 && mudou(&EquiptoED::NroIntRejLimDif) &&
        e.TemLimiteDif.Valor() != Indicador::Sim) {
        throw Recusa(
            "A rejeição automática é dos equipamentos que trabalham com limites diferenciados, e o equipamento " +
            e.Codigo.Valor() + " não trabalha.");
    }
    if (!e.txtObsNotif.Valor().empty() && mudou(&EquiptoED::txtObsNotif) && !regras.TemObservacao) {
        throw Recusa(doTipo + "não têm observação na notificação.");
    }
}

void ServicoEquipamentos::ConfereImutaveis(const EquiptoED &pedido, const EquipamentoGravado &gravado) const
{
    const EquiptoED &antes = *gravado.Registro;
    const auto confere = [&](const auto &vindo, const auto &guardado, const std::string &campo) {
        if (vindo.Escrito() && vindo.Valor() != guardado.Valor()) {
            throw Recusa(gravado.Nome() + " já está registrado: " + campo + " não pode mais mudar.");
        }
    };
    confere(pedido.ClienteInc, antes.ClienteInc, "o cliente");
    confere(pedido.Codigo, antes.Codigo, "o código");
    confere(pedido.TipoAgente, antes.TipoAgente, "o tipo de medidor");
    confere(pedido.TipoEquip, antes.TipoEquip, "o tipo de equipamento");
    confere(pedido.CodMunic, antes.CodMunic, "o município");
}

// The unique index guarantees it; this puts it into words.
void ServicoEquipamentos::ConfereCodigoLivre(const EquiptoED &equipto) const
{
    mesa::Consulta outro(m_Operacao.Dados(),
                         "SELECT NroIntEquip, Codigo, Descricao FROM EQUIPAMENTO "
                         "WHERE ClienteInc = ? AND CodigoChave = ? AND Ativo = 1 AND NroIntEquip <> ?",
                         {Q(equipto.ClienteInc), Q(UCase(equipto.Codigo.Valor())), equipto.NroIntEquip.Valor()});
    if (outro.Proxima()) {
        throw Recusa("O código " + outro.Texto(1) + " já é do equipamento ativo \"" + outro.Texto(2) +
                     "\", alterado por último " +
                     Historico(m_Operacao.Dados()).Ultima("EQUIPAMENTO", outro.Inteiro(0)) + ".");
    }
}

void ServicoEquipamentos::Assina(EquiptoED &equipto) const
{
    equipto.ClienteTrans = m_Operacao.Quem().Cliente;
    equipto.OperadorTrans = m_Operacao.Quem().Numero;
    const std::int64_t quando = Momento(m_Operacao.Agora().Local);
    equipto.DataTrans = static_cast<std::int32_t>(quando / 1000000);
    equipto.HoraTrans = static_cast<std::int32_t>(quando % 1000000);
}

void ServicoEquipamentos::Atualiza(const EquiptoED &equipto, std::int64_t versao)
{
    MapaRegistro::Atualiza(m_Operacao.Dados(), "EQUIPAMENTO", equipto, Derivados(equipto, versao));
}

void ServicoEquipamentos::Registra(const char *acao, std::int32_t numero, std::int64_t versao)
{
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero,
                  {"EQUIPAMENTO", numero, versao, "EQUIPAMENTO", numero, acao});
}

} // namespace mesa
