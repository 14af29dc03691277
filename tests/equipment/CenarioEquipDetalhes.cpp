#include "tests/equipment/CenarioEquipDetalhes.h"

#include "shell/ModGeral.h"

#include <map>
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

Ref<EquiptoED> EquipDetalhesTeste::NovoED(const std::string &tipoEquip)
{
    auto equipto = Novo<EquiptoED>();
    EquiptoED &ed = *equipto;
    ed.NroIntEquip = 7;
    ed.ClienteInc = "DETRAN";
    ed.SetorInc = "NORTE";
    ed.Codigo = "EQ_1";
    ed.SubCodigo = "A.1";
    ed.Descricao = "Saída da cidade";
    ed.CodMunic = 120;
    ed.TipoVia = "R";
    ed.TipoEquip = tipoEquip;
    ed.VelocPermitida = 80;
    ed.ArquivoLayout = "PADRAO";
    ed.TemImagemEntrelacada = 1;
    ed.Modelo = "ACME 3";
    ed.TemLimiteDif = 1;
    ed.TemPerfilMag = 2;
    ed.NroIntRejLimDif = 32;
    ed.Ativo = 1;
    ed.ClienteTrans = "DAER";
    ed.OperadorTrans = 77;
    ed.DataTrans = 20261105;
    ed.HoraTrans = 93015;
    ed.TipoAgente = 1;
    ed.txtObsNotif = "Obs. da via";
    return equipto;
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
    if (Visivel(p, "fraLayout")) {
        EXPECT_TRUE(p.Escolhe("cboArqLayout", "PADRAO"));
    }
    if (Visivel(p, "fraLimiteVel")) {
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

std::string EquipDetalhesTeste::Texto(const Pessoa &p, const std::string &nome)
{
    if (const auto mascara = p.Acha<IztMask>(nome)) {
        return mascara->Text();
    }
    if (const auto observacao = p.Acha<IztVeiObservacao>(nome)) {
        return observacao->Text();
    }
    return p.Acha<ITextBox>(nome)->Text();
}

bool EquipDetalhesTeste::Ligada(const Pessoa &p, const std::string &opcao, std::int16_t indice)
{
    return p.Acha<IOptionButton>(opcao, indice)->Value();
}

bool EquipDetalhesTeste::Marcada(const Pessoa &p, const std::string &caixa)
{
    return p.Acha<ICheckBox>(caixa)->Value() == 1;
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
    return {Habilitado(p, "ztCmdOK"), Habilitado(p, "ztCmdAplicar")};
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
