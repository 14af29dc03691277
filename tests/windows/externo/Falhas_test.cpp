#include "tests/windows/externo/CasoExterno.h"
#include "tests/windows/externo/ComponenteExterno.h"
#include "tests/windows/externo/Figuras.h"
#include "tests/windows/externo/Tabelas.h"

#include <algorithm>
#include <functional>
#include <map>

namespace nativo {
namespace {

// One fault of the component, in the words of both roads to it.
struct Caso {
    std::string Nome;
    FalhaExterna Falha;
    std::function<void(const ObjetoTardio &)> PorNome;
    std::function<HRESULT(IDispatch &)> PelaTabela;
};

struct TextoBstr {
    explicit TextoBstr(const char *texto) : Bstr(SysAllocString(Largo(texto).c_str())) {}
    TextoBstr(const TextoBstr &) = delete;
    TextoBstr &operator=(const TextoBstr &) = delete;
    ~TextoBstr() { SysFreeString(Bstr); }
    BSTR Bstr;
};

// What a client of the table is told.
FalhaExterna FalhaDaTabela(HRESULT resposta)
{
    FalhaExterna falha{NumeroDaResposta(resposta), "", ""};
    Contado<IErrorInfo> erro;
    if (GetErrorInfo(0, erro.Recebe()) == S_OK && erro) {
        BSTR texto = nullptr;
        erro->GetSource(&texto);
        falha.Fonte = Estreito(texto == nullptr ? L"" : texto);
        SysFreeString(texto);
        texto = nullptr;
        erro->GetDescription(&texto);
        falha.Descricao = Estreito(texto == nullptr ? L"" : texto);
        SysFreeString(texto);
    }
    return falha;
}

FalhaExterna Depreciado(const std::string &metodo)
{
    return {-1, "ZTAVOREQUIP.CVORPesqEquip", "AVISO: Método " + metodo + " depreciado"};
}

class FalhasTeste : public CasoExterno {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(componente.Registra(), S_OK);
        hospedeiro.SemCaixas();
    }
    void TearDown() override { EXPECT_EQ(componente.Desregistra(), S_OK); }

    // Both roads tell the same. The road of the table has the interface's rich errors.
    static void Confere(const ObjetoTardio &objeto, REFIID iid, const Caso &caso)
    {
        EXPECT_EQ(FalhaDo([&] { caso.PorNome(objeto); }), caso.Falha) << caso.Nome;
        const auto tabela = objeto.Objeto().Como<IDispatch>(iid);
        ASSERT_TRUE(tabela) << caso.Nome;
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(FalhaDaTabela(caso.PelaTabela(*tabela)), caso.Falha) << caso.Nome;
        const auto erros = objeto.Objeto().Como<ISupportErrorInfo>(IID_ISupportErrorInfo);
        ASSERT_TRUE(erros) << caso.Nome;
        EXPECT_EQ(erros->InterfaceSupportsErrorInfo(iid), S_OK) << caso.Nome;
    }
    ObjetoTardio Entrado()
    {
        ObjetoTardio geral = ComponenteExterno::Cria();
        hospedeiro.Entra(geral);
        return geral;
    }

    ComponenteExterno componente;
    HospedeiroExterno hospedeiro;
};

TEST_F(FalhasTeste, Shell_BeforeAnythingWasGiven_IsFault91WithTheGrownPath)
{
    const ObjetoTardio geral = ComponenteExterno::Cria();
    const std::string nadaFeito = "Variável de objeto não definida";
    const std::vector<Caso> casos = {
        {"Logoff",
         {91, "ZTAVOREQUIP < Geral.Logoff", nadaFeito},
         [](const ObjetoTardio &g) { g.Chama("Logoff"); },
         [](IDispatch &g) { return static_cast<TabelaGeral &>(g).Logoff(); }},
        {"ClickMenu",
         {91, "ZTAVOREQUIP < Geral.ClickMenu", nadaFeito},
         [](const ObjetoTardio &g) { g.Chama("ClickMenu", {"mnuModVOREquiptos"}); },
         [](IDispatch &g) {
             VARIANT_BOOL tratado = VARIANT_FALSE;
             return static_cast<TabelaGeral &>(g).ClickMenu(Var("mnuModVOREquiptos").Bruta(), &tratado);
         }},
        {"SistemaQMR",
         {91, "ZTAVOREQUIP", nadaFeito},
         [](const ObjetoTardio &g) { g.Chama("SistemaQMR"); },
         [](IDispatch &g) {
             BSTR sistema = nullptr;
             return static_cast<TabelaGeral &>(g).LeSistemaQMR(&sistema);
         }},
    };
    for (const Caso &caso : casos) {
        Confere(geral, ComponenteExterno::IidGeral, caso);
    }
    EXPECT_FALSE(geral.Chama("CEspecifica").Objeto());
    EXPECT_FALSE(geral.Chama("HabilitarItem", {"mnuModVOREquiptos"}).Verdade());
    geral.Chama("Encerra");
}

TEST_F(FalhasTeste, Deprecated_Minus1_AsItIs)
{
    const ObjetoTardio geral = Entrado();
    const ObjetoTardio especifica(geral.Chama("CEspecifica"));
    const ObjetoTardio pesquisa(especifica.Chama("CreateCVORPesqEquip"));
    IDispatch *nada = nullptr;
    const TextoBstr x("X");
    Confere(geral, ComponenteExterno::IidGeral,
            {"ObtemTransacao2",
             {-1, "ZTAVOREQUIP.Geral.ObtemTransacao2", "Método depreciado. Não utilizar."},
             [&](const ObjetoTardio &g) {
                 g.Chama("ObtemTransacao2", {"X", Referencia(nada)});
             },
             [&](IDispatch &g) { return static_cast<TabelaGeral &>(g).ObtemTransacao2(x.Bstr, &nada); }});
    Confere(especifica, ComponenteExterno::IidEspecifica,
            {"ImprimeAfericaoVigenteEquipto",
             {-1, "ZTAVOREQUIP.Especifica", "AVISO: Método ImprimeAfericaoVigenteEquipto depreciado"},
             [](const ObjetoTardio &e) { e.Chama("ImprimeAfericaoVigenteEquipto", {std::int32_t{1}}); },
             [](IDispatch &e) {
                 return static_cast<TabelaEspecifica &>(e).ImprimeAfericaoVigenteEquipto(1, 0, 0, nullptr);
             }});

    std::int32_t numero = 5;
    std::int16_t velocidade = 60;
    double dia = 46032;
    TextoBstr codigo("RF-01");
    TextoBstr modelo("");
    VARIANT_BOOL resposta = VARIANT_FALSE;
    auto *n = reinterpret_cast<long *>(&numero);
    const auto tres = [&] {
        return std::vector<Var>{Referencia(numero), Referencia(codigo.Bstr), Referencia(modelo.Bstr)};
    };
    const auto seis = [&] {
        auto args = tres();
        args.insert(args.end(), {Referencia(velocidade), Var("R"), Var(true)});
        return args;
    };
    using T = TabelaCVORPesqEquip;
    const std::vector<Caso> casos = {
        {"CarregaPesqEquip", Depreciado("CarregaPesqEquip"),
         [&](const ObjetoTardio &p) { p.Chama("CarregaPesqEquip", tres()); },
         [&](IDispatch &p) { return static_cast<T &>(p).CarregaPesqEquip(n, &codigo.Bstr, &modelo.Bstr, &resposta); }},
        {"CarregaPesqEquip2, opcionais ausentes", Depreciado("CarregaPesqEquip2"),
         [&](const ObjetoTardio &p) { p.Chama("CarregaPesqEquip2", tres()); },
         [&](IDispatch &p) {
             return static_cast<T &>(p).CarregaPesqEquip2(n, &codigo.Bstr, &modelo.Bstr, nullptr, nullptr, &resposta);
         }},
        {"CarregaPesqEquip3", Depreciado("CarregaPesqEquip3"),
         [&](const ObjetoTardio &p) { p.Chama("CarregaPesqEquip3", seis()); },
         [&](IDispatch &p) {
             return static_cast<T &>(p).CarregaPesqEquip3(n, &codigo.Bstr, &modelo.Bstr, &velocidade, nullptr,
                                                          VARIANT_TRUE, &resposta);
         }},
        {"BuscaEquipto", Depreciado("BuscaEquipto"), [&](const ObjetoTardio &p) { p.Chama("BuscaEquipto", seis()); },
         [&](IDispatch &p) {
             return static_cast<T &>(p).BuscaEquipto(n, &codigo.Bstr, &modelo.Bstr, &velocidade, nullptr, VARIANT_TRUE,
                                                     &resposta);
         }},
        {"ConsultaAfericaoVigente", Depreciado("ConsultaAfericaoVigente"),
         [&](const ObjetoTardio &p) {
             p.Chama("ConsultaAfericaoVigente", {std::int32_t{5}, Referencia(codigo.Bstr), Referencia(modelo.Bstr),
                                                 Referencia(dia), Var::Data(46032)});
         },
         [&](IDispatch &p) {
             return static_cast<T &>(p).ConsultaAfericaoVigente(5, &codigo.Bstr, &modelo.Bstr, &dia, 46032, &resposta);
         }},
    };
    for (const Caso &caso : casos) {
        Confere(pesquisa, ComponenteExterno::IidCVORPesqEquip, caso);
    }
    EXPECT_EQ(numero, 5);
    EXPECT_EQ(velocidade, 60);
    EXPECT_EQ(Estreito(codigo.Bstr), "RF-01");
    geral.Chama("Encerra");
}

TEST_F(FalhasTeste, HostsFault_ComesBackWithItsNumberTextAndTheGrownPath)
{
    const ObjetoTardio geral = Entrado();
    const ObjetoTardio consulta(ObjetoTardio(geral.Chama("CEspecifica")).Chama("CreateCVorEquip"));
    const TextoBstr codigo("rf-01");
    const auto falha = [](const std::string &cauda) {
        return FalhaExterna{Diario::NumeroOrdenado, Diario::FonteOrdenada + cauda, Diario::DescricaoOrdenada};
    };
    Confere(consulta, ComponenteExterno::IidCVorEquip,
            {"BuscaEquipamento", falha(" < CVorEquip.BuscaEquipamento"),
             [&](const ObjetoTardio &c) {
                 hospedeiro.Livro.FalhaNa(1);
                 c.Chama("BuscaEquipamento", {"rf-01"});
             },
             [&](IDispatch &c) {
                 hospedeiro.Livro.FalhaNa(1);
                 VARIANT_BOOL achou = VARIANT_FALSE;
                 return static_cast<TabelaCVorEquip &>(c).BuscaEquipamento(codigo.Bstr, nullptr, 0, &achou);
             }});
    Confere(geral, ComponenteExterno::IidGeral,
            {"TrataBD", falha(""),
             [&](const ObjetoTardio &g) {
                 g.Chama("Logoff");
                 hospedeiro.Livro.FalhaNa(1);
                 g.Chama("TrataBD");
             },
             [&](IDispatch &g) {
                 hospedeiro.Livro.FalhaNa(1);
                 IDispatch *trataBD = nullptr;
                 return static_cast<TabelaGeral &>(g).LeTrataBD(&trataBD);
             }});
    hospedeiro.Livro.FalhaNa(0);
    geral.Chama("Encerra");
}

TEST_F(FalhasTeste, ClassNotRegistered_Is429WithThePath)
{
    const ObjetoTardio geral = ComponenteExterno::Cria();
    hospedeiro.Classes.Retira("ZTK4Lib.CRelatorios");
    Confere(geral, ComponenteExterno::IidGeral,
            {"Parametros",
             {429, "ZTAVOREQUIP < Geral.Parametros", "Não foi possível criar o objeto"},
             [&](const ObjetoTardio &g) { hospedeiro.Prepara(g); },
             [&](IDispatch &g) {
                 IDispatch *nada = nullptr;
                 IDispatch *exe = hospedeiro.oAppEXE.Ponteiro();
                 return static_cast<TabelaGeral &>(g).Parametros(&nada, &nada, &nada, &nada, &nada, &exe);
             }});
    geral.Chama("Encerra");
}

TEST_F(FalhasTeste, Arguments_TooManyTooFewOrOfTheWrongType_TellWhichOne)
{
    const ObjetoTardio geral = Entrado();
    const ObjetoTardio especifica(geral.Chama("CEspecifica"));
    const ObjetoTardio consulta(especifica.Chama("CreateCVorEquip"));
    struct Pedido {
        const ObjetoTardio &Objeto;
        std::string Membro;
        std::vector<Var> Args;
        std::int32_t Numero;
        std::int32_t Argumento;
    };
    const Var nada(static_cast<IDispatch *>(nullptr));
    const std::vector<Pedido> pedidos = {
        {geral, "NaoHa", {}, 438, -1},
        {geral, "Logoff", {1.0}, 450, -1},
        {geral, "ClickMenu", {}, 450, -1},
        {geral, "Parametros", {nada, nada}, 450, -1},
        {consulta, "ImpCertificadoAfericaoEquipto", {std::int32_t{1}, "A"}, 450, -1},
        {consulta, "ImpCertificadoAfericaoEquipto", {"doze", "A", "x"}, 13, 0},
        {consulta, "ImpCertificadoAfericaoEquipto", {99999999999.0, "A", "x"}, 6, 0},
        {consulta, "ImpCertificadoAfericaoEquipto", {std::int32_t{1}, "A", "x", "talvez"}, 13, 3},
        {consulta, "BuscaEquipamento", {"RF-01", "R", "ontem"}, 13, 2},
        {especifica, "ImprimeAfericaoVigenteEquipto", {std::int32_t{1}, "x"}, 13, 1},
        {geral, "ObtemTransacao", {nada}, 13, 0},
    };
    for (const Pedido &pedido : pedidos) {
        const FalhaExterna falha = FalhaDo([&] { pedido.Objeto.Chama(pedido.Membro, pedido.Args); });
        EXPECT_EQ(falha.Numero, pedido.Numero) << pedido.Membro << ": " << falha.Texto();
        EXPECT_EQ(falha.Argumento, pedido.Argumento) << pedido.Membro << ": " << falha.Texto();
    }
    EXPECT_EQ(FalhaDo([&] { geral.Escreve("Depurar", "talvez"); }).Numero, 13);
    EXPECT_EQ(FalhaDo([&] { geral.Escreve("SistemaQMR", "X"); }).Numero, 438);
    geral.Chama("Encerra");
}

// Everything that a caller can get wrong, in every member.

struct Errado {
    const char *Nome;
    Var Valor;
};

std::vector<Errado> Errados()
{
    Var quantia;
    quantia.Bruta().vt = VT_CY;
    quantia.Bruta().cyVal.int64 = INT64_MAX;
    Var desconhecido;
    desconhecido.Bruta().vt = VT_UNKNOWN;
    Var perdida; // a reference to nothing
    perdida.Bruta().vt = VT_BYREF | VT_VARIANT;
    Var semTexto;
    semTexto.Bruta().vt = VT_BSTR;
    Var referenciaPerdida;
    referenciaPerdida.Bruta().vt = VT_BYREF | VT_BSTR;
    Var semVetor;
    semVetor.Bruta().vt = VT_ARRAY | VT_DISPATCH;
    Var tipoInexistente;
    tipoInexistente.Bruta().vt = 4000;
    return {{"vazio", Var()},
            {"nulo", Var::Nulo()},
            {"ausente", Var::Ausente()},
            {"texto enorme", Var(std::string(4'000'000, 'x'))},
            {"texto com fim no meio", Var(std::string_view("a\0b", 3))},
            {"texto sem texto", semTexto},
            {"duplo enorme", Var(1e300)},
            {"data fora do calendário", Var::Data(-1e9)},
            {"byte", Var(std::uint8_t{255})},
            {"quantia", quantia},
            {"Nothing", Var(static_cast<IDispatch *>(nullptr))},
            {"desconhecido", desconhecido},
            {"vetor de bytes", Var::Bytes("abc")},
            {"vetor sem vetor", semVetor},
            {"referência a nada", perdida},
            {"referência a texto nenhum", referenciaPerdida},
            {"tipo que não há", tipoInexistente}};
}

struct MembroConhecido {
    const char *Nome;
    std::size_t Argumentos;
    bool Escrevivel = false;
};

const std::vector<MembroConhecido> MembrosGeral = {{"MDB", 0, true},
                                                   {"Depurar", 0, true},
                                                   {"InstanciarFormsClickMenu", 0, true},
                                                   {"PossuiJanelaEnviaRecebe", 0, true},
                                                   {"ActBar", 0, true},
                                                   {"Modulo", 0},
                                                   {"RegistraAM", 1},
                                                   {"DesregistraAM", 1},
                                                   {"Parametros", 6},
                                                   {"Logon", 3},
                                                   {"Logoff", 0},
                                                   {"FecharJanelasAtivas", 0},
                                                   {"ClickMenu", 1},
                                                   {"CEspecifica", 0},
                                                   {"HabilitarItem", 1},
                                                   {"cGlobal", 0, true},
                                                   {"TrataBD", 0},
                                                   {"UsandoModuloQMRauxiliar", 0},
                                                   {"ObjInterface", 0, true},
                                                   {"SistemaQMR", 0},
                                                   {"VersaoSistemaQMR", 0},
                                                   {"QMRModuloID", 0},
                                                   {"QMRVersaoModulo", 0},
                                                   {"ObtemTransacao", 1},
                                                   {"ObtemTransacao2", 2},
                                                   {"ObtemTransacao3", 2}};
const std::vector<MembroConhecido> MembrosEspecifica = {{"Inicializa", 1},
                                                        {"ClickMenu", 1},
                                                        {"HabilitarItem", 1},
                                                        {"HabilitarMenu", 0},
                                                        {"Menu", 1},
                                                        {"MenuAuxiliar", 1},
                                                        {"CreateCVORPesqEquip", 0},
                                                        {"CreateCVorEquip", 0},
                                                        {"ImprimeAfericaoVigenteEquipto", 4}};
// The selection is left out: it opens a window whatever it is given.
const std::vector<MembroConhecido> MembrosCVorEquip = {
    {"NroIntEquip", 0},    {"Modelo", 0},           {"Codigo", 0},
    {"VelocPerm", 0},      {"NroInmetro", 0},       {"MarcaInmetro", 0},
    {"DtVerifInmetro", 0}, {"BuscaEquipamento", 3}, {"ImpCertificadoAfericaoEquipto", 4},
    {"LimpaArqTemp", 0}};
const std::vector<MembroConhecido> MembrosCVORPesqEquip = {{"CarregaPesqEquip", 3},
                                                           {"CarregaPesqEquip2", 5},
                                                           {"CarregaPesqEquip3", 6},
                                                           {"BuscaEquipto", 6},
                                                           {"ConsultaAfericaoVigente", 5}};

// Counts what calls end in; prints it as a table.
class Contagem {
  public:
    void Chama(const ObjetoTardio &objeto, const std::string &membro, WORD como, const std::vector<Var> &args)
    {
        ++m_Chamadas;
        try {
            objeto.Pede(membro, como, args);
            ++m_PorNumero[0];
        } catch (const FalhaExterna &falha) {
            ++m_PorNumero[falha.Numero];
        }
    }
    std::int32_t Chamadas() const { return m_Chamadas; }
    const std::map<std::int32_t, std::int32_t> &PorNumero() const { return m_PorNumero; }
    std::string Tabela(const std::string &titulo) const
    {
        std::string tabela = titulo + "\t" + std::to_string(m_Chamadas);
        for (const auto &[numero, quantas] : m_PorNumero) {
            tabela +=
                "\t" + (numero == 0 ? std::string("feitas") : std::to_string(numero)) + ": " + std::to_string(quantas);
        }
        return tabela + "\n";
    }

  private:
    std::int32_t m_Chamadas = 0;
    std::map<std::int32_t, std::int32_t> m_PorNumero;
};

TEST_F(FalhasTeste, EveryMember_WithEverythingWrong_AnswersOrTellsAFault_AndGoesOn)
{
    const ObjetoTardio geral = Entrado();
    const ObjetoTardio especifica(geral.Chama("CEspecifica"));
    struct Classe {
        const char *Nome;
        ObjetoTardio Objeto;
        const std::vector<MembroConhecido> &Membros;
    };
    const std::vector<Classe> classes = {
        {"Geral", geral, MembrosGeral},
        {"Especifica", especifica, MembrosEspecifica},
        {"CVorEquip", ObjetoTardio(especifica.Chama("CreateCVorEquip")), MembrosCVorEquip},
        {"CVORPesqEquip", ObjetoTardio(especifica.Chama("CreateCVORPesqEquip")), MembrosCVORPesqEquip}};
    const std::vector<Errado> errados = Errados();
    // The numbers that are promised: the platform's own, the deprecated ones' and none else.
    const std::vector<std::int32_t> prometidos = {-1,  0,   5,   6,   7,   9,   13,  91, 94,
                                                  424, 429, 438, 446, 448, 449, 450, 458};
    std::string tabela;
    for (const Classe &classe : classes) {
        Contagem contagem;
        for (const MembroConhecido &membro : classe.Membros) {
            const WORD como = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
            for (std::size_t quantos = 0; quantos <= membro.Argumentos + 2; ++quantos) {
                contagem.Chama(classe.Objeto, membro.Nome, como, std::vector<Var>(quantos, Var("x")));
            }
            for (const Errado &errado : errados) {
                contagem.Chama(classe.Objeto, membro.Nome, como, std::vector<Var>(membro.Argumentos, errado.Valor));
                for (std::size_t qual = 0; qual < membro.Argumentos; ++qual) {
                    std::vector<Var> args(membro.Argumentos, Var("7"));
                    args[qual] = errado.Valor;
                    contagem.Chama(classe.Objeto, membro.Nome, como, args);
                }
                contagem.Chama(classe.Objeto, membro.Nome, DISPATCH_PROPERTYPUT, {errado.Valor});
                contagem.Chama(classe.Objeto, membro.Nome, DISPATCH_PROPERTYPUTREF, {errado.Valor});
            }
        }
        for (const auto &[numero, quantas] : contagem.PorNumero()) {
            EXPECT_NE(std::find(prometidos.begin(), prometidos.end(), numero), prometidos.end())
                << classe.Nome << ": " << numero << " em " << quantas << " chamadas";
        }
        tabela += contagem.Tabela("argumentos errados\t" + std::string(classe.Nome));
    }
    Publica("argumentos.tsv", tabela);
    // The module still does its work.
    hospedeiro.Entra(geral);
    EXPECT_TRUE(ObjetoTardio(ObjetoTardio(geral.Chama("CEspecifica")).Chama("CreateCVorEquip"))
                    .Chama("BuscaEquipamento", {"rf-01"})
                    .Verdade());
    geral.Chama("Encerra");
}

TEST_F(FalhasTeste, Host_WhoseCallsFailInTurn_IsToldItsOwnFaultOrNone)
{
    // What another module does without windows, and what has to come of it when nothing fails.
    struct Estrada {
        const char *Nome;
        std::function<void(const ObjetoTardio &geral)> Percorre;
    };
    const auto consulta = [](const ObjetoTardio &geral) {
        return ObjetoTardio(ObjetoTardio(geral.Chama("CEspecifica")).Chama("CreateCVorEquip"));
    };
    const std::vector<Estrada> estradas = {
        {"entrada e ferramentas",
         [&](const ObjetoTardio &geral) {
             hospedeiro.Entra(geral);
             geral.Chama("HabilitarItem", {"mnuModVOREquiptos"});
             geral.Chama("TrataBD");
             geral.Chama("MDB");
             geral.Chama("Logoff");
         }},
        {"busca com aferição",
         [&](const ObjetoTardio &geral) {
             hospedeiro.Entra(geral);
             consulta(geral).Chama("BuscaEquipamento", {"rf-01", "R", Var::Data(46100)});
             geral.Chama("Logoff");
         }},
        {"certificado",
         [&](const ObjetoTardio &geral) {
             hospedeiro.Entra(geral);
             const ObjetoTardio certificado = consulta(geral);
             certificado.Chama("ImpCertificadoAfericaoEquipto", {std::int32_t{12}, "A1", "Fulano"});
             certificado.Chama("LimpaArqTemp");
             geral.Chama("Logoff");
         }},
    };
    std::string tabela;
    for (const Estrada &estrada : estradas) {
        std::int32_t vezes = 0;
        std::int32_t contadas = 0;
        std::int32_t mostradas = 0;
        bool falhou = true;
        while (falhou && vezes < 500) {
            ++vezes;
            hospedeiro.Livro.Limpa();
            const ObjetoTardio geral = ComponenteExterno::Cria();
            hospedeiro.Livro.FalhaNa(vezes);
            const FalhaExterna falha = FalhaDo([&] { estrada.Percorre(geral); });
            falhou = hospedeiro.Livro.Falhou();
            hospedeiro.Livro.FalhaNa(0);
            if (falha.Numero != 0) {
                ++contadas;
                EXPECT_TRUE(falhou) << falha.Texto();
                EXPECT_EQ(falha.Numero, Diario::NumeroOrdenado) << estrada.Nome << " " << vezes << falha.Texto();
                EXPECT_EQ(falha.Fonte.rfind(Diario::FonteOrdenada, 0), 0U) << falha.Texto();
                EXPECT_EQ(falha.Descricao, Diario::DescricaoOrdenada);
            }
            mostradas += static_cast<std::int32_t>(hospedeiro.Livro.Que("CMensagem.ExibeErro").size());
            geral.Chama("Encerra");
        }
        EXPECT_FALSE(falhou) << estrada.Nome;
        EXPECT_GT(contadas, 0) << estrada.Nome;
        tabela += "hospedeiro que falha\t" + std::string(estrada.Nome) + "\t" + std::to_string(vezes - 1) +
                  "\tcontadas: " + std::to_string(contadas) + "\tmostradas: " + std::to_string(mostradas) + "\n";
    }
    Publica("falhas.tsv", tabela);
}

} // namespace
} // namespace nativo
