#include "windows/host/HostWindows.h"

#include "controls/ztClienteSetor.h"
#include "controls/ztEndereco.h"
#include "limits/frmLimitesDif.h"
#include "search/frmLista.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"
#include "tests/windows/ObjetoAlheio.h"
#include "windows/automation/Tardio.h"
#include "windows/automation/Texto16.h"
#include "windows/host/Classes.h"
#include "windows/host/ClientesWindows.h"
#include "windows/host/FazHostWindows.h"
#include "windows/host/LogradourosWindows.h"

#include <gtest/gtest.h>

#include <objbase.h>
#include <oleauto.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nativo {
namespace {

constexpr const wchar_t *ChaveDasClasses = L"Software\\Classes\\CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\\Classes";

Variante Objeto(const Com<ObjetoAlheio> &objeto)
{
    Variante variante;
    V_VT(&variante.Bruta()) = VT_DISPATCH;
    V_DISPATCH(&variante.Bruta()) = ComoDispatch(objeto).Solta();
    return variante;
}

template <class T> Variante De(const T &valor)
{
    return ParaVariante(valor);
}

std::int32_t Numero(HWND janela)
{
    return static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(janela));
}

HWND Janela(std::int32_t numero)
{
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(numero));
}

// A window of the host's, which writes down that it was asked to close.
class JanelaDoHospedeiro {
  public:
    explicit JanelaDoHospedeiro(const wchar_t *titulo)
    {
        WNDCLASSW classe{};
        classe.lpfnWndProc = Procedimento;
        classe.hInstance = GetModuleHandleW(nullptr);
        classe.lpszClassName = L"JanelaDoHospedeiro";
        RegisterClassW(&classe);
        m_Janela = CreateWindowW(L"JanelaDoHospedeiro", titulo, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                 nullptr, nullptr, classe.hInstance, nullptr);
        SetWindowLongPtrW(m_Janela, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    JanelaDoHospedeiro(const JanelaDoHospedeiro &) = delete;
    JanelaDoHospedeiro &operator=(const JanelaDoHospedeiro &) = delete;
    ~JanelaDoHospedeiro() { DestroyWindow(m_Janela); }

    HWND Manipulador() const { return m_Janela; }
    std::wstring Titulo() const
    {
        std::array<wchar_t, 100> texto{};
        GetWindowTextW(m_Janela, texto.data(), static_cast<int>(texto.size()));
        return texto.data();
    }
    int Pedidos = 0; // to close

  private:
    static LRESULT CALLBACK Procedimento(HWND janela, UINT mensagem, WPARAM w, LPARAM l)
    {
        auto *esta = reinterpret_cast<JanelaDoHospedeiro *>(GetWindowLongPtrW(janela, GWLP_USERDATA));
        if (mensagem == WM_CLOSE && esta != nullptr) {
            ++esta->Pedidos;
            return 0;
        }
        return DefWindowProcW(janela, mensagem, w, l);
    }

    HWND m_Janela;
};

// A class of the host's, registered for as long as this lives, under an identifier of its own.
class ClasseRegistrada final : public IClassFactory {
  public:
    explicit ClasseRegistrada(Com<ObjetoAlheio> objeto) : m_Objeto(std::move(objeto))
    {
        CoCreateGuid(&m_Numero);
        CoRegisterClassObject(m_Numero, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_Registro);
    }
    ClasseRegistrada(const ClasseRegistrada &) = delete;
    ClasseRegistrada &operator=(const ClasseRegistrada &) = delete;
    ~ClasseRegistrada() { CoRevokeClassObject(m_Registro); }

    std::wstring Identificador() const
    {
        std::array<wchar_t, 40> texto{};
        StringFromGUID2(m_Numero, texto.data(), static_cast<int>(texto.size()));
        return texto.data();
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        *saida = iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory *>(this) : nullptr;
        return *saida == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *, REFIID iid, void **saida) override
    {
        return m_Objeto->QueryInterface(iid, saida);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    Com<ObjetoAlheio> m_Objeto;
    CLSID m_Numero{};
    DWORD m_Registro = 0;
};

// The module in a host that knows it by its objects alone.
class HostWindowsTest : public testing::Test {
  protected:
    void SetUp() override
    {
        OleInitialize(nullptr);
        InstalaHost(FazHostWindows());
        geral = Novo<Geral>();
        mdi->Membro("AutoShowChildren", De(true));
        mdi->Membro("hWnd", De(Numero(principal.Manipulador())));
        exe->Membro("Title", De(std::string("Hospedeiro")));
        exe->Membro("ProductName", De(std::string("Produto")));
        mtm->Membro("ClienteLogado", De(std::string("PREFEITURA")));
        mtm->Membro("SetorLogado", De(std::string("CENTRAL")));
        geral->Parametros(Um<IFormMDI>(mdi), Um<IActBar>(Alheio()), Um<IRelatorios>(Alheio()), Um<IAjuda>(ajuda),
                          Um<IMDB>(mdb), Um<IoAppEXE>(exe));
        geral->Logon(Um<IobjMTM>(mtm), nullptr, "");
        geral->ObjInterface = Um<IObjInterface>(interface_);
        mensagem->Membro("Titulo");
        mensagem->Membro("ExibeErro");
        Diz(L"Mensagem", ClasseDaMensagem.Identificador());
        diario.clear();
    }
    void TearDown() override
    {
        geral->Encerra();
        geral = nullptr;
        DescarregaModulo();
        InstalaHost(nullptr);
        RegDeleteKeyW(HKEY_CURRENT_USER, ChaveDasClasses);
        OleUninitialize();
    }

    Com<ObjetoAlheio> Alheio() { return ObjetoAlheio::Novo(diario); }
    template <class C> Ref<C> Um(const Com<ObjetoAlheio> &objeto) { return RemotoDe<C>(ComoDispatch(objeto)); }
    static void Diz(const wchar_t *classe, const std::wstring &identificador)
    {
        RegSetKeyValueW(HKEY_CURRENT_USER, ChaveDasClasses, classe, REG_SZ, identificador.c_str(),
                        static_cast<DWORD>((identificador.size() + 1) * sizeof(wchar_t)));
    }
    static std::int32_t NumeroDaFalha(const std::function<void()> &acao) { return FalhaLancada(acao).Numero; }
    static void Bombeia()
    {
        MSG mensagem;
        while (PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&mensagem);
        }
    }
    // A form of the module, loaded, with its controls.
    template <class Form> struct Carregada : Form {
        void Abre() { this->Carregar(); }
    };
    template <class Form> static Ref<IForm> Carrega()
    {
        auto form = Novo<Carregada<Form>>();
        form->Abre();
        return form;
    }

    Diario diario;
    JanelaDoHospedeiro principal{L"Principal"};
    Com<ObjetoAlheio> mdi = Alheio();
    Com<ObjetoAlheio> exe = Alheio();
    Com<ObjetoAlheio> mtm = Alheio();
    Com<ObjetoAlheio> mdb = Alheio();
    Com<ObjetoAlheio> ajuda = Alheio();
    Com<ObjetoAlheio> interface_ = Alheio();
    Com<ObjetoAlheio> mensagem = Alheio();
    ClasseRegistrada ClasseDaMensagem{mensagem};
    Ref<Geral> geral;
};

TEST_F(HostWindowsTest, ClassThatIsNotRegistered_IsFault429)
{
    HostServices &host = Host();
    RegDeleteKeyW(HKEY_CURRENT_USER, ChaveDasClasses);
    const std::vector<std::function<void()>> classes{
        [&] { host.CriaAMRegistro(); },  [&] { host.CriaAMEditMenu(); }, [&] { host.CriaRelatorios(); },
        [&] { host.CriaAjuda(); },       [&] { host.CriaCFunGen(); },    [&] { host.CriaMensagem(); },
        [&] { host.CriaDadosVor(); },    [&] { host.CriaDiretorios(); }, [&] { host.CriaObjGlobalVor(); },
        [&] { host.CriaDocumentoPDF(); }};
    for (const auto &cria : classes) {
        const Falha falha = FalhaLancada(cria);
        EXPECT_EQ(falha.Numero, 429);
        EXPECT_EQ(falha.Descricao, DescricaoFalha(429));
    }
    Diz(L"Diretorios", L"{nada disso}");
    EXPECT_EQ(NumeroDaFalha([&] { host.CriaDiretorios(); }), 429);
}

TEST_F(HostWindowsTest, Identificador_OfEachClass_IsTheKnownOneUntilAValueTellsAnother)
{
    using Classes::Identificador;
    EXPECT_EQ(Identificador("AMRegistro"), "ZTK4Lib.AMRegistro");
    EXPECT_EQ(Identificador("AMEditMenu"), "ZTK4Lib.AMEditMenu");
    EXPECT_EQ(Identificador("Relatorios"), "ZTK4Lib.CRelatorios");
    EXPECT_EQ(Identificador("Ajuda"), "ZTK4Lib.CAjuda");
    EXPECT_EQ(Identificador("CFunGen"), "ZTK4LIBC.CFunGen");
    EXPECT_EQ(Identificador("DadosVor"), "ZTVORLIB.DadosVor");
    EXPECT_EQ(Identificador("Diretorios"), "ZTVORLIB.Diretorios");
    EXPECT_EQ(Identificador("ObjGlobalVor"), "ZTVORLIB.ObjGlobalVor");
    EXPECT_EQ(Identificador("DocumentoPDF"), "ZTVORLIB.DocumentoPDF");
    EXPECT_EQ(Identificador("Mensagem"), ParaUtf8(ClasseDaMensagem.Identificador()));
    Diz(L"Mensagem", L"");
    EXPECT_EQ(Identificador("Mensagem"), "ZTVORLIB.Mensagem");
    EXPECT_EQ(Identificador("Logradouros"), "");
    EXPECT_EQ(Identificador("Clientes"), "");
    EXPECT_EQ(Identificador("Outra"), "");
    Diz(L"AMRegistro", L"Outra.Ação");
    EXPECT_EQ(Identificador("AMRegistro"), "Outra.Ação");
    Diz(L"AMRegistro", L"");
    EXPECT_EQ(Identificador("AMRegistro"), "ZTK4Lib.AMRegistro");
}

// The machine's values, for as long as this lives: those of the machine itself are neither seen nor touched.
class ValoresDaMaquina {
  public:
    ValoresDaMaquina()
    {
        RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\ValoresDaMaquina", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &m_Chave, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_Chave);
    }
    ValoresDaMaquina(const ValoresDaMaquina &) = delete;
    ValoresDaMaquina &operator=(const ValoresDaMaquina &) = delete;
    ~ValoresDaMaquina()
    {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegCloseKey(m_Chave);
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\ValoresDaMaquina");
    }

  private:
    HKEY m_Chave = nullptr;
};

TEST_F(HostWindowsTest, Identificador_ThatWasToldForTheMachine_CountsBehindTheUsers)
{
    const ValoresDaMaquina maquina;
    const std::wstring dito = L"Da.Maquina";
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, ChaveDasClasses, L"Ajuda", REG_SZ, dito.c_str(),
                              static_cast<DWORD>((dito.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
    EXPECT_EQ(Classes::Identificador("Ajuda"), "Da.Maquina");
    Diz(L"Ajuda", L"Do.Usuario");
    EXPECT_EQ(Classes::Identificador("Ajuda"), "Do.Usuario");
}

TEST_F(HostWindowsTest, ClassThatAValueTells_IsCreatedByItsIdentifier)
{
    HostServices &host = Host();
    const std::vector<std::pair<const wchar_t *, std::function<Ref<::Objeto>()>>> classes{{L"AMRegistro", [&] { return host.CriaAMRegistro(); }},
                                                                                          {L"AMEditMenu", [&] { return host.CriaAMEditMenu(); }},
                                                                                          {L"Relatorios", [&] { return host.CriaRelatorios(); }},
                                                                                          {L"Ajuda", [&] { return host.CriaAjuda(); }},
                                                                                          {L"CFunGen", [&] { return host.CriaCFunGen(); }},
                                                                                          {L"Mensagem", [&] { return host.CriaMensagem(); }},
                                                                                          {L"DadosVor", [&] { return host.CriaDadosVor(); }},
                                                                                          {L"Diretorios", [&] { return host.CriaDiretorios(); }},
                                                                                          {L"ObjGlobalVor", [&] { return host.CriaObjGlobalVor(); }},
                                                                                          {L"DocumentoPDF", [&] { return host.CriaDocumentoPDF(); }}};
    for (const auto &[nome, cria] : classes) {
        const Com<ObjetoAlheio> objeto = Alheio();
        const ClasseRegistrada classe(objeto);
        Diz(nome, classe.Identificador());
        EXPECT_TRUE(Oferece(cria()) == ComoDispatch(objeto)) << ParaUtf8(nome);
    }
}

class FormOferecidoTest : public HostWindowsTest {
  protected:
    Ref<IForm> form;
    // As the foreign host has it.
    Tardio Oferecido(const Ref<IForm> &qual) { return Tardio(Oferece(qual), Lado::Hospedeiro); }
};

TEST_F(FormOferecidoTest, Properties_AreTheForms)
{
    form = Carrega<frmLimitesDif>();
    const Tardio tardio = Oferecido(form);
    EXPECT_EQ(tardio.Chama<std::string>("Name"), "frmLimitesDif");
    EXPECT_EQ(tardio.Chama<std::string>("caption"), form->Caption());
    tardio.Escreve("Caption", std::string("Limites é"));
    EXPECT_EQ(form->Caption(), "Limites é");
    for (const char *medida : {"Left", "Top", "Width", "Height"}) {
        tardio.Escreve(medida, 4500.0);
        EXPECT_EQ(tardio.Chama<std::int32_t>(medida), 4500) << medida;
    }
    EXPECT_FALSE(tardio.Chama<bool>("Visible"));
    EXPECT_TRUE(tardio.Chama<bool>("Enabled"));
    tardio.Escreve("Enabled", false);
    EXPECT_FALSE(form->Enabled());
    EXPECT_EQ(tardio.Chama<std::int16_t>("WindowState"), 0);
    EXPECT_FALSE(tardio.Chama<bool>("MDIChild"));
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama<std::int32_t>("ScaleMode"); }), 438);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("MDIChild", true); }), 438);
    EXPECT_EQ(ClasseDe(Oferece(form)), "frmLimitesDif");
}

TEST_F(FormOferecidoTest, Controls_AreFoundByNamePositionAndInTurn)
{
    form = Carrega<frmLista>();
    const Tardio tardio = Oferecido(form);
    const auto controles = tardio.Chama<Variante>("Controls");
    const Tardio colecao(LeObjeto(controles.Bruta()), Lado::Hospedeiro);
    const auto quantos = static_cast<std::int32_t>(form->Controles().size());
    EXPECT_EQ(colecao.Chama<std::int32_t>("Count"), quantos);
    const auto nome = [](const Variante &controle) {
        return Tardio(LeObjeto(controle.Bruta()), Lado::Hospedeiro).Chama<std::string>("Name");
    };
    EXPECT_EQ(nome(colecao.Padrao(std::int32_t{0})), form->Controles()[0]->Nome());
    EXPECT_EQ(nome(colecao.Chama<Variante>("Item", std::string("ztcliente"))), "ztCliente");
    EXPECT_EQ(nome(tardio.Chama<Variante>("Controls", std::string("ztCliente"))), "ztCliente");
    EXPECT_EQ(nome(tardio.Chama<Variante>("ztCliente")), "ztCliente");
    EXPECT_EQ(NumeroDaFalha([&] { colecao.Padrao(quantos); }), 9);
    EXPECT_EQ(NumeroDaFalha([&] { colecao.Padrao(std::string("falta")); }), 438);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama<Variante>("falta"); }), 438);

    VARIANT enumerador{};
    DISPPARAMS nenhum{};
    ASSERT_EQ(LeObjeto(controles.Bruta())
                  ->Invoke(DISPID_NEWENUM, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &nenhum, &enumerador,
                           nullptr, nullptr),
              S_OK);
    Com<IEnumVARIANT> emTurno = Com<IUnknown>::Adota(V_UNKNOWN(&enumerador)).Como<IEnumVARIANT>();
    std::int32_t visitados = 0;
    for (Variante item; emTurno->Next(1, &item.Bruta(), nullptr) == S_OK; item.Limpa()) {
        EXPECT_EQ(nome(item), form->Controles()[static_cast<std::size_t>(visitados)]->Nome());
        ++visitados;
    }
    EXPECT_EQ(visitados, quantos);
}

TEST_F(FormOferecidoTest, ControlArray_IsFoundByItsIndex)
{
    auto falso = Novo<FormFalso>();
    for (std::int16_t indice : {std::int16_t{0}, std::int16_t{1}}) {
        Peca peca = Chamado<AjustesZtFrame>("fraDados");
        peca.Indice = indice;
        falso->Guarda(CriadoPeloHost<IztFrame>(falso, peca));
    }
    const Tardio tardio = Oferecido(falso);
    const Variante segundo = tardio.Chama<Variante>("fraDados", std::int32_t{1});
    EXPECT_EQ(Tardio(LeObjeto(segundo.Bruta()), Lado::Hospedeiro).Chama<std::int16_t>("Index"), 1);
    const Tardio arranjo(LeObjeto(tardio.Chama<Variante>("fraDados").Bruta()), Lado::Hospedeiro);
    EXPECT_EQ(arranjo.Chama<std::int32_t>("Count"), 2);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama<Variante>("fraDados", std::int32_t{2}); }), 340);
}

TEST_F(FormOferecidoTest, Combo_ThatTheHostFills_HasTheItemsAndItsDefaultValue)
{
    auto falso = Novo<FormFalso>();
    const auto combo = falso->Guarda(CriadoPeloHost<IztCombo>(falso, Chamado<AjustesZtCombo>("cboTipo")));
    const Tardio tardio(Oferece(combo), Lado::Hospedeiro);
    tardio.Chama("Limpa");
    tardio.Chama("AdicionaItem", std::string("Todos|T"));
    tardio.Chama("AdicionaItem", std::string("Radar Fotográfico|R"));
    EXPECT_EQ(tardio.Chama<std::int32_t>("NroItens"), 2);
    EXPECT_EQ(tardio.Chama<std::int16_t>("IndiceAtual"), -1);
    tardio.Escreve("Valor", std::string("R"));
    EXPECT_EQ(DeVariante<std::string>(tardio.Padrao().Bruta()), "R");
    EXPECT_EQ(tardio.Chama<std::string>("Texto"), "Radar Fotográfico");
    tardio.Escreve("ComboSomenteLeitura", true);
    EXPECT_TRUE(combo->ComboSomenteLeitura());
    EXPECT_EQ(combo->Valor(), "R");
}

TEST_F(FormOferecidoTest, List_TakesColumnsAndRowsOfATableByReference)
{
    auto falso = Novo<FormFalso>();
    const auto lista = falso->Guarda(CriadoPeloHost<IztList>(falso, Chamado<AjustesZtList>("ztlLista")));
    const Tardio tardio(Oferece(lista), Lado::Hospedeiro);
    const std::string vazio;
    tardio.Chama("AlteraPrimeiraColuna", std::int16_t{1}, Ausente{}, std::string("Código"), std::int16_t{1000},
                 std::int16_t{0}, vazio, true);
    tardio.Chama("AdicionaColuna", std::int16_t{2}, std::string("chave"), std::string("Descrição"), std::int16_t{1000},
                 std::int16_t{0}, vazio, true);
    std::array<SAFEARRAYBOUND, 2> limites{{{2, 1}, {3, 1}}};
    SAFEARRAY *tabela = SafeArrayCreate(VT_BSTR, 2, limites.data());
    for (LONG linha = 1; linha <= 3; ++linha) {
        for (LONG coluna = 1; coluna <= 2; ++coluna) {
            std::array<LONG, 2> lugar{coluna, linha};
            BSTR texto = NovoBstr("c" + std::to_string(coluna) + "l" + std::to_string(linha));
            SafeArrayPutElement(tabela, lugar.data(), texto);
            SysFreeString(texto);
        }
    }
    Variante porReferencia;
    V_VT(&porReferencia.Bruta()) = VT_ARRAY | VT_BSTR;
    V_ARRAY(&porReferencia.Bruta()) = tabela;
    tardio.Chama("CarregaItens", porReferencia);
    EXPECT_EQ(tardio.Chama<std::int32_t>("NroItens"), 3);
    EXPECT_EQ(tardio.Chama<std::string>("Celula", std::int32_t{3}, std::string("Código")), "c1l3");
    EXPECT_EQ(tardio.Chama<std::string>("Celula", std::int32_t{1}, std::string("chave")), "c2l1");
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama<std::string>("Celula", std::int32_t{4}, std::string("chave")); }), 9);
    EXPECT_EQ(tardio.Chama<std::int32_t>("ItemAtual"), -1);
    tardio.Escreve("ItemAtual", std::int32_t{2});
    EXPECT_EQ(tardio.Chama<std::string>("ColunaAtual", std::int16_t{1}), "c1l2");
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama("CarregaItens", std::string("nada")); }), 13);
    const Tardio item(LeObjeto(tardio.Chama<Variante>("ItemMenu", std::string("mnuZTLObjNovo")).Bruta()),
                      Lado::Hospedeiro);
    item.Escreve("Enabled", false);
    EXPECT_FALSE(lista->ItemMenu("mnuZTLObjNovo")->Enabled());
    tardio.Chama("Limpa");
    EXPECT_EQ(lista->NroItens(), 0);
}

TEST_F(FormOferecidoTest, AddressControl_HasTheAddressAsItsDefaultValue)
{
    auto falso = Novo<FormFalso>();
    const auto controle = falso->Guarda(CriadoPeloHost<IztEndereco>(falso, Chamado<AjustesZtEndereco>("ztEndereco1")));
    const Tardio endereco(LeObjeto(Tardio(Oferece(controle), Lado::Hospedeiro).Padrao().Bruta()), Lado::Hospedeiro);
    endereco.Chama("SetaEndereco", std::int32_t{88}, std::int32_t{4711}, std::int32_t{12}, std::string("casa"),
                   std::string("90000000"), std::string(), std::int32_t{0});
    EXPECT_EQ(endereco.Chama<std::int32_t>("CodLogradouro"), 4711);
    EXPECT_EQ(endereco.Chama<std::string>("Cep"), "90000000");
    EXPECT_EQ(endereco.Chama<std::string>("DescricaoEndereco"), ""); // nobody here knows the street's name
}

TEST_F(FormOferecidoTest, ApplicationObject_TellsNameTitleAndDescription)
{
    const Tardio app(Oferece(geral->Modulo()), Lado::Hospedeiro);
    EXPECT_EQ(app.Chama<std::string>("EXEName"), "ZTAVOREQUIP");
    EXPECT_EQ(app.Chama<std::string>("Title"), "Equipamentos");
    EXPECT_EQ(app.Chama<std::string>("FileDescription"), "Registro de Equipamentos");
}

TEST_F(FormOferecidoTest, Show_ByTheHost_MakesTheWindowInFrontOfTheMainForm)
{
    form = Carrega<frmLimitesDif>();
    const Tardio tardio = Oferecido(form);
    tardio.Chama("Show");
    const HWND janela = Janela(tardio.Chama<std::int32_t>("hWnd"));
    ASSERT_TRUE(IsWindow(janela));
    EXPECT_TRUE(IsWindowVisible(janela));
    EXPECT_TRUE(form->Visible());
    EXPECT_EQ(GetWindow(janela, GW_OWNER), principal.Manipulador());
    EXPECT_TRUE(IsWindowEnabled(principal.Manipulador()));
    tardio.Chama("Hide");
    EXPECT_FALSE(IsWindowVisible(janela));
    tardio.Escreve("Visible", true);
    EXPECT_TRUE(IsWindowVisible(janela));
    tardio.Chama("Unload");
    Bombeia();
    EXPECT_FALSE(IsWindow(janela));
    EXPECT_EQ(Plataforma()->NroForms(), 0);
}

TEST_F(FormOferecidoTest, Show_OfAFormThatWasUnloaded_IsFault364AndMakesNoWindow)
{
    form = Carrega<frmLimitesDif>();
    const Tardio tardio = Oferecido(form);
    Plataforma()->Descarrega(form);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama("Show"); }), 364);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("Visible", true); }), 364);
    EXPECT_EQ(tardio.Chama<std::int32_t>("hWnd"), 0);
    EXPECT_FALSE(form->Visible());
}

TEST_F(FormOferecidoTest, List_TakesMenuItemsOfTheHosts)
{
    auto falso = Novo<FormFalso>();
    const auto lista = falso->Guarda(CriadoPeloHost<IztList>(falso, Chamado<AjustesZtList>("ztlLista")));
    const Com<ObjetoAlheio> item = Alheio();
    item->Membro("Chave", De(std::string("mnuProprio")));
    item->Membro("Texto", De(std::string("Próprio")));
    item->Membro("TextoBotao", De(std::string()));
    item->Membro("Dica", De(std::string()));
    item->Membro("IniciaGrupo", De(true));
    const Tardio tardio(Oferece(lista), Lado::Hospedeiro);
    std::vector<Ref<::Objeto>> itens{RemotoDe<::Objeto>(ComoDispatch(item))};
    tardio.Chama("IncluiItensMenu", PorRef(itens));
    tardio.Chama("MenuHabilitado", std::string("mnuProprio"), false);
    EXPECT_FALSE(lista->ItemMenu("mnuProprio")->Enabled());
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama("MenuTexto", std::string("falta"), std::string("x")); }), 5);
}

TEST_F(FormOferecidoTest, HWnd_BeforeTheShow_IsOfTheWindowThatIsThenShown)
{
    form = Carrega<frmLimitesDif>();
    const Tardio tardio = Oferecido(form);
    const HWND janela = Janela(tardio.Chama<std::int32_t>("hWnd"));
    ASSERT_TRUE(IsWindow(janela));
    EXPECT_FALSE(IsWindowVisible(janela));
    EXPECT_FALSE(form->Visible());
    tardio.Chama("Show");
    EXPECT_TRUE(IsWindowVisible(janela));
    EXPECT_EQ(tardio.Chama<std::int32_t>("hWnd"), Numero(janela));
    Plataforma()->Descarrega(form);
    Bombeia();
    EXPECT_EQ(tardio.Chama<std::int32_t>("hWnd"), 0);
    EXPECT_FALSE(IsWindow(janela));
}

TEST_F(FormOferecidoTest, Show_Modal_KeepsTheOwnerBackUntilTheFormGoes)
{
    const JanelaDoHospedeiro outra(L"Outra");
    const Com<ObjetoAlheio> dono = Alheio();
    dono->Membro("hWnd", De(Numero(outra.Manipulador())));
    form = Carrega<frmLimitesDif>();
    const Tardio tardio = Oferecido(form);
    static Ref<IForm> emCurso;
    static std::vector<bool> vistos;
    static HWND quem;
    emCurso = form;
    vistos.clear();
    quem = outra.Manipulador();
    SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) CALLBACK {
        KillTimer(nullptr, id);
        const HWND janela = Janela(Tardio(Oferece(emCurso), Lado::Hospedeiro).Chama<std::int32_t>("hWnd"));
        vistos = {IsWindowVisible(janela) != FALSE, IsWindowEnabled(quem) != FALSE,
                  GetWindow(janela, GW_OWNER) == quem};
        Plataforma()->Descarrega(std::exchange(emCurso, nullptr));
    });
    tardio.Chama("Show", std::int16_t{1}, Objeto(dono));
    EXPECT_EQ(vistos, (std::vector<bool>{true, false, true}));
    EXPECT_TRUE(IsWindowEnabled(outra.Manipulador()));
    EXPECT_FALSE(form->Visible());
}

TEST_F(FormOferecidoTest, FrmParent_IsTheHostsObjectAndIsAskedToCloseWithTheForm)
{
    JanelaDoHospedeiro involucro(L"Involucro");
    const Com<ObjetoAlheio> parente = Alheio();
    parente->Membro("hWnd", De(Numero(involucro.Manipulador())));
    form = Carrega<frmLimitesDif>();
    const Tardio tardio = Oferecido(form);
    EXPECT_EQ(LeObjeto(tardio.Chama<Variante>("frmParent").Bruta()).Ponteiro(), nullptr);
    tardio.Escreve("frmParent", Objeto(parente));
    EXPECT_TRUE(LeObjeto(tardio.Chama<Variante>("frmParent").Bruta()) == ComoDispatch(parente));
    tardio.Chama("Show");
    geral->DefineTitulo(form, "Limites da Aferição");
    EXPECT_EQ(involucro.Titulo(), L"Limites da Aferi\u00E7\u00E3o");
    EXPECT_EQ(form->Caption(), "Limites Diferenciados");
    Plataforma()->Descarrega(form);
    Bombeia();
    EXPECT_EQ(involucro.Pedidos, 1);
}

TEST_F(FormOferecidoTest, FecharJanelasAtivas_AsksAWrappingWindowOnceAndAgainWhenItStayed)
{
    JanelaDoHospedeiro involucro(L"Involucro");
    const Com<ObjetoAlheio> parente = Alheio();
    parente->Membro("hWnd", De(Numero(involucro.Manipulador())));
    for (int vez = 1; vez <= 2; ++vez) {
        form = Carrega<frmLimitesDif>();
        Oferecido(form).Escreve("frmParent", Objeto(parente));
        geral->FecharJanelasAtivas();
        EXPECT_EQ(Plataforma()->NroForms(), 0);
        Bombeia();
        EXPECT_EQ(involucro.Pedidos, vez);
    }
}

TEST_F(FormOferecidoTest, FecharJanelasAtivas_WithTwoWrappingWindows_AsksEach)
{
    JanelaDoHospedeiro um(L"Um");
    JanelaDoHospedeiro outro(L"Outro");
    for (JanelaDoHospedeiro *janela : {&um, &outro}) {
        const Com<ObjetoAlheio> parente = Alheio();
        parente->Membro("hWnd", De(Numero(janela->Manipulador())));
        Oferecido(Carrega<frmLimitesDif>()).Escreve("frmParent", Objeto(parente));
    }
    geral->FecharJanelasAtivas();
    Bombeia();
    EXPECT_EQ(um.Pedidos, 1);
    EXPECT_EQ(outro.Pedidos, 1);
}

TEST_F(FormOferecidoTest, Title_WithALetterThatTheCodePageHasNot_LosesThatAlone)
{
    JanelaDoHospedeiro involucro(L"Involucro");
    const Com<ObjetoAlheio> parente = Alheio();
    parente->Membro("hWnd", De(Numero(involucro.Manipulador())));
    form = Carrega<frmLimitesDif>();
    Oferecido(form).Escreve("frmParent", Objeto(parente));
    geral->DefineTitulo(form, "Aferição 漢 A");
    const bool temTodas = GetACP() == CP_UTF8;
    EXPECT_EQ(involucro.Titulo(), temTodas ? L"Aferi\u00E7\u00E3o \u6F22 A" : L"Aferi\u00E7\u00E3o ? A");
}

TEST_F(FormOferecidoTest, FocusOrderAndState_AreAskedOfTheForm)
{
    const auto falso = FormNaTela();
    const Tardio tardio = Oferecido(falso);
    EXPECT_EQ(TextoDe(tardio.Chama<Variante>("ActiveControl").Bruta()), "DISPATCH:Nothing");
    const auto controle = falso->Guarda(CriadoPeloHost<ITextBox>(falso, Chamado<AjustesTextBox>("txtUm")));
    controle->SetFocus();
    EXPECT_TRUE(LeObjeto(tardio.Chama<Variante>("ActiveControl").Bruta()) == Oferece(controle));
    int focos = 0;
    std::vector<std::int16_t> ordens;
    const Conexao pediuFoco = falso->PediuFoco().liga([&] { ++focos; });
    const Conexao pediuOrdem = falso->PediuOrdem().liga([&](std::int16_t posicao) { ordens.push_back(posicao); });
    tardio.Chama("SetFocus");
    EXPECT_EQ(focos, 1);
    tardio.Chama("ZOrder");
    tardio.Chama("ZOrder", std::int16_t{1});
    EXPECT_EQ(ordens, (std::vector<std::int16_t>{0, 1}));
    tardio.Escreve("WindowState", JanelaMinimizada);
    EXPECT_EQ(falso->WindowState(), JanelaMinimizada);
    EXPECT_EQ(TextoDe(tardio.Chama<Variante>("WindowState").Bruta()), "I2:1");
    for (const auto &[medida, valor] :
         std::vector<std::pair<const char *, std::int32_t>>{{"Left", 15}, {"Top", 30}, {"Width", 45}, {"Height", 60}}) {
        tardio.Escreve(medida, valor);
    }
    EXPECT_EQ(falso->Left(), 15);
    EXPECT_EQ(falso->Top(), 30);
    EXPECT_EQ(falso->Width(), 45);
    EXPECT_EQ(falso->Height(), 60);
}

TEST_F(FormOferecidoTest, Show_WithTheOwnerByItsName_IsInFrontOfThat)
{
    const JanelaDoHospedeiro outra(L"Outra");
    const Com<ObjetoAlheio> dono = Alheio();
    dono->Membro("hWnd", De(Numero(outra.Manipulador())));
    form = Carrega<frmLimitesDif>();
    const Com<IDispatch> oferecido = Oferece(form);
    std::array<std::wstring, 2> nomes{L"Show", L"OwnerForm"};
    std::array<LPOLESTR, 2> brutos{nomes[0].data(), nomes[1].data()};
    std::array<DISPID, 2> numeros{};
    ASSERT_EQ(oferecido->GetIDsOfNames(IID_NULL, brutos.data(), 2, 0, numeros.data()), S_OK);
    Variante argumento = Objeto(dono);
    DISPPARAMS parametros{&argumento.Bruta(), &numeros[1], 1, 1};
    ASSERT_EQ(oferecido->Invoke(numeros[0], IID_NULL, 0, DISPATCH_METHOD, &parametros, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_TRUE(form->Visible());
    EXPECT_EQ(GetWindow(Janela(Oferecido(form).Chama<std::int32_t>("hWnd")), GW_OWNER), outra.Manipulador());
}

TEST_F(FormOferecidoTest, Show_WithAFormOfTheModulesAsOwner_IsInFrontOfItsWindow)
{
    const Ref<IForm> dona = Carrega<frmLimitesDif>();
    Oferecido(dona).Chama("Show");
    form = Carrega<frmLimitesDif>();
    Variante argumento;
    V_VT(&argumento.Bruta()) = VT_DISPATCH;
    V_DISPATCH(&argumento.Bruta()) = Oferece(dona).Solta();
    Oferecido(form).Chama("Show", std::int16_t{0}, argumento);
    const HWND janelaDaDona = Janela(Oferecido(dona).Chama<std::int32_t>("hWnd"));
    ASSERT_TRUE(IsWindow(janelaDaDona));
    EXPECT_EQ(GetWindow(Janela(Oferecido(form).Chama<std::int32_t>("hWnd")), GW_OWNER), janelaDaDona);
}

TEST_F(FormOferecidoTest, FrmParent_ThatIsTheMainForm_StaysWhenTheFormGoes)
{
    form = Carrega<frmLimitesDif>();
    Oferecido(form).Escreve("frmParent", Objeto(mdi));
    Plataforma()->Descarrega(form);
    Plataforma()->Descarrega(RemotoDe<IForm>(ComoDispatch(mdi)));
    Bombeia();
    EXPECT_EQ(principal.Pedidos, 0);
}

TEST_F(HostWindowsTest, Municipios_AreThoseOfTheLocalDatabase)
{
    std::int32_t linha = 0;
    const Com<ObjetoAlheio> cursor = Alheio();
    cursor->Membro("EOF", [&](const std::vector<VARIANT *> &) { return De(linha == 2); });
    cursor->Membro("MoveNext", [&](const std::vector<VARIANT *> &) {
        ++linha;
        return Variante();
    });
    cursor->Membro("Close");
    cursor->Membro("Fields", [&](const std::vector<VARIANT *> &argumentos) {
        const Com<ObjetoAlheio> campo = Alheio();
        const bool nome = TextoDe(*argumentos[0]) == "BSTR:NOME_MUNICIPIO";
        campo->Membro("Value", nome ? De(std::string(linha == 0 ? "Água Santa" : "Canoas")) : De(100 + linha));
        return Objeto(campo);
    });
    mdb->Membro("OpenRecordset", Objeto(cursor));
    const LogradourosWindows logradouros;
    const auto &municipios = logradouros.Municipios();
    ASSERT_EQ(municipios.size(), 2U);
    EXPECT_EQ(municipios[0].Codigo, 100);
    EXPECT_EQ(municipios[0].Nome, "Água Santa");
    EXPECT_EQ(municipios[1].Nome, "Canoas");
    EXPECT_EQ(diario.front(), "OpenRecordset MG BSTR:SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 "
                              "ORDER BY NOME_MUNICIPIO, I2:4, absent, absent");
    EXPECT_EQ(std::ranges::count(diario, "Close MG"), 1);
    linha = 1; // read anew: another session may have another database
    EXPECT_EQ(logradouros.Municipios().size(), 1U);
    EXPECT_EQ(std::ranges::count(diario, "Close MG"), 2);
}

TEST_F(HostWindowsTest, Municipios_ThatCannotBeRead_AreNoneUntilTheyCan)
{
    const LogradourosWindows logradouros;
    EXPECT_TRUE(logradouros.Municipios().empty());
}

TEST_F(HostWindowsTest, Procura_WithoutAClass_IsOfTheCodeThatIsTyped)
{
    const LogradourosWindows logradouros;
    const auto achados = logradouros.Procura(88, "4711", 20);
    ASSERT_EQ(achados.size(), 1U);
    EXPECT_EQ(achados[0].Codigo, 4711);
    EXPECT_EQ(achados[0].CodMunic, 88);
    EXPECT_EQ(achados[0].Nome, "");
    for (const char *nenhum : {"", "0", "-5", "12a", "Rua 12", "99999999999"}) {
        EXPECT_TRUE(logradouros.Procura(88, nenhum, 20).empty()) << nenhum;
    }
    EXPECT_EQ(logradouros.PorCodigo(4711)->Codigo, 4711);
    EXPECT_FALSE(logradouros.PorCodigo(0).has_value());
}

TEST_F(HostWindowsTest, Procura_WithAClassInTheTable_IsWhatThatFinds)
{
    const Com<ObjetoAlheio> rua = Alheio();
    rua->Membro("Codigo", De(12));
    rua->Membro("CodMunic", De(88));
    rua->Membro("Nome", De(std::string("Rua Bento")));
    rua->Membro("Bairro", De(std::string("Centro")));
    rua->Membro("Cep", De(std::string("90000010")));
    const Com<ObjetoAlheio> colecao = Alheio();
    colecao->Membro("Count", De(1));
    colecao->Membro("Item", Objeto(rua));
    const Com<ObjetoAlheio> ruas = Alheio();
    ruas->Membro("Procura", Objeto(colecao));
    ruas->Membro("PorCodigo", [&](const std::vector<VARIANT *> &argumentos) {
        return V_I4(argumentos[0]) == 12 ? Objeto(rua) : De(Ref<::Objeto>());
    });
    const ClasseRegistrada classe(ruas);
    Diz(L"Logradouros", classe.Identificador());
    const LogradourosWindows logradouros;
    const auto achados = logradouros.Procura(88, "bento", 20);
    ASSERT_EQ(achados.size(), 1U);
    EXPECT_EQ(achados[0].Descricao(15, ""), "Rua Bento, 15 - Centro");
    EXPECT_EQ(diario.front(), "Procura MG I4:88, BSTR:bento, I4:20");
    EXPECT_EQ(logradouros.PorCodigo(12)->Cep, "90000010");
    EXPECT_FALSE(logradouros.PorCodigo(13).has_value());
}

TEST_F(HostWindowsTest, Clients_WithoutAClass_AreTheSessionsOwn)
{
    const auto clientes = ClientesWindows::Oferecidos();
    ASSERT_EQ(clientes.size(), 1U);
    EXPECT_EQ(clientes[0].Nome, "PREFEITURA");
    EXPECT_EQ(clientes[0].Setores, (std::vector<std::string>{"CENTRAL"}));
    auto falso = Novo<FormFalso>();
    const auto seletor =
        falso->Guarda(CriadoPeloHost<IztClienteSetor>(falso, Chamado<AjustesZtClienteSetor>("ztCliente")));
    seletor->DefineCodCliente(7);
    EXPECT_EQ(seletor->Cliente(), "PREFEITURA");
}

TEST_F(HostWindowsTest, Clients_WithAClassInTheTable_AreThoseThatItLists)
{
    const Com<ObjetoAlheio> cliente = Alheio();
    cliente->Membro("Codigo", De(7));
    cliente->Membro("Nome", De(std::string("OUTRO ÓRGÃO")));
    cliente->Membro("Setores", De(std::vector<std::string>{"NORTE", "SUL"}));
    const Com<ObjetoAlheio> colecao = Alheio();
    colecao->Membro("Count", De(1));
    colecao->Membro("Item", Objeto(cliente));
    const Com<ObjetoAlheio> clientes = Alheio();
    clientes->Membro("Lista", Objeto(colecao));
    const ClasseRegistrada classe(clientes);
    Diz(L"Clientes", classe.Identificador());
    EXPECT_EQ(ClientesWindows::Oferecidos().at(0).Setores, (std::vector<std::string>{"NORTE", "SUL"}));
    EXPECT_EQ(ClientesWindows::NomeDo(7), "OUTRO ÓRGÃO");
    EXPECT_EQ(ClientesWindows::NomeDo(8), "PREFEITURA");
}

} // namespace
} // namespace nativo
