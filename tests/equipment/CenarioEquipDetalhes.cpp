#include "tests/equipment/CenarioEquipDetalhes.h"

#include "controls/ControleBase.h"
#include "host/SensorED.h"
#include "shell/ModGeral.h"
#include "tests/support/RegistroDoTexto.h"

#include <sstream>
#include <utility>

namespace {

const std::vector<std::pair<std::string, std::string>> TodosOsTipos{{"C", "Caetano"},
                                                                    {"L", "Lombada"},
                                                                    {"P", "Pardal"},
                                                                    {"M", "Pardal Móvel"},
                                                                    {"R", "Radar Fotográfico"},
                                                                    {"A", "Operado por Agente"},
                                                                    {"E", "Etilômetro"},
                                                                    {"F", "Agente Eletrônico"},
                                                                    {"U", "Luxímetro"},
                                                                    {"V", "Verif. Estac. Rotativo"},
                                                                    {"B", "Bafômetro"},
                                                                    {"X", "Desconhecido"},
                                                                    {"", "Sem código"}};

// The controls of these names, "opt(1)" for one of an array.
std::vector<Ref<IControle>> Chamados(const Pessoa &p, const std::string &nomes)
{
    std::vector<Ref<IControle>> controles;
    std::istringstream entrada(nomes);
    for (std::string nome; entrada >> nome;) {
        const std::size_t parentese = nome.find('(');
        const int indice = parentese == std::string::npos ? -1 : std::stoi(nome.substr(parentese + 1));
        controles.push_back(p.Acha(nome.substr(0, parentese), static_cast<std::int16_t>(indice)));
    }
    return controles;
}

std::string Quais(const Pessoa &p, const std::string &nomes, bool (*assim)(const Ref<IControle> &))
{
    std::string quais;
    for (const Ref<IControle> &controle : Chamados(p, nomes)) {
        if (assim(controle)) {
            quais += (quais.empty() ? "" : " ") + controle->Nome();
        }
    }
    return quais;
}

// Texts and values as they are, "sim" of an option or box that is on.
std::string ValorDe(const IControle *controle)
{
    if (const auto *mascara = dynamic_cast<const IztMask *>(controle)) {
        return mascara->Text();
    }
    if (const auto *observacao = dynamic_cast<const IztVeiObservacao *>(controle)) {
        return observacao->Text();
    }
    if (const auto *texto = dynamic_cast<const ITextBox *>(controle)) {
        return texto->Text();
    }
    if (const auto *combo = dynamic_cast<const IztCombo *>(controle)) {
        return combo->Valor();
    }
    if (const auto *opcao = dynamic_cast<const IOptionButton *>(controle)) {
        return opcao->Value() ? "sim" : "não";
    }
    if (const auto *caixa = dynamic_cast<const ICheckBox *>(controle)) {
        return caixa->Value() == 1 ? "sim" : "não";
    }
    return controle->Caption();
}

} // namespace

void EquipDetalhesTeste::SetUp()
{
    HostTeste::SetUp();
    host->Dominio->TiposEquipamento.clear();
    for (bool trabFoto : {false, true}) {
        for (const auto &[codigo, texto] : TodosOsTipos) {
            host->Dominio->TiposEquipamento.push_back({codigo, texto, 1, trabFoto});
        }
    }
    for (const char *layout : {"PADRAO.LAY", "Antigo.LAY"}) {
        host->Tela->Arquivos.Poe(host->Dominio->DirLayouts + layout, {});
    }
    LogaGeral();
    goGateway();
    goMensagem();
    goDadosVor();
    form = Novo<frmEquipDetalhes>();
    host->LimpaRegistro();
}

void EquipDetalhesTeste::TearDown()
{
    form = nullptr;
    HostTeste::TearDown();
}

bool EquipDetalhesTeste::Inclui(const Roteiro &roteiro, bool trabFoto)
{
    host->AoMostrarModal("frmEquipDetalhes", roteiro);
    return form->CarregaInclusao(trabFoto);
}

bool EquipDetalhesTeste::Edita(const Roteiro &roteiro, bool trabFoto)
{
    host->AoMostrarModal("frmEquipDetalhes", roteiro);
    return form->CarregaEdicao(7, trabFoto);
}

void EquipDetalhesTeste::Detalha(const Roteiro &roteiro, bool trabFoto)
{
    host->AoMostrarModal("frmEquipDetalhes", roteiro);
    form->CarregaDetalhes(7, trabFoto);
}

Ref<EquiptoED> EquipDetalhesTeste::NovoED(const std::string &tipoEquip, const std::string &membros)
{
    return DoTexto<EquiptoED>(
        R"(NroIntEquip=7, ClienteInc="ESTADO", SetorInc="NORTE", Codigo="EQ_1", SubCodigo="A.1", )"
        R"(Descricao="Saída da cidade", CodMunic=120, TipoVia="R", VelocPermitida=80, ArquivoLayout="PADRAO", )"
        R"(TemImagemEntrelacada=1, Modelo="ACME 3", TemLimiteDif=1, TemPerfilMag=2, NroIntRejLimDif=32, Ativo=1, )"
        R"(ClienteTrans="Autoridade das Estradas de Rodagem", OperadorTrans=77, DataTrans=20261105, HoraTrans=93015, TipoAgente=1, )"
        R"(txtObsNotif="Obs. da via", TipoEquip=")" +
        tipoEquip + "\", " + membros);
}

std::string EquipDetalhesTeste::Sensor(std::int32_t nroInt, std::int16_t nro, const std::string &local,
                                       const std::string &afericoes)
{
    return "SensorED{NroIntSensor=" + std::to_string(nroInt) + ", NroSensor=" + std::to_string(nro) +
           ", Ativo=1, LocalInfr=\"" + local + "\"" + (afericoes.empty() ? "" : ", Afericoes=[" + afericoes + "]") +
           "}";
}

std::string EquipDetalhesTeste::Afericao(std::int32_t nroInt, const std::string &numero)
{
    return "AfericaoED{NroIntAfericao=" + std::to_string(nroInt) + ", Numero=\"" + numero +
           "\", DataVerificacao=01/02/2026, DataVencimento=01/02/2027, Ativo=1, TipoAfer=1}";
}

void EquipDetalhesTeste::Responde(const Ref<EquiptoED> &equipto)
{
    host->Atende<EquiptoED>("EquiptoRN", "consulta", [equipto](const Ref<EquiptoED> &) { return Resposta(equipto); });
}

void EquipDetalhesTeste::AceitaSalvar()
{
    host->Atende<EquiptoED>("EquiptoRN", "inclui", [this](const Ref<EquiptoED> &pedido) {
        auto guardado = ComoTipo<EquiptoED>(pedido->Copia());
        guardado->NroIntEquip = 7;
        guardado->Ativo = 1;
        guardado->DataTrans = 20261120;
        guardado->HoraTrans = 100000;
        Responde(guardado);
        return Resposta(guardado);
    });
    host->Servico("EquiptoRN", "altera", [](const auto &) { return Resposta(); });
}

void EquipDetalhesTeste::EscolheTipo(Pessoa &p, const std::string &tipoEquip)
{
    for (const auto &[codigo, texto] : TodosOsTipos) {
        if (codigo == tipoEquip) {
            EXPECT_TRUE(p.Escolhe("cboTipoEquip", texto)) << p.Motivo();
        }
    }
}

void EquipDetalhesTeste::PreencheNovo(Pessoa &p, const std::string &tipoEquip)
{
    EXPECT_TRUE(p.Preenche("txtCodEquip", "EQ_9"));
    EXPECT_TRUE(p.Preenche("txtDescricao", "Nova"));
    EXPECT_TRUE(p.Preenche("txtModelo", "ACME"));
    EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
    EscolheTipo(p, tipoEquip);
    EXPECT_TRUE(p.Abre("sstDados", 1));
    EXPECT_TRUE(p.Escolhe("cboMunic", "Agudo"));
    if (p.Acha("fraLayout")->Visible()) {
        EXPECT_TRUE(p.Escolhe("cboArqLayout", "PADRAO"));
    }
    if (p.Acha("fraLimiteVel")->Visible()) {
        EXPECT_TRUE(p.Preenche("txtVelocPerm", "60"));
    }
}

void EquipDetalhesTeste::Aplica(Pessoa &p, bool inclusao, bool sim, const std::string &botao)
{
    host->Responde(Confirmacao(inclusao), sim);
    EXPECT_TRUE(p.Clica(botao)) << p.Motivo();
}

void EquipDetalhesTeste::Descarta(Pessoa &p)
{
    host->Responde(PerguntaDescarte, true);
    EXPECT_TRUE(p.Clica("cmdCancelar"));
}

std::string EquipDetalhesTeste::Valores(const Pessoa &p, const std::string &nomes)
{
    std::string valores;
    for (const Ref<IControle> &controle : Chamados(p, nomes)) {
        valores += "|" + ValorDe(controle.Ponteiro());
    }
    return valores.substr(1);
}

std::string EquipDetalhesTeste::Habilitados(const Pessoa &p, const std::string &nomes)
{
    return Quais(p, nomes, [](const Ref<IControle> &controle) { return controle->Enabled(); });
}

std::string EquipDetalhesTeste::Visiveis(const Pessoa &p, const std::string &nomes)
{
    return Quais(p, nomes, [](const Ref<IControle> &controle) { return controle->Visible(); });
}

std::string EquipDetalhesTeste::Travados(const Pessoa &p, const std::string &nomes)
{
    return Quais(p, nomes, [](const Ref<IControle> &controle) {
        const auto *mascara = dynamic_cast<const IztMask *>(controle.Ponteiro());
        const auto *combo = dynamic_cast<const IztCombo *>(controle.Ponteiro());
        return mascara != nullptr ? mascara->ReadOnly()
               : combo != nullptr ? combo->ComboSomenteLeitura()
                                  : ComoTipo<IztVeiObservacao>(controle)->Locked();
    });
}

Conexao EquipDetalhesTeste::Estraga(const Pessoa &p, const std::string &controle, std::int16_t indice)
{
    return ComoBase(p.Acha(controle, indice))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
}

std::vector<bool> EquipDetalhesTeste::Paginas(const Pessoa &p)
{
    const auto abas = p.Acha<ISSTab>("sstDados");
    std::vector<bool> paginas;
    for (std::int16_t pagina = 0; pagina < abas->Tabs(); ++pagina) {
        paginas.push_back(abas->TabEnabled(pagina));
    }
    return paginas;
}

std::vector<bool> EquipDetalhesTeste::Botoes(const Pessoa &p)
{
    return {p.Acha("ztCmdOK")->Enabled(), p.Acha("ztCmdAplicar")->Enabled()};
}

std::string EquipDetalhesTeste::Enviado(const std::string &metodo)
{
    const std::string inicio = "EquiptoRN.ExecutaMetodo(\"" + metodo + "\", ";
    const Linhas linhas = host->RegistroDe({inicio});
    if (linhas.size() != 1) {
        return "chamada " + std::to_string(linhas.size()) + " vezes";
    }
    return linhas.front().substr(inicio.size(), linhas.front().rfind(')') - inicio.size());
}

std::string EquipDetalhesTeste::MembroEnviado(const std::string &metodo, const std::string &membro)
{
    const std::string enviado = Enviado(metodo);
    EXPECT_TRUE(enviado.starts_with("EquiptoED{")) << metodo << ": " << enviado;
    const std::string texto = ", " + enviado.substr(enviado.find('{') + 1, enviado.size() - enviado.find('{') - 2);
    const std::size_t onde = texto.find(", " + membro + "=");
    if (onde == std::string::npos) {
        return {};
    }
    const std::size_t inicio = onde + membro.size() + 3;
    return texto.substr(inicio, texto.find(", ", inicio) - inicio);
}
