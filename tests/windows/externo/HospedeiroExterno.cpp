#include "tests/windows/externo/HospedeiroExterno.h"

#include <cstdio>
#include <memory>

namespace nativo {

namespace {

constexpr std::int32_t TwipsPorPonto = 15;
constexpr std::int32_t CodCliente = 1;

const std::vector<std::pair<std::int32_t, std::string>> &Municipios()
{
    static const std::vector<std::pair<std::int32_t, std::string>> municipios = {
        {4304606, "Canoas"}, {4305108, "Caxias do Sul"}, {4314902, "Porto Alegre"}};
    return municipios;
}

// Number written behind a piece of a statement.
std::string Depois(const std::string &sql, const std::string &peca, char fim)
{
    const std::size_t inicio = sql.find(peca);
    if (inicio == std::string::npos) {
        return {};
    }
    const std::size_t primeiro = inicio + peca.size();
    return sql.substr(primeiro, sql.find(fim, primeiro) - primeiro);
}

std::string Le(const std::string &caminho)
{
    std::FILE *arquivo = _wfopen(Largo(caminho).c_str(), L"rb");
    if (arquivo == nullptr) {
        throw FalhaExterna{53, "HOSPEDEIRO", "sem o arquivo " + caminho};
    }
    std::string conteudo;
    char pedaco[4096];
    for (std::size_t lidos = 0; (lidos = std::fread(pedaco, 1, sizeof pedaco, arquivo)) > 0;) {
        conteudo.append(pedaco, lidos);
    }
    std::fclose(arquivo);
    return conteudo;
}

std::string DoisDigitos(std::int32_t valor)
{
    return {static_cast<char>('0' + valor / 10 % 10), static_cast<char>('0' + valor % 10)};
}

// Fills a combo of the component as a program of another language does.
void Enche(const ObjetoTardio &combo, const std::vector<std::string> &itens, bool escolhePrimeiro)
{
    combo.Chama("Limpa");
    for (const std::string &item : itens) {
        combo.Chama("AdicionaItem", {item});
    }
    if (escolhePrimeiro) {
        combo.Escreve("IndiceAtual", std::int16_t{0});
    }
}

} // namespace

HospedeiroExterno::HospedeiroExterno(bool semBiblioteca)
{
    wchar_t temporaria[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temporaria);
    m_Pasta = std::wstring(temporaria) + L"hospedeiro-externo-" + std::to_wstring(GetCurrentProcessId()) + L"\\";
    CreateDirectoryW(m_Pasta.c_str(), nullptr);
    for (const wchar_t *layout : {L"RADAR.LAY", L"LOMBADA.LAY"}) {
        CloseHandle(CreateFileW((m_Pasta + layout).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }

    WNDCLASSW classe = {};
    classe.lpfnWndProc = DefWindowProcW;
    classe.hInstance = GetModuleHandleW(nullptr);
    classe.lpszClassName = ClasseDaJanela;
    classe.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    classe.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    RegisterClassW(&classe);
    m_Janela = CreateWindowExW(0, ClasseDaJanela, Largo(Titulo).c_str(), WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20, 20,
                               1100, 820, nullptr, nullptr, classe.hInstance, nullptr);
    ShowWindow(m_Janela, SW_SHOW);
    SetForegroundWindow(m_Janela);

    FazObjetos();
    FazClasses(semBiblioteca);
}

HospedeiroExterno::~HospedeiroExterno()
{
    DestroyWindow(m_Janela);
    WIN32_FIND_DATAW achado;
    const HANDLE busca = FindFirstFileW((m_Pasta + L"*").c_str(), &achado);
    for (BOOL ha = busca != INVALID_HANDLE_VALUE; ha != FALSE; ha = FindNextFileW(busca, &achado)) {
        DeleteFileW((m_Pasta + achado.cFileName).c_str());
    }
    FindClose(busca);
    RemoveDirectoryW(m_Pasta.c_str());
}

void HospedeiroExterno::FazObjetos()
{
    oAppEXE = ObjetoExterno::Novo("CAppEXE", Livro);
    oAppEXE->Tem("Title", Titulo).Tem("Path", "C:\\Fiscaliza").Tem("ProductName", "Fiscalização");

    objSCA = ObjetoExterno::Novo("CSCA", Livro);
    objSCA->Faz("Logado", [this](const ChamadaRecebida &) { return Var(Logado); });
    objSCA->Faz("PossuiPerm2", [this](const ChamadaRecebida &chamada) {
        return Var(Permite && chamada.Texto(0) == "NAB" && chamada.Texto(1) == "VOR-EQP-CS");
    });

    objMTM = ObjetoExterno::Novo("CMTM", Livro);
    objMTM->Faz("CreateQMR", [this](const ChamadaRecebida &) { return Var(FazQMR()); });
    objMTM->Tem("ClienteLogado", ServicosExternos::Cliente).Tem("SetorLogado", ServicosExternos::Setor);
    objMTM->Faz("ObtemGateway", [this](const ChamadaRecebida &) { return Var(Servicos.Gateway()); });

    cGlobal = ObjetoExterno::Novo("CAutoModulos", Livro);
    cGlobal->Aceita("MontaEstruturaMenus").Aceita("gsubSetaAutoModuloAtivo");

    ObjInterface = ObjetoExterno::Novo("CInterface", Livro);
    ObjInterface->Faz("MostraJanela", [this](const ChamadaRecebida &chamada) {
        MostraJanela(chamada);
        return Var();
    });
    ObjInterface->Faz("pTrataBD", [this](const ChamadaRecebida &) { return Var(FazTrataBD()); });

    FormMDI = ObjetoExterno::Novo("frmPrincipal", Livro);
    const auto lado = [this](LONG RECT::*qual, bool cliente, LONG RECT::*menos) {
        return [this, qual, cliente, menos](const ChamadaRecebida &) {
            RECT area = {};
            (cliente ? GetClientRect : GetWindowRect)(m_Janela, &area);
            return Var(static_cast<std::int32_t>(area.*qual - (menos != nullptr ? area.*menos : 0)) * TwipsPorPonto);
        };
    };
    FormMDI->Tem("AutoShowChildren", true).Tem("PossuiJanelaEnviaRecebe", true);
    FormMDI->Faz("objZTP", [this](const ChamadaRecebida &) { return Var(ObjetoExterno::Novo("CZTP", Livro)); });
    FormMDI->Faz("hWnd", [this](const ChamadaRecebida &) {
        return Var(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(m_Janela)));
    });
    FormMDI->Faz("ScaleWidth", lado(&RECT::right, true, nullptr))
        .Faz("ScaleHeight", lado(&RECT::bottom, true, nullptr));
    FormMDI->Faz("Left", lado(&RECT::left, false, nullptr)).Faz("Top", lado(&RECT::top, false, nullptr));
    FormMDI->Faz("Width", lado(&RECT::right, false, &RECT::left));
    FormMDI->Faz("Height", lado(&RECT::bottom, false, &RECT::top));
    FormMDI->Aceita("MsgEnviaRecebe").Aceita("AbrirEnviaRecebe").Aceita("FecharEnviaRecebe");

    MenuDestino = ObjetoExterno::Novo("ActiveBar", Livro);
    MenuDestino->Aceita("Bands");
    MDB = FazMDB();
}

Contado<ObjetoExterno> HospedeiroExterno::FazQMR()
{
    auto qmr = ObjetoExterno::Novo("CQMR", Livro);
    qmr->Faz("CreateNewTrataBD", [this](const ChamadaRecebida &) { return Var(FazTrataBD()); });
    qmr->Faz("Sessao", [this](const ChamadaRecebida &) { return Var(objMTM); });
    return qmr;
}

Contado<ObjetoExterno> HospedeiroExterno::FazTrataBD()
{
    auto trataBD = ObjetoExterno::Novo("CTrataBD", Livro);
    trataBD->Faz("pQMR", [this](const ChamadaRecebida &) { return Var(FazQMR()); });
    trataBD->Faz("AbreZTBanco", [this](const ChamadaRecebida &) { return Var(MDB); });
    trataBD->Aceita("InicializaInfoSistema").Aceita("TabelaAlterada");
    return trataBD;
}

Contado<ObjetoExterno> HospedeiroExterno::FazMDB()
{
    auto mdb = ObjetoExterno::Novo("Database", Livro);
    mdb->Tem("Name", "C:\\Fiscaliza\\local.mdb");
    mdb->Faz("OpenRecordset", [this](const ChamadaRecebida &chamada) {
        if (chamada.Inteiro(1) != 4 || chamada.Tem(2) || chamada.Tem(3)) {
            throw FalhaExterna{3001, "Database", "argumento inválido: " + chamada.Retrato()};
        }
        return AbreConsulta(chamada.Texto(0));
    });
    return mdb;
}

Var HospedeiroExterno::AbreConsulta(const std::string &sql)
{
    using Linha = std::vector<std::pair<std::string, Var>>;
    struct Cursor {
        std::vector<Linha> Linhas;
        std::size_t Atual = 0;
    };
    const auto dados = std::make_shared<Cursor>();
    if (sql == "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO") {
        for (const auto &[codigo, nome] : Municipios()) {
            dados->Linhas.push_back({{"COD_MUNIC", codigo}, {"NOME_MUNICIPIO", nome}});
        }
    } else if (const std::string codigo = Depois(sql, "SELECT * FROM Municipio WHERE COD_MUNIC = ", '\0');
               !codigo.empty()) {
        for (const auto &[numero, nome] : Municipios()) {
            if (std::to_string(numero) == codigo) {
                dados->Linhas.push_back({{"COD_MUNIC", numero}, {"NOME_MUNICIPIO", nome}});
            }
        }
    } else if (sql.find("FROM VOREQUIPTO") != std::string::npos) {
        const std::int32_t numero =
            Servicos.NumeroDoCodigo(Depois(sql, "ClienteInc = '", '\''), Depois(sql, "UCASE(Codigo) = '", '\''),
                                    Depois(sql, "TipoEquip = '", '\''));
        if (numero > 0) {
            dados->Linhas.push_back({{"NroIntEquip", numero}});
        }
    } else {
        throw FalhaExterna{3075, "Database", "Erro de sintaxe: " + sql};
    }

    auto cursor = ObjetoExterno::Novo("Recordset", Livro);
    cursor->Faz("EOF", [dados](const ChamadaRecebida &) { return Var(dados->Atual >= dados->Linhas.size()); });
    cursor->Faz("RecordCount",
                [dados](const ChamadaRecebida &) { return Var(static_cast<std::int32_t>(dados->Linhas.size())); });
    cursor->Faz("MoveNext", [dados](const ChamadaRecebida &) {
        ++dados->Atual;
        return Var();
    });
    cursor->Aceita("Close");
    cursor->Faz("Fields", [this, dados](const ChamadaRecebida &chamada) {
        if (dados->Atual >= dados->Linhas.size()) {
            throw FalhaExterna{3021, "Recordset", "Nenhum registro atual."};
        }
        for (const auto &[nome, valor] : dados->Linhas[dados->Atual]) {
            if (nome == chamada.Texto(0)) {
                auto campo = ObjetoExterno::Novo("Field", Livro);
                campo->Tem("Value", valor).Padrao().Calado();
                return Var(campo);
            }
        }
        throw FalhaExterna{3265, "Recordset", "Item não encontrado nesta coleção."};
    });
    return Var(cursor);
}

void HospedeiroExterno::Caixa(const std::string &texto, const std::string &titulo, UINT estilo)
{
    if (m_ComCaixas) {
        MessageBoxW(GetActiveWindow(), Largo(texto).c_str(), Largo(titulo).c_str(), MB_OK | estilo);
    }
}

Contado<ObjetoExterno> HospedeiroExterno::FazMensagem()
{
    auto mensagem = ObjetoExterno::Novo("CMensagem", Livro);
    const auto titulo = std::make_shared<std::string>();
    mensagem->Faz("Titulo", [titulo](const ChamadaRecebida &chamada) {
        if (chamada.Escreve()) {
            *titulo = chamada.Texto(0);
        }
        return Var(*titulo);
    });
    mensagem->Faz("FormataData", [](const ChamadaRecebida &chamada) {
        const std::int32_t data = chamada.Inteiro(0);
        return data == 0 ? Var("")
                         : Var(DoisDigitos(data % 100) + "/" + DoisDigitos(data / 100 % 100) + "/" +
                               DoisDigitos(data / 1000000) + DoisDigitos(data / 10000 % 100));
    });
    mensagem->Faz("FormataHora", [](const ChamadaRecebida &chamada) {
        const std::int32_t hora = chamada.Inteiro(0);
        return Var(DoisDigitos(hora / 10000) + ":" + DoisDigitos(hora / 100 % 100) + ":" + DoisDigitos(hora % 100));
    });
    mensagem->Faz("ExibeMensagem", [this, titulo](const ChamadaRecebida &chamada) {
        Caixa(chamada.Texto(0), *titulo, MB_ICONINFORMATION);
        if (const ObjetoTardio controle(chamada.Objeto(1)); controle) {
            controle.Chama("SetFocus");
        }
        return Var();
    });
    mensagem->Faz("ExibeErro", [this](const ChamadaRecebida &chamada) {
        Caixa(chamada.Texto(0) + "\n" + chamada.Texto(1) + "\n" + chamada.Texto(2) + "\n" + chamada.Texto(3),
              chamada.Texto(4), MB_ICONERROR);
        return Var();
    });
    mensagem->Faz("PreparaDetalhes", [](const ChamadaRecebida &chamada) {
        // Whatever holds a value is locked, as far as it knows how.
        const ObjetoTardio controles(ObjetoTardio(chamada.Objeto(0)).Chama("Controls"));
        const std::int32_t quantos = controles.Chama("Count").Inteiro();
        for (std::int32_t posicao = 0; posicao < quantos; ++posicao) {
            const ObjetoTardio controle(controles.Chama("Item", {posicao}));
            for (const char *membro : {"Locked", "ReadOnly", "ComboSomenteLeitura"}) {
                try {
                    controle.Escreve(membro, true);
                } catch (const FalhaExterna &) { // it has no such member
                }
            }
        }
        return Var();
    });
    mensagem->Faz("TextoParaBytes", [](const ChamadaRecebida &chamada) { return Var::Bytes(chamada.Texto(0)); });
    return mensagem;
}

Contado<ObjetoExterno> HospedeiroExterno::FazDadosVor()
{
    auto dadosVor = ObjetoExterno::Novo("CDadosVor", Livro);
    dadosVor->Aceita("Inicializa").Aceita("Finaliza");
    dadosVor->Faz("ObtemOrgao", [this](const ChamadaRecebida &) {
        auto orgao = ObjetoExterno::Novo("COrgao", Livro);
        orgao->Tem("CodCliente", CodCliente);
        return Var(orgao);
    });
    dadosVor->Faz("DirLayouts", [this](const ChamadaRecebida &) { return Var(Estreito(m_Pasta)); });
    dadosVor->Faz("PreencheRejeicoes", [](const ChamadaRecebida &chamada) {
        Enche(chamada.Objeto(0), {"Velocidade no limite|5", "Imagem sem nitidez|6"}, false);
        return Var();
    });
    dadosVor->Faz("PreencheTipoAgente", [](const ChamadaRecebida &chamada) {
        std::vector<std::string> itens = {"Fixo|1", "Estático|2", "Portátil|3"};
        if (chamada.Verdade(2)) {
            itens.insert(itens.begin(), "Todos|0");
        }
        Enche(chamada.Objeto(0), itens, chamada.Verdade(3));
        return Var();
    });
    dadosVor->Faz("PreencheTipoEquip", [](const ChamadaRecebida &chamada) {
        std::vector<std::string> itens = {"Etilômetro|E", "Luxímetro|U"};
        if (chamada.Verdade(2)) {
            itens = {"Lombada|L", "Pardal|P", "Radar Fotográfico|R"};
        }
        if (chamada.Verdade(3)) {
            itens.insert(itens.begin(), "Todos|T");
        }
        Enche(chamada.Objeto(0), itens, chamada.Verdade(4));
        return Var();
    });
    dadosVor->Faz("EnviaDocumento", [this](const ChamadaRecebida &chamada) {
        chamada.Devolve(1, static_cast<double>(Servicos.GuardaDocumento(Le(chamada.Texto(0)))));
        return Var(true);
    });
    dadosVor->Faz("RecebeDocumento", [this](const ChamadaRecebida &chamada) {
        const auto documento = Servicos.Documentos().find(chamada.Inteiro(0));
        if (documento == Servicos.Documentos().end()) {
            return Var(false);
        }
        chamada.Devolve(1, Var::Bytes(documento->second));
        return Var(true);
    });
    return dadosVor;
}

Contado<ObjetoExterno> HospedeiroExterno::FazVisor()
{
    auto visor = ObjetoExterno::Novo("DocumentoPDF", Livro);
    const auto caminho = std::make_shared<std::string>();
    visor->Faz("ArquivoPDF", [caminho](const ChamadaRecebida &chamada) {
        if (chamada.Escreve()) {
            *caminho = chamada.Texto(0);
        }
        return Var(*caminho);
    });
    visor->Faz("Mostra", [this, caminho](const ChamadaRecebida &) {
        Livro.Conta("documento mostrado: " + Le(*caminho));
        return Var(true);
    });
    return visor;
}

Contado<ObjetoExterno> HospedeiroExterno::FazDiretorios()
{
    auto diretorios = ObjetoExterno::Novo("CDiretorios", Livro);
    diretorios->Tem("ObtemDiretorio", Estreito(m_Pasta));
    return diretorios;
}

Contado<ObjetoExterno> HospedeiroExterno::FazGlobal()
{
    auto global = ObjetoExterno::Novo("CGlobalVor", Livro);
    global->Aceita("InicializaSessao");
    global->Faz("ObtemCredencial", [this](const ChamadaRecebida &) {
        auto credencial = ObjetoExterno::Novo("CCredencial", Livro);
        credencial->Tem("Credencial", std::int32_t{4321}).Tem("CodMunic", std::int32_t{0});
        return Var(credencial);
    });
    return global;
}

Contado<ObjetoExterno> HospedeiroExterno::FazLogradouros()
{
    const auto rua = [this] {
        auto nova = ObjetoExterno::Novo("CLogradouro", Livro);
        nova->Tem("Codigo", std::int32_t{77}).Tem("CodMunic", std::int32_t{4314902}).Tem("Nome", "Rua Bento Gonçalves");
        nova->Tem("Bairro", "Centro").Tem("Cep", "90010020").Calado();
        return nova;
    };
    auto ruas = ObjetoExterno::Novo("CLogradouros", Livro);
    ruas->Faz("PorCodigo", [rua](const ChamadaRecebida &chamada) {
        return chamada.Inteiro(0) == 77 ? Var(rua()) : Var(static_cast<IDispatch *>(nullptr));
    });
    ruas->Faz("Procura", [this, rua](const ChamadaRecebida &chamada) {
        auto achadas = ColecaoExterna::Nova(Livro);
        if (chamada.Inteiro(0) == 4314902 && chamada.Texto(1).rfind("bento", 0) == 0) {
            achadas->Itens.emplace_back(Contado<IDispatch>(rua().Ponteiro()));
        }
        return Var(achadas);
    });
    return ruas;
}

Contado<ObjetoExterno> HospedeiroExterno::FazClientes()
{
    auto clientes = ObjetoExterno::Novo("CClientes", Livro);
    clientes->Faz("Lista", [this](const ChamadaRecebida &) {
        auto lista = ColecaoExterna::Nova(Livro);
        for (const auto &[codigo, nome] :
             {std::pair(CodCliente, ServicosExternos::Cliente), std::pair(2, "Outro órgão")}) {
            auto cliente = ObjetoExterno::Novo("CCliente", Livro);
            cliente->Tem("Codigo", codigo).Tem("Nome", nome).Calado();
            cliente->Tem("Setores", Var::Textos({ServicosExternos::Setor, "Metrologia"}));
            lista->Itens.emplace_back(Contado<IDispatch>(cliente.Ponteiro()));
        }
        return Var(lista);
    });
    return clientes;
}

void HospedeiroExterno::FazClasses(bool semBiblioteca)
{
    const auto aceita = [this](const char *classe, const std::vector<const char *> &membros) {
        return [this, classe, membros] {
            auto objeto = ObjetoExterno::Novo(classe, Livro);
            for (const char *membro : membros) {
                objeto->Aceita(membro);
            }
            return Contado<IDispatch>(objeto.Ponteiro());
        };
    };
    const auto faz = [this](Contado<ObjetoExterno> (HospedeiroExterno::*fabrica)()) {
        return [this, fabrica] { return Contado<IDispatch>((this->*fabrica)().Ponteiro()); };
    };
    Classes.Oferece("ZTK4Lib.AMRegistro", aceita("AMRegistro", {"RegistraAM", "DesregistraAM"}));
    Classes.Oferece("ZTK4Lib.AMEditMenu", aceita("AMEditMenu", {"IncorporaMenu", "RemoveMenu"}));
    Classes.Oferece("ZTK4Lib.CRelatorios", aceita("CRelatorios", {"PathRPT", "Imprimir", "ImprimirDesigner"}));
    Classes.Oferece("ZTK4Lib.CAjuda", aceita("CAjuda", {"TrataAjuda2"}));
    Classes.Oferece("ZTK4LIBC.CFunGen", aceita("CFunGen", {"SetaTituloAvisos", "AppTitle"}));
    Classes.Oferece("ZTVORLIB.Mensagem", faz(&HospedeiroExterno::FazMensagem));
    Classes.Oferece("ZTVORLIB.DadosVor", faz(&HospedeiroExterno::FazDadosVor));
    Classes.Oferece("ZTVORLIB.Diretorios", faz(&HospedeiroExterno::FazDiretorios));
    // Where this host has other names than those that the component expects, it says so.
    Classes.Oferece("SistemaExterno.Global", faz(&HospedeiroExterno::FazGlobal));
    Classes.Aponta("ObjGlobalVor", "SistemaExterno.Global", true);
    Classes.Oferece("SistemaExterno.Visor", faz(&HospedeiroExterno::FazVisor));
    Classes.Aponta("DocumentoPDF", "SistemaExterno.Visor");
    Classes.Oferece("SistemaExterno.Ruas", faz(&HospedeiroExterno::FazLogradouros));
    Classes.Aponta("Logradouros", "SistemaExterno.Ruas");
    Classes.Oferece("SistemaExterno.Clientes", faz(&HospedeiroExterno::FazClientes));
    Classes.Aponta("Clientes", "SistemaExterno.Clientes");
    if (!semBiblioteca) {
        for (const std::string &classe : RegistroExterno::Classes()) {
            Classes.Oferece("ZTVORLIB." + classe, [this, classe] {
                return Contado<IDispatch>(RegistroExterno::Novo(classe, Livro).Ponteiro());
            });
        }
    }
}

void HospedeiroExterno::MostraJanela(const ChamadaRecebida &chamada)
{
    const ObjetoTardio form(chamada.Objeto(0));
    const bool modal = chamada.Inteiro(1) != 0;
    Livro.Conta("janela " + form.Chama("Name").Texto() + ": " + form.Chama("Caption").Texto() +
                (modal ? " (modal)" : ""));
    chamada.Devolve(4, form);
    m_UltimaJanela = form;
    form.Chama("Show", {std::int16_t{modal}});
    if (modal) {
        EsqueceJanela();
    }
}

void HospedeiroExterno::Prepara(const ObjetoTardio &geral)
{
    geral.Chama("Parametros",
                {Var(FormMDI), Var(MenuDestino), Var(static_cast<IDispatch *>(nullptr)),
                 Var(static_cast<IDispatch *>(nullptr)), Var(static_cast<IDispatch *>(nullptr)), Var(oAppEXE)});
    geral.Escreve("cGlobal", Var(cGlobal));
    geral.Escreve("ObjInterface", Var(ObjInterface));
}

void HospedeiroExterno::Entra(const ObjetoTardio &geral)
{
    Prepara(geral);
    geral.Chama("Logon", {Var(objMTM), Var(objSCA), "4314902"});
}

} // namespace nativo
