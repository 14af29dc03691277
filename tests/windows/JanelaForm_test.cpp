#include "windows/screen/JanelaForm.h"

#include "controls/CheckBox.h"
#include "controls/CommandButton.h"
#include "controls/OptionButton.h"
#include "controls/SSTab.h"
#include "controls/TextBox.h"
#include "controls/ztCombo.h"
#include "controls/ztList.h"
#include "controls/ztMask.h"
#include "tests/windows/TelaDeTeste.h"
#include "windows/automation/Texto16.h"

#include <commctrl.h>
#include <oleacc.h>
#include <psapi.h>

namespace nativo {

namespace {

Peca UmaMarca(const std::string &nome, const std::string &caption)
{
    return {.Ajustes = AjustesCheckBox{}, .Nome = nome, .Caption = caption};
}

Peca UmaOpcao(const std::string &nome, const std::string &caption)
{
    return {.Ajustes = AjustesOptionButton{}, .Nome = nome, .Caption = caption};
}

// A form with one of everything.
Peca Variado()
{
    return EmColuna({
        Rotulado(UmCampo("txtNome", 20), "&Nome:"),
        EmLinha({UmTexto("lblCodigo", "Có&digo:"), UmCampo("txtCodigo", 10)}),
        UmaMarca("chkAtivo", "&Ativo"),
        UmQuadro("fraVia", {UmaOpcao("optRural", "&Rural"), UmaOpcao("optUrbana", "&Urbana")}),
        {.Ajustes = AjustesSSTab{.Paginas = {"&Geral", "&Opções", "&Extra"}},
         .Nome = "sstDados",
         .Pecas = {UmQuadro("fra0", {UmCampo("txtGeral", 5)}, false), UmQuadro("fra1", {UmCampo("txtOpcao", 5)}, false),
                   UmQuadro("fra2", {UmCampo("txtExtra", 5)}, false)}},
        EmLinha({{.Ajustes = AjustesCommandButton{.Default = true}, .Nome = "cmdOK", .Caption = "&OK"},
                 {.Ajustes = AjustesCommandButton{.Cancel = true}, .Nome = "cmdCancelar", .Caption = "&Cancelar"}}),
    });
}

class JanelaFormTest : public TelaDeTeste {
  protected:
    void TearDown() override
    {
        m_Conexoes.clear();
        TelaDeTeste::TearDown();
    }
    void Anota(const std::string &botao)
    {
        m_Conexoes.push_back(
            Controle<CommandButton>(botao)->Click().liga([this, botao] { apertados.push_back(botao); }));
    }

    std::vector<std::string> apertados;
    std::vector<Conexao> m_Conexoes;
};

using Textos = std::vector<std::string>;

TEST_F(JanelaFormTest, Aberta_MostraOsControlesComoSao)
{
    Abre(Variado());
    EXPECT_TRUE(IsWindowVisible(Manipulador()));
    EXPECT_EQ(TextoDe(Manipulador()), "Falso");
    EXPECT_EQ(Texto("lblCodigo"), "Có&digo:");
    EXPECT_EQ(Texto("cmdOK"), "&OK");
    EXPECT_TRUE(IsWindowVisible(Filha("txtGeral")));
    EXPECT_FALSE(IsWindowVisible(Filha("txtOpcao"))); // on another page
    Controle<TextBox>("txtNome")->DefineText("Radar çã €");
    Controle<CheckBox>("chkAtivo")->DefineValue(1);
    Controle<OptionButton>("optUrbana")->DefineValue(true);
    Controle<TextBox>("txtCodigo")->DefineEnabled(false);
    Controle<CommandButton>("cmdOK")->DefineVisible(false);
    descrito.Form->DefineCaption("Título & mais");
    Roda();
    EXPECT_EQ(Texto("txtNome"), "Radar çã €");
    EXPECT_EQ(SendMessageW(Filha("chkAtivo"), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(SendMessageW(Filha("optUrbana"), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(SendMessageW(Filha("optRural"), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_FALSE(IsWindowEnabled(Filha("txtCodigo")));
    EXPECT_FALSE(IsWindowVisible(Filha("cmdOK")));
    EXPECT_EQ(TextoDe(Manipulador()), "Título & mais");
}

TEST_F(JanelaFormTest, QuadroOculto_OQueTemVaiComEle)
{
    Abre(Variado());
    descrito.Controle("fraVia")->DefineVisible(false);
    Roda();
    EXPECT_FALSE(IsWindowVisible(Filha("optRural")));
    descrito.Controle("fraVia")->DefineVisible(true);
    descrito.Controle("fraVia")->DefineEnabled(false);
    Roda();
    EXPECT_TRUE(IsWindowVisible(Filha("optRural")));
    EXPECT_FALSE(IsWindowEnabled(Filha("optRural")));
}

TEST_F(JanelaFormTest, Digitado_OControleDecideOQueFica)
{
    Abre(EmColuna({UmCampo("txtNome", 10),
                   {.Ajustes = AjustesZtMask{.MaxLength = 4, .Tipo = TipoMascara::Digitos}, .Nome = "txtNumero"}}));
    EXPECT_EQ(Teclado(), "txtNome"); // the first in the order of Tab
    Digita(L"Água €");
    EXPECT_EQ(Controle<TextBox>("txtNome")->Text(), "Água €");
    Tecla(VK_HOME);
    Tecla(VK_DELETE);
    Digita(L"á");
    EXPECT_EQ(Controle<TextBox>("txtNome")->Text(), "água €");
    EXPECT_EQ(Texto("txtNome"), "água €");
    DWORD cursor = 0;
    SendMessageW(Filha("txtNome"), EM_GETSEL, 0, reinterpret_cast<LPARAM>(&cursor));
    EXPECT_EQ(cursor, 1U);
    Tecla(VK_TAB);
    EXPECT_EQ(Teclado(), "txtNumero");
    Digita(L"1a2b345");
    EXPECT_EQ(Controle<ztMask>("txtNumero")->Text(), "1234");
    EXPECT_EQ(Texto("txtNumero"), "1234");
}

TEST_F(JanelaFormTest, CampoTravado_NaoMuda)
{
    Abre(EmColuna({UmCampo("txtNome", 10)}));
    Controle<TextBox>("txtNome")->DefineText("fixo");
    Controle<TextBox>("txtNome")->DefineLocked(true);
    Roda();
    Digita(L"x");
    EXPECT_EQ(Texto("txtNome"), "fixo");
    EXPECT_EQ(Controle<TextBox>("txtNome")->Text(), "fixo");
}

TEST_F(JanelaFormTest, Tab_SegueAOrdemDosControlesNosDoisSentidos)
{
    Abre(Variado());
    const Textos ordem = {"txtNome",  "txtCodigo", "chkAtivo", "optRural",    "optUrbana",
                          "sstDados", "txtGeral",  "cmdOK",    "cmdCancelar", "txtNome"};
    EXPECT_EQ(Teclado(), ordem.front());
    for (std::size_t n = 1; n < ordem.size(); ++n) {
        Tecla(VK_TAB);
        EXPECT_EQ(Teclado(), ordem[n]);
        EXPECT_EQ(descrito.Form->ControleAtivo()->Nome(), ordem[n]);
    }
    for (std::size_t n = ordem.size() - 1; n > 0; --n) {
        Tecla(VK_TAB, {VK_SHIFT});
        EXPECT_EQ(Teclado(), ordem[n - 1]);
    }
    descrito.Controle("cmdCancelar")->DefineTabIndex(0);
    Tecla(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(Teclado(), "cmdCancelar");
    // Going through the options has chosen none.
    EXPECT_FALSE(Controle<OptionButton>("optRural")->Value());
    EXPECT_FALSE(Controle<OptionButton>("optUrbana")->Value());
}

TEST_F(JanelaFormTest, TeclasDoForm_EnterEEscApertamOsSeusBotoes)
{
    Abre(Variado());
    Anota("cmdOK");
    Anota("cmdCancelar");
    Tecla(VK_RETURN);
    Tecla(VK_ESCAPE);
    EXPECT_EQ(apertados, (Textos{"cmdOK", "cmdCancelar"}));
    EXPECT_EQ(Teclado(), "txtNome");
    Tecla(VK_TAB, {VK_SHIFT});
    Tecla(VK_RETURN); // the button that has the focus
    EXPECT_EQ(apertados, (Textos{"cmdOK", "cmdCancelar", "cmdCancelar"}));
}

TEST_F(JanelaFormTest, AltComLetra_FazOQueALetraDiz)
{
    Abre(Variado());
    Anota("cmdOK");
    Tecla('D', {VK_MENU});
    EXPECT_EQ(Teclado(), "txtCodigo");
    Tecla('N', {VK_MENU});
    EXPECT_EQ(Teclado(), "txtNome");
    Tecla('A', {VK_MENU});
    EXPECT_EQ(Controle<CheckBox>("chkAtivo")->Value(), 1);
    Tecla('U', {VK_MENU});
    EXPECT_TRUE(Controle<OptionButton>("optUrbana")->Value());
    Tecla('E', {VK_MENU});
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 2);
    EXPECT_TRUE(IsWindowVisible(Filha("txtExtra")));
    EXPECT_FALSE(IsWindowVisible(Filha("txtGeral")));
    Tecla('O', {VK_MENU}); // of two the first behind the focus
    EXPECT_EQ(apertados, Textos{"cmdOK"});
}

TEST_F(JanelaFormTest, CtrlPgDn_AbreAProximaPaginaQueSePodeAbrir)
{
    Abre(Variado());
    Controle<SSTab>("sstDados")->DefineTabEnabled(1, false);
    Roda();
    Tecla(VK_NEXT, {VK_CONTROL});
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 2);
    Tecla(VK_PRIOR, {VK_CONTROL});
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 0);
    EXPECT_EQ(SendMessageW(Filha("sstDados"), TCM_GETCURSEL, 0, 0), 0);
}

TEST_F(JanelaFormTest, Abas_PaginaOcultaNaoTemAbaEAMesmaPaginaSeAbre)
{
    Abre(Variado());
    Controle<SSTab>("sstDados")->DefineTabVisible(1, false);
    Roda();
    const HWND tira = Filha("sstDados");
    EXPECT_EQ(SendMessageW(tira, TCM_GETITEMCOUNT, 0, 0), 2);
    RECT aba{};
    SendMessageW(tira, TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&aba));
    const LPARAM onde = MAKELPARAM((aba.left + aba.right) / 2, (aba.top + aba.bottom) / 2);
    SendMessageW(tira, WM_LBUTTONDOWN, MK_LBUTTON, onde);
    SendMessageW(tira, WM_LBUTTONUP, 0, onde);
    Roda();
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 2);
    EXPECT_EQ(Teclado(), "sstDados");
}

TEST_F(JanelaFormTest, Mouse_ClicaEDaOFoco)
{
    Abre(Variado());
    Anota("cmdOK");
    Clica(Filha("txtCodigo"));
    EXPECT_EQ(Teclado(), "txtCodigo");
    EXPECT_EQ(descrito.Form->ControleAtivo()->Nome(), "txtCodigo");
    Clica(Filha("chkAtivo"));
    EXPECT_EQ(Controle<CheckBox>("chkAtivo")->Value(), 1);
    Clica(Filha("optRural"));
    EXPECT_TRUE(Controle<OptionButton>("optRural")->Value());
    Clica(Filha("cmdOK"));
    EXPECT_EQ(apertados, Textos{"cmdOK"});
    EXPECT_EQ(Teclado(), "cmdOK");
}

TEST_F(JanelaFormTest, FocoDoModulo_LevaOTeclado)
{
    Abre(Variado());
    descrito.Controle("txtCodigo")->SetFocus();
    EXPECT_EQ(Teclado(), "txtCodigo");
    // Hidden or disabled, what had the keyboard leaves it to the next one.
    descrito.Controle("txtCodigo")->DefineVisible(false);
    Roda();
    EXPECT_EQ(Teclado(), "chkAtivo");
    descrito.Controle("chkAtivo")->DefineEnabled(false);
    Roda();
    EXPECT_EQ(Teclado(), "optRural");
}

TEST_F(JanelaFormTest, Fechar_PerguntaAoFormEVaiSoQuandoEleDeixa)
{
    Abre(Variado());
    descrito.Form->CancelaUnload = true;
    SendMessageW(Manipulador(), WM_CLOSE, 0, 0);
    EXPECT_EQ(descrito.Form->Unloads, 1);
    EXPECT_TRUE(IsWindowVisible(Manipulador()));
    descrito.Form->CancelaUnload = false;
    descrito.Form->DefineEnabled(false);
    SendMessageW(Manipulador(), WM_CLOSE, 0, 0);
    EXPECT_EQ(descrito.Form->Unloads, 1); // a form that is disabled is not closed
    descrito.Form->DefineEnabled(true);
    const HWND janela = Manipulador();
    SendMessageW(janela, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(janela));
}

TEST_F(JanelaFormTest, BotaoQueDescarrega_NadaTocaAJanelaMorta)
{
    Abre(Variado());
    const HWND janela = Manipulador();
    m_Conexoes.push_back(Controle<CommandButton>("cmdOK")->Click().liga([this] {
        janelas->Descarrega(descrito.Form);
        Roda(); // and the queue runs, in what is no more
    }));
    Clica(Filha("cmdOK"));
    EXPECT_FALSE(IsWindow(janela));
    EXPECT_TRUE(camada->Janelas().empty());
}

TEST_F(JanelaFormTest, TextoQueDescarrega_NadaTocaAJanelaMorta)
{
    Abre(Variado());
    const HWND janela = Manipulador();
    m_Conexoes.push_back(Controle<TextBox>("txtNome")->Change().liga([this] { janelas->Descarrega(descrito.Form); }));
    Digita(L"a");
    EXPECT_FALSE(IsWindow(janela));
}

TEST_F(JanelaFormTest, DonoDestruido_OFormEDescarregado)
{
    const HWND dono = CreateWindowExW(0, WC_STATICW, L"dono", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                      EsteModulo(), nullptr);
    camada->Principal = [dono] { return dono; };
    Abre(Variado());
    const HWND janela = Manipulador();
    EXPECT_EQ(GetWindow(janela, GW_OWNER), dono);
    DestroyWindow(dono);
    EXPECT_FALSE(IsWindow(janela));
    EXPECT_EQ(descrito.Form->Unloads, 1);
    camada->Principal = [] { return HWND(nullptr); };
}

TEST_F(JanelaFormTest, FalhaDeUmTratador_EMostradaEAJanelaFica)
{
    Abre(Variado());
    m_Conexoes.push_back(Controle<CommandButton>("cmdOK")->Click().liga([] { throw Falha(5, "origem", "quebrou"); }));
    Clica(Filha("cmdOK"));
    EXPECT_EQ(falhas, Textos{"5 quebrou"});
    falhas.clear();
    EXPECT_TRUE(IsWindowVisible(Manipulador()));
}

TEST_F(JanelaFormTest, DefineTexto_EscreveOTituloSemOForm)
{
    Abre(Variado());
    janelas->DefineTextoJanela(descrito.Form, "Seleção");
    EXPECT_EQ(TextoDe(Manipulador()), "Seleção");
    EXPECT_EQ(descrito.Form->Caption(), "Falso");
    descrito.Form->DefineCaption("Outro");
    Roda();
    EXPECT_EQ(TextoDe(Manipulador()), "Seleção");
    janelas->DefineTextoJanela(descrito.Form, "");
    EXPECT_EQ(TextoDe(Manipulador()), "Outro");
}

TEST_F(JanelaFormTest, Tamanho_NuncaMenorDoQuePrecisaEOFormSabeDele)
{
    Abre(Variado());
    SetWindowPos(Manipulador(), nullptr, 10, 20, 10, 10, SWP_NOZORDER | SWP_NOACTIVATE);
    Roda();
    RECT lugar{};
    GetWindowRect(Manipulador(), &lugar);
    EXPECT_GT(lugar.right - lugar.left, 100);
    EXPECT_EQ(descrito.Form->Left(), lugar.left * 15);
    EXPECT_EQ(descrito.Form->Top(), lugar.top * 15);
    EXPECT_EQ(descrito.Form->Width(), (lugar.right - lugar.left) * 15);
    EXPECT_EQ(descrito.Form->Height(), (lugar.bottom - lugar.top) * 15);
}

TEST_F(JanelaFormTest, Minimizada_OFormSabeEVolta)
{
    Abre(Variado());
    ShowWindow(Manipulador(), SW_MINIMIZE);
    Roda();
    EXPECT_EQ(descrito.Form->WindowState(), JanelaMinimizada);
    janelas->MostraForm(descrito.Form, false); // comes to the front
    Roda();
    EXPECT_EQ(descrito.Form->WindowState(), JanelaNormal);
    EXPECT_FALSE(IsIconic(Manipulador()));
}

TEST_F(JanelaFormTest, AparenciaDoSistemaMudou_AJanelaSegueSemGastar)
{
    Abre(Variado());
    const auto muda = [this] {
        for (const UINT mensagem : {WM_SETTINGCHANGE, WM_SYSCOLORCHANGE, WM_THEMECHANGED}) {
            SendMessageW(Manipulador(), mensagem, 0, 0);
        }
        Roda();
    };
    muda();
    const DWORD antes = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (int n = 0; n < 20; ++n) {
        muda();
    }
    EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), antes);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(Filha("txtNome"), WM_GETFONT, 0, 0)), Janela().Escrita().Fonte());
    EXPECT_TRUE(IsWindowVisible(Filha("txtNome")));
}

TEST_F(JanelaFormTest, NomesParaOLeitor_SaoOsRotulosAntesDosCampos)
{
    Abre(Variado());
    using Funcao = HRESULT(WINAPI *)(HWND, DWORD, REFIID, void **);
    const auto objetoDe = reinterpret_cast<Funcao>(
        reinterpret_cast<void *>(GetProcAddress(LoadLibraryW(L"oleacc.dll"), "AccessibleObjectFromWindow")));
    ASSERT_NE(objetoDe, nullptr);
    const auto nome = [&](const std::string &controle) {
        Com<IAccessible> objeto;
        objetoDe(Filha(controle), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, objeto.RecebeVazio());
        VARIANT este{};
        este.vt = VT_I4;
        este.lVal = CHILDID_SELF;
        BSTR texto = nullptr;
        if (!objeto || objeto->get_accName(este, &texto) != S_OK) {
            return std::string("nenhum");
        }
        const std::string lido = ParaUtf8(texto);
        SysFreeString(texto);
        return lido;
    };
    EXPECT_EQ(nome("txtNome"), "Nome:");
    EXPECT_EQ(nome("txtCodigo"), "Código:");
    EXPECT_EQ(nome("chkAtivo"), "Ativo");
    EXPECT_EQ(nome("cmdCancelar"), "Cancelar");
}

TEST_F(JanelaFormTest, Modal_BloqueiaTudoAteSair)
{
    Abre(Variado());
    const HWND primeira = Manipulador();
    const HWND alheia = CreateWindowExW(0, WC_STATICW, L"alheia", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                        EsteModulo(), nullptr);
    FormDescrito segundo;
    segundo.Faz(Variado());
    bool vista = false;
    NaFrente(ClasseDoForm, [&](HWND janela) {
        vista = true;
        EXPECT_NE(janela, primeira);
        EXPECT_FALSE(IsWindowEnabled(primeira));
        EXPECT_FALSE(IsWindowEnabled(alheia));
        descrito.Form->DefineEnabled(false); // what the module says meanwhile does not free it
        descrito.Form->DefineEnabled(true);
        EXPECT_FALSE(IsWindowEnabled(primeira));
        janelas->Descarrega(segundo.Form);
    });
    janelas->MostraForm(segundo.Form, true);
    EXPECT_TRUE(vista);
    EXPECT_TRUE(IsWindowEnabled(primeira));
    EXPECT_TRUE(IsWindowEnabled(alheia));
    DestroyWindow(alheia);
}

TEST_F(JanelaFormTest, Modal_QueTerminaAntesDaDeDentro_DeixaODonoBloqueado)
{
    const HWND alheia = CreateWindowExW(0, WC_STATICW, L"alheia", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                        EsteModulo(), nullptr);
    camada->Principal = [alheia] { return alheia; };
    FormDescrito fora;
    fora.Faz(EmColuna({UmCampo("txtFora", 5)}));
    FormDescrito dentro;
    dentro.Faz(EmColuna({UmCampo("txtDentro", 5)}));
    bool vista = false;
    NaFrente(ClasseDoForm, [&](HWND) {
        NaFrente(ClasseDoForm, [&](HWND deDentro) {
            vista = true;
            janelas->Descarrega(fora.Form);
            EXPECT_TRUE(IsWindow(deDentro)); // that stood in front of the one that went
            EXPECT_TRUE(IsWindowEnabled(deDentro));
            EXPECT_FALSE(IsWindowEnabled(alheia));
            janelas->Descarrega(dentro.Form);
        });
        janelas->MostraForm(dentro.Form, true);
    });
    janelas->MostraForm(fora.Form, true);
    EXPECT_TRUE(vista);
    EXPECT_TRUE(IsWindowEnabled(alheia));
    EXPECT_EQ(dentro.Form->Unloads, 1);
    camada->Principal = [] { return HWND(nullptr); };
    DestroyWindow(alheia);
}

TEST_F(JanelaFormTest, ModalOculta_TerminaAEsperaEMostradaDeNovoEsperaOutraVez)
{
    Abre(Variado());
    const HWND primeira = Manipulador();
    FormDescrito segundo;
    segundo.Faz(EmColuna({UmCampo("txtCampo", 5)}));
    HWND modal = nullptr;
    for (int vez = 0; vez < 2; ++vez) {
        NaFrente(ClasseDoForm, [&](HWND janela) {
            EXPECT_NE(janela, primeira);
            EXPECT_FALSE(IsWindowEnabled(primeira));
            modal = janela;
            segundo.Form->DefineVisible(false);
        });
        janelas->MostraForm(segundo.Form, true);
        EXPECT_TRUE(IsWindowEnabled(primeira));
        EXPECT_TRUE(IsWindow(modal));
        EXPECT_FALSE(IsWindowVisible(modal));
        EXPECT_EQ(segundo.Form->Unloads, 0);
    }
    janelas->FechaForm(segundo.Form);
    EXPECT_FALSE(IsWindow(modal));
}

TEST_F(JanelaFormTest, PreparadaComoFilha_MostradaComoModalTomaOTipoEODono)
{
    Abre(Variado());
    const HWND primeira = Manipulador();
    FormDescrito fora;
    fora.Faz(EmColuna({UmCampo("txtFora", 5)}));
    FormDescrito preparado;
    preparado.Faz(EmColuna({UmCampo("txtCampo", 5)}));
    janelas->Prepara(preparado.Form);
    const HWND janela = camada->JanelaDe(*preparado.Form);
    EXPECT_NE(GetWindowLongPtrW(janela, GWL_STYLE) & WS_MINIMIZEBOX, 0);
    bool vista = false;
    NaFrente(ClasseDoForm, [&](HWND deFora) {
        NaFrente(ClasseDoForm, [&](HWND deDentro) {
            vista = true;
            EXPECT_EQ(deDentro, janela);
            EXPECT_EQ(GetWindow(janela, GW_OWNER), deFora);
            EXPECT_EQ(GetWindowLongPtrW(janela, GWL_STYLE) & WS_MINIMIZEBOX, 0);
            EXPECT_FALSE(IsWindowEnabled(deFora));
            EXPECT_FALSE(IsWindowEnabled(primeira));
            janelas->Descarrega(preparado.Form);
            janelas->Descarrega(fora.Form);
        });
        janelas->MostraForm(preparado.Form, true);
    });
    janelas->MostraForm(fora.Form, true);
    EXPECT_TRUE(vista);
    EXPECT_EQ(preparado.Form->Ativacoes, 0); // a modal form is no child of the application
}

TEST_F(JanelaFormTest, Ativacao_SoQuandoAVezPassaAOutraJanelaDoAplicativo)
{
    Abre(Variado());
    const HWND primeira = Manipulador();
    EXPECT_EQ(descrito.Form->Ativacoes, 1);
    NaFrente(ClasseDaCaixa, [&](HWND) { Tecla(VK_RETURN); });
    janelas->Informa("Gravado.", "Cadastro");
    FormDescrito modal;
    modal.Faz(EmColuna({UmCampo("txtCampo", 5)}));
    NaFrente(ClasseDoForm, [&](HWND) { janelas->Descarrega(modal.Form); });
    janelas->MostraForm(modal.Form, true);
    SendMessageW(primeira, WM_ACTIVATE, WA_INACTIVE, 0); // another application
    SendMessageW(primeira, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(descrito.Form->Ativacoes, 1);
    EXPECT_EQ(descrito.Form->Desativacoes, 0);
    FormDescrito outro;
    outro.Faz(EmColuna({UmCampo("txtCampo", 5)}));
    janelas->MostraForm(outro.Form, false);
    Roda();
    EXPECT_EQ(descrito.Form->Desativacoes, 1);
    EXPECT_EQ(outro.Form->Ativacoes, 1);
    // Straight from another application to the other window.
    SendMessageW(Manipulador(), WM_ACTIVATE, WA_INACTIVE, 0);
    SendMessageW(primeira, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(outro.Form->Desativacoes, 1);
    EXPECT_EQ(descrito.Form->Ativacoes, 2);
}

TEST_F(JanelaFormTest, Bloqueada_NaoVemParaAFrente)
{
    Abre(Variado());
    FormDescrito modal;
    modal.Faz(EmColuna({UmCampo("txtCampo", 5)}));
    NaFrente(ClasseDoForm, [&](HWND janela) {
        descrito.Form->ZOrder(0);
        descrito.Form->SetFocus();
        EXPECT_EQ(GetActiveWindow(), janela);
        janelas->Descarrega(modal.Form);
    });
    janelas->MostraForm(modal.Form, true);
}

TEST_F(JanelaFormTest, Maximizada_EMostradaAssim)
{
    constexpr std::int16_t Maximizada = 2;
    Peca raiz = Variado();
    descrito.Faz(raiz);
    descrito.Form->DefineWindowState(Maximizada);
    Abre(descrito.Form);
    EXPECT_TRUE(IsZoomed(Manipulador()));
    EXPECT_EQ(descrito.Form->WindowState(), Maximizada);
}

TEST_F(JanelaFormTest, EnquantoHaJanela_OModuloFica)
{
    const long antes = Vivo::Quantos();
    Abre(Variado());
    EXPECT_GT(Vivo::Quantos(), antes);
    janelas->FechaForm(descrito.Form);
    EXPECT_EQ(Vivo::Quantos(), antes);
}

TEST_F(JanelaFormTest, SetasNasAbas_PassamPelaPaginaQueNaoSeAbre)
{
    Abre(Variado());
    Controle<SSTab>("sstDados")->DefineTabEnabled(1, false);
    Janela().LevaTeclado(Filha("sstDados"));
    Roda();
    Tecla(VK_RIGHT);
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 2);
    EXPECT_EQ(Teclado(), "sstDados");
    Tecla(VK_LEFT);
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 0);
}

TEST_F(JanelaFormTest, DoisCliquesRapidos_MarcamEDesmarcam)
{
    Abre(Variado());
    const HWND marca = Filha("chkAtivo");
    for (const UINT aperto : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
        SendMessageW(marca, aperto, MK_LBUTTON, MAKELPARAM(3, 3));
        SendMessageW(marca, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    }
    EXPECT_EQ(Controle<CheckBox>("chkAtivo")->Value(), 0);
}

TEST_F(JanelaFormTest, SetasNasOpcoes_EscolhemAVizinhaDoGrupo)
{
    Abre(Variado());
    Clica(Filha("optRural"));
    Tecla(VK_DOWN);
    EXPECT_TRUE(Controle<OptionButton>("optUrbana")->Value());
    EXPECT_EQ(Teclado(), "optUrbana");
    Tecla(VK_RIGHT); // behind the last comes the first
    EXPECT_TRUE(Controle<OptionButton>("optRural")->Value());
    EXPECT_EQ(Teclado(), "optRural");
}

TEST_F(JanelaFormTest, CtrlPgDn_DeUmaListaEDeUmComboTravado)
{
    Abre(EmColuna({{.Ajustes = AjustesZtCombo{.ColunaValor = -1}, .Nome = "combo"},
                   {.Ajustes = AjustesZtList{}, .Nome = "lista", .Elastica = true},
                   {.Ajustes = AjustesSSTab{.Paginas = {"&Geral", "&Opções"}},
                    .Nome = "sstDados",
                    .Pecas = {UmQuadro("fra0", {}, false), UmQuadro("fra1", {}, false)}}}));
    Controle<ztCombo>("combo")->DefineComboSomenteLeitura(true);
    Roda();
    EXPECT_EQ(Teclado(), "combo");
    Tecla(VK_NEXT, {VK_CONTROL});
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 1);
    Janela().LevaTeclado(Filha("lista"));
    Roda();
    Janela().LevaTeclado(Janela().DoControle(*descrito.Controle("lista"))->JanelaDe(Parte::Linhas));
    Roda();
    EXPECT_EQ(Teclado(), "lista");
    Tecla(VK_PRIOR, {VK_CONTROL});
    EXPECT_EQ(Controle<SSTab>("sstDados")->Tab(), 0);
}

TEST_F(JanelaFormTest, OMesmoDpi_NaoMexeNaJanela)
{
    Abre(Variado());
    RECT antes{};
    GetWindowRect(Manipulador(), &antes);
    const RECT pedido{0, 0, 2000, 2000};
    const UINT dpi = Janela().Escrita().Dpi();
    SendMessageW(Manipulador(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&pedido));
    RECT depois{};
    GetWindowRect(Manipulador(), &depois);
    EXPECT_TRUE(EqualRect(&antes, &depois));
}

// What the system counts of this program.
struct Gastos {
    DWORD Janelas = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    DWORD Desenhos = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    std::size_t Memoria = MemoriaPropria();

    static std::size_t MemoriaPropria()
    {
        PROCESS_MEMORY_COUNTERS_EX medidas{};
        medidas.cb = sizeof medidas;
        K32GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&medidas),
                                sizeof medidas);
        return medidas.PrivateUsage;
    }
};

TEST_F(JanelaFormTest, DuzentasVezesAbrirUsarEFechar_NadaCresce)
{
    constexpr int Vezes = 200; // the host outside opens the module's own windows a thousand times
    const Peca simples = EmColuna({
        Rotulado(UmCampo("txtNome", 20), "&Nome:"),
        UmaMarca("chkAtivo", "&Ativo"),
        {.Ajustes = AjustesSSTab{.Paginas = {"&Geral", "&Opções"}},
         .Nome = "sstDados",
         .Pecas = {UmQuadro("fra0", {UmCampo("txtGeral", 5)}), UmQuadro("fra1", {UmaOpcao("optUma", "&Uma")})}},
        UmBotao("cmdOK", "&OK"),
    });
    const auto vez = [&] {
        Abre(simples);
        SetWindowTextW(Filha("txtNome"), L"x");
        SendMessageW(Filha("chkAtivo"), BM_CLICK, 0, 0);
        Controle<SSTab>("sstDados")->DefineTab(1);
        Roda();
        janelas->Descarrega(descrito.Form);
        Roda();
    };
    for (int n = 0; n < 20; ++n) {
        vez();
    }
    const Gastos antes;
    for (int n = 0; n < Vezes; ++n) {
        vez();
    }
    const Gastos depois;
    EXPECT_EQ(depois.Janelas, antes.Janelas);
    EXPECT_EQ(depois.Desenhos, antes.Desenhos);
    constexpr std::size_t UmaPorVez = Vezes; // one allocation that stays at each time would be more
    EXPECT_LE(depois.Memoria, antes.Memoria + UmaPorVez * 100);
}

} // namespace

} // namespace nativo
