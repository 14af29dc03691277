#include "tests/host_contract/ContratoHost.h"

#include <algorithm>
#include <set>
#include <vector>

namespace {

// Texts and values of a combo, through the choice of each item.
std::vector<std::pair<std::string, std::string>> ItensDe(const Ref<IztCombo> &combo)
{
    std::vector<std::pair<std::string, std::string>> itens;
    const std::int16_t atual = combo->IndiceAtual();
    for (std::int32_t indice = 0; indice < combo->NroItens(); ++indice) {
        combo->DefineIndiceAtual(static_cast<std::int16_t>(indice));
        itens.emplace_back(combo->Texto(), combo->Valor());
    }
    combo->DefineIndiceAtual(atual);
    return itens;
}

std::set<std::string> ValoresDe(const Ref<IztCombo> &combo)
{
    std::set<std::string> valores;
    for (const auto &[texto, valor] : ItensDe(combo)) {
        EXPECT_FALSE(texto.empty());
        EXPECT_TRUE(valores.insert(valor).second) << valor << " stands twice";
    }
    return valores;
}

Ref<IztCombo> Combo(const Ref<FormFalso> &form)
{
    const Peca peca = {.Ajustes = AjustesZtCombo{}, .Nome = "cbo"};
    return ComoTipo<IztCombo>(Host().Controles()->Cria(form, peca, nullptr, -1));
}

TEST_P(ContratoHost, PreencheTipoAgente_InBothModes_OffersNumberedTypes)
{
    auto combo = Combo(form);
    for (bool trabFoto : {true, false}) {
        Dados()->PreencheTipoAgente(combo, trabFoto, false, false);
        EXPECT_EQ(combo->IndiceAtual(), -1);
        EXPECT_EQ(combo->Valor(), "");
        const auto valores = ValoresDe(combo);
        EXPECT_GE(valores.size(), 1U);
        for (const auto &valor : valores) {
            EXPECT_GE(CInt(valor), 1);
            EXPECT_LE(CInt(valor), 3);
        }
    }
}

TEST_P(ContratoHost, PreencheTipo_WithAllAndFirst_PutsAllInFrontAndChoosesIt)
{
    auto combo = Combo(form);
    for (const std::string &todos : {std::string("0"), std::string("T")}) {
        const auto preenche = [&](bool comTodos, bool primeiro) {
            if (todos == "0") {
                Dados()->PreencheTipoAgente(combo, true, comTodos, primeiro);
            } else {
                Dados()->PreencheTipoEquip(combo, 0, false, comTodos, primeiro);
            }
        };
        combo->AdicionaItem("from before|9");
        preenche(true, true);
        EXPECT_EQ(combo->IndiceAtual(), 0);
        EXPECT_EQ(combo->Texto(), "Todos");
        EXPECT_EQ(combo->Valor(), todos);
        EXPECT_FALSE(ValoresDe(combo).contains("9"));
        preenche(true, false);
        EXPECT_EQ(combo->IndiceAtual(), -1);
        EXPECT_EQ(ItensDe(combo).at(0).second, todos);
        preenche(false, true);
        EXPECT_EQ(combo->IndiceAtual(), 0);
        EXPECT_NE(combo->Valor(), todos);
    }
}

TEST_P(ContratoHost, PreencheTipoEquip_OfEachMeterType_OffersLettersThatAllOffersToo)
{
    auto medidores = Combo(form);
    auto combo = Combo(form);
    for (bool trabFoto : {true, false}) {
        Dados()->PreencheTipoEquip(combo, 0, trabFoto, false, false);
        const auto todos = ValoresDe(combo);
        Dados()->PreencheTipoAgente(medidores, trabFoto, false, false);
        for (const auto &medidor : ValoresDe(medidores)) {
            Dados()->PreencheTipoEquip(combo, CInt(medidor), trabFoto, false, false);
            EXPECT_EQ(combo->IndiceAtual(), -1);
            const auto tipos = ValoresDe(combo);
            EXPECT_GE(tipos.size(), 1U);
            for (const auto &tipo : tipos) {
                EXPECT_EQ(tipo.size(), 1U);
                EXPECT_TRUE(todos.contains(tipo)) << tipo;
            }
        }
    }
}

TEST_P(ContratoHost, PreencheRejeicoes_OfACombo_OffersNumbers)
{
    auto combo = Combo(form);
    combo->AdicionaItem("from before|x");
    Dados()->PreencheRejeicoes(combo, 0, 0);
    EXPECT_EQ(combo->IndiceAtual(), -1);
    const auto valores = ValoresDe(combo);
    EXPECT_GE(valores.size(), 1U);
    for (const auto &valor : valores) {
        EXPECT_GT(CLng(valor), 0);
    }
}

TEST_P(ContratoHost, ObtemOrgao_OfTheSession_HasANumber)
{
    EXPECT_GT(Dados()->ObtemOrgao()->CodCliente(), 0);
}

TEST_P(ContratoHost, DirLayouts_IsADirectoryThatCanBeListed)
{
    const std::string diretorio = Dados()->DirLayouts();
    ASSERT_FALSE(diretorio.empty());
    EXPECT_EQ(diretorio.back(), '\\');
    std::string nome = Plataforma()->PrimeiroArquivo(diretorio + "*.LAY");
    for (int i = 0; !nome.empty() && i < 1000; ++i) {
        EXPECT_EQ(UCase(Right(nome, 4)), ".LAY");
        nome = Plataforma()->ProximoArquivo();
    }
    EXPECT_EQ(nome, "");
}

TEST_P(ContratoHost, ObtemDiretorio_OfTheTemporaryDocuments_CanBeWrittenIn)
{
    const std::string diretorio = Host().CriaDiretorios()->ObtemDiretorio(99, "");
    ASSERT_FALSE(diretorio.empty());
    EXPECT_EQ(diretorio.back(), '\\');
    Plataforma()->GravaArquivo(diretorio + "~VORAFERcontrato.pdf", {1});
    EXPECT_EQ(Plataforma()->PrimeiroArquivo(diretorio + "~VORAFERcontrato*.pdf"), "~VORAFERcontrato.pdf");
    Plataforma()->ApagaArquivo(diretorio + "~VORAFERcontrato.pdf");
}

TEST_P(ContratoHost, Documentos_OfSeveralSizes_ComeBackAsTheyWere)
{
    std::vector<Bytes> documentos{Bytes{}, PdfMinimo(), PdfMinimo()};
    Bytes todosOsBytes(300'000);
    for (std::size_t indice = 0; indice < todosOsBytes.size(); ++indice) {
        todosOsBytes[indice] = static_cast<std::uint8_t>(indice * 7 + indice / 256);
    }
    const std::string fim = "startxref"; // a store may open what it is given: what stands before it is not looked at
    const auto onde = std::search(documentos[2].begin(), documentos[2].end(), fim.begin(), fim.end());
    documentos[2].insert(onde, todosOsBytes.begin(), todosOsBytes.end());
    std::vector<double> numeros;
    for (std::size_t indice = 0; indice < documentos.size(); ++indice) {
        const std::string caminho = adaptador->Diretorio() + "doc" + std::to_string(indice) + ".pdf";
        Plataforma()->GravaArquivo(caminho, documentos[indice]);
        double numero = 0;
        const bool enviou = Dados()->EnviaDocumento(caminho, numero, 0);
        if (documentos[indice].empty() && !adaptador->AceitaDocumentoVazio()) {
            EXPECT_FALSE(enviou);
            EXPECT_EQ(numero, 0);
        } else {
            EXPECT_TRUE(enviou);
            EXPECT_GT(numero, 0);
        }
        EXPECT_TRUE(numero == 0 || std::count(numeros.begin(), numeros.end(), numero) == 0);
        numeros.push_back(numero);
        EXPECT_TRUE(Plataforma()->ExisteArquivo(caminho)); // sent, not moved
    }
    for (std::size_t indice = 0; indice < documentos.size(); ++indice) {
        if (numeros[indice] != 0) {
            Bytes bytes{1, 2, 3};
            EXPECT_TRUE(Dados()->RecebeDocumento(numeros[indice], bytes, true));
            EXPECT_EQ(bytes, documentos[indice]);
        }
    }
}

TEST_P(ContratoHost, Documentos_ThatAreNotThere_AreRefused)
{
    Bytes bytes;
    EXPECT_FALSE(Dados()->RecebeDocumento(987654, bytes, true));
    double numero = 0;
    EXPECT_FALSE(Dados()->EnviaDocumento(adaptador->Diretorio() + "falta.pdf", numero, 0));
    EXPECT_EQ(numero, 0);
}

TEST_P(ContratoHost, DocumentoPDF_OfAFile_OpensItUnlessItIsNotThere)
{
    Plataforma()->GravaArquivo(adaptador->Diretorio() + "visto.pdf", PdfMinimo());
    const auto mostra = [&](const std::string &nome, bool modal) {
        auto documento = Host().CriaDocumentoPDF();
        documento->DefineArquivoPDF(adaptador->Diretorio() + nome);
        return documento->Mostra(modal);
    };
    EXPECT_TRUE(mostra("visto.pdf", false));
    adaptador->FechaProximoVisor();
    EXPECT_TRUE(mostra("visto.pdf", true));
    EXPECT_FALSE(mostra("falta.pdf", false));
}

TEST_P(ContratoHost, FormataDataEHora_OfARecordsNumbers_GiveTheDisplayForm)
{
    const Data antes = Plataforma()->Agora();
    auto guardado = Pede<EquiptoED>("inclui", EquipamentoNovo("CTR_1"));
    const Data depois = Plataforma()->Agora();
    const std::string data = Mensagem()->FormataData(guardado->DataTrans, 0);
    const std::string hora = Mensagem()->FormataHora(guardado->HoraTrans, 0);
    EXPECT_EQ(data.size(), 10U);
    EXPECT_EQ(hora.size(), 8U);
    const double momento = CDate(data + " " + hora).Valor;
    const double segundo = 1.0 / 86400;
    EXPECT_GE(momento, antes.Valor - segundo);
    EXPECT_LE(momento, depois.Valor + segundo);
    EXPECT_EQ(Mensagem()->FormataData(0, 0), "");
}

TEST_P(ContratoHost, TextoParaBytes_OfADocumentAsText_IsItsBytes)
{
    const Bytes inicio{'%', 'P', 'D', 'F', '-', '1', '.', '4', '\n'};
    EXPECT_EQ(Mensagem()->TextoParaBytes(""), Bytes{});
    EXPECT_EQ(Mensagem()->TextoParaBytes(adaptador->TextoDeDocumento(inicio)), inicio);
}

TEST_P(ContratoHost, ExibeMensagem_WithAControl_LeadsTheFocusToIt)
{
    auto um = Poe<ITextBox>(Com<AjustesTextBox>("txtUm"));
    auto dois = Poe<ITextBox>(Com<AjustesTextBox>("txtDois"));
    Mostra();
    um->SetFocus();
    EXPECT_TRUE(form->ControleAtivo() == um);
    adaptador->FechaProximaCaixa();
    Mensagem()->ExibeMensagem("Informe o segundo!", dois);
    EXPECT_TRUE(form->ControleAtivo() == dois);
    adaptador->FechaProximaCaixa();
    Mensagem()->ExibeMensagem("Nenhum!", nullptr);
    EXPECT_TRUE(form->ControleAtivo() == dois);
    um->DefineEnabled(false);
    adaptador->FechaProximaCaixa();
    EXPECT_NO_THROW(Mensagem()->ExibeMensagem("Não pode!", um));
    EXPECT_TRUE(form->ControleAtivo() == dois);
}

TEST_P(ContratoHost, ExibeErro_ReturnsWhenItIsClosed)
{
    adaptador->FechaProximaCaixa();
    EXPECT_NO_THROW(Mensagem()->ExibeErro("frmLista.cmdOK_Click", 91, "Descrição", "ZTAVOREQUIP < x", "Título"));
}

TEST_P(ContratoHost, PreparaDetalhes_OfAForm_LetsThePersonChangeNothing)
{
    auto texto = Poe<ITextBox>(Com<AjustesTextBox>("txt"));
    auto mascara = Poe<IztMask>(Com<AjustesZtMask>("msk"));
    auto data = Poe<IztData>(Com<AjustesZtData>("dat"));
    auto observacao = Poe<IztVeiObservacao>(Com<AjustesZtVeiObservacao>("obs"));
    auto marca = Poe<ICheckBox>(Com<AjustesCheckBox>("chk"));
    auto opcao = Poe<IOptionButton>(Com<AjustesOptionButton>("opt"));
    auto combo = Poe<IztCombo>(Com<AjustesZtCombo>("cbo"));
    auto botao = Poe<ICommandButton>(Com<AjustesCommandButton>("cmd"));
    auto lista = Poe<IztList>(Com<AjustesZtList>("lst"));
    texto->DefineText("a");
    combo->AdicionaItem("Um|1");
    TabelaTexto tabela(1);
    tabela.AdicionaLinha();
    lista->CarregaItens(tabela);
    int cliques = 0;
    Conexao conexao = botao->Click().liga([&] { ++cliques; });
    Mensagem()->PreparaDetalhes(form);
    Mostra();

    for (const char *campo : {"txt", "msk", "dat", "obs"}) {
        EXPECT_FALSE(adaptador->Digita(form, campo, "1")) << campo;
    }
    EXPECT_FALSE(adaptador->Clica(form, "chk"));
    EXPECT_FALSE(adaptador->Clica(form, "opt"));
    EXPECT_FALSE(adaptador->Escolhe(form, "cbo", "Um"));
    EXPECT_EQ(texto->Text(), "a");
    EXPECT_EQ(mascara->Valor(), "");
    EXPECT_EQ(data->Valor(), "");
    EXPECT_EQ(observacao->Text(), "");
    EXPECT_EQ(marca->Value(), 0);
    EXPECT_FALSE(opcao->Value());
    EXPECT_EQ(combo->IndiceAtual(), -1);
    texto->DefineText("written by the form");
    EXPECT_EQ(texto->Text(), "written by the form");

    EXPECT_TRUE(adaptador->Clica(form, "cmd"));
    EXPECT_EQ(cliques, 1);
    EXPECT_TRUE(adaptador->ClicaLinha(form, "lst", 1));
}

TEST_P(ContratoHost, ObjGlobalVor_WithTheSession_GivesTheCredential)
{
    auto global = Host().CriaObjGlobalVor();
    global->InicializaSessao(adaptador->objMTM(), adaptador->objSCA(), adaptador->oAppEXE(), nullptr);
    auto credencial = global->ObtemCredencial();
    ASSERT_FALSE(credencial.Nada());
    EXPECT_GT(credencial->Credencial(), 0);
    EXPECT_GE(credencial->CodMunic(), 0);
}

TEST_P(ContratoHost, Sessao_OfALoggedOnUser_NamesItsClientAndPermissions)
{
    EXPECT_FALSE(adaptador->objMTM()->ClienteLogado().empty());
    EXPECT_NO_THROW(adaptador->objMTM()->SetorLogado());
    EXPECT_TRUE(adaptador->objSCA()->Logado());
    for (const char *acao : {"", "I", "A", "E"}) {
        EXPECT_TRUE(adaptador->objSCA()->PossuiPerm2("NAB", "VOR-EQP-CS", acao)) << acao;
    }
}

TEST_P(ContratoHost, WebComm_OfTheReplicaService_AnswersAMomentOrFalse)
{
    auto soap = adaptador->objMTM()->CWebComm()->CriaObjetoSoap("ConsGen", "ZTAVOREQUIP");
    ASSERT_FALSE(soap.Nada());
    if (soap->Metodo(nullptr, "consultaDataUltimaReplica", "VOR")) {
        EXPECT_TRUE(IsDate(soap->Resultado().CStr()));
    }
}

TEST_P(ContratoHost, Aplicacao_DescribesItself)
{
    EXPECT_FALSE(adaptador->oAppEXE()->Title().empty());
    EXPECT_FALSE(adaptador->oAppEXE()->Path().empty());
    EXPECT_FALSE(adaptador->oAppEXE()->ProductName().empty());
    EXPECT_NO_THROW(adaptador->FormMDI()->AutoShowChildren());
    EXPECT_GT(adaptador->FormMDI()->ScaleWidth(), 0);
    EXPECT_GT(adaptador->FormMDI()->ScaleHeight(), 0);
    EXPECT_GT(adaptador->FormMDI()->Width(), 0);
    EXPECT_GT(adaptador->FormMDI()->Height(), 0);
}

TEST_P(ContratoHost, ActBar_OfAnUnknownBand_Raises)
{
    EXPECT_GE(adaptador->ActBar()->Bands()->Count(), 0);
    EXPECT_NE(NumeroDaFalha([&] { adaptador->ActBar()->Bands()->ItemNome("band que não existe"); }), 0);
    EXPECT_NE(NumeroDaFalha([&] { adaptador->ActBar()->Bands()->ItemPosicao(-1); }), 0);
}

TEST_P(ContratoHost, HostClasses_ThatTheShellCreates_AreThere)
{
    EXPECT_NO_THROW(Host().CriaCFunGen()->SetaTituloAvisos("Título"));
    EXPECT_NO_THROW(Host().CriaCFunGen()->DefineAppTitle("Título"));
    EXPECT_NO_THROW(Host().CriaRelatorios()->DefinePathRPT(adaptador->oAppEXE()->Path()));
    EXPECT_FALSE(Host().CriaAjuda().Nada());
    auto registro = Host().CriaAMRegistro();
    EXPECT_NO_THROW(registro->RegistraAM("ZTAVOREQUIP", "ZTAVOREQUIP.Geral", "CONTRATO"));
    EXPECT_NO_THROW(registro->DesregistraAM("ZTAVOREQUIP", "CONTRATO"));
    Ref<IActBar> actBar = adaptador->ActBar();
    ItensMenu itens{nullptr};
    EXPECT_NO_THROW(Host().CriaAMEditMenu()->IncorporaMenu(actBar, itens, false));
    EXPECT_NO_THROW(Host().CriaAMEditMenu()->RemoveMenu(actBar, itens));
}

} // namespace
