#include "tests/host_contract/ContratoHost.h"

namespace {

template <class T> Ref<Colecao<Ref<T>>> Lista(const Ref<T> &item)
{
    auto lista = Novo<Colecao<Ref<T>>>();
    lista->Add(item);
    return lista;
}

TEST_P(ContratoHost, Gateway_EachProxy_IsAnObjectOfItsOwn)
{
    Ref<IGateway> gateway = Gateway();
    auto um = gateway->CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4");
    auto dois = gateway->CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4");
    auto tres = gateway->CriaObjetoRN("VOR", "RelatorioRN", "ZTVORLIB", "4");
    ASSERT_FALSE(um.Nada());
    ASSERT_FALSE(tres.Nada());
    EXPECT_FALSE(um == dois);
}

TEST_P(ContratoHost, Gateway_AProxy_WorksAfterTheGatewayWasLetGo)
{
    const std::int32_t numero = Incluido("CTR_1");
    Ref<IProxyRN> proxy = Gateway()->CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4");
    Ref<Objeto> variavel = SoNumero(numero);
    std::vector<Valor> parametros{Valor::PorReferencia(variavel)};
    Ref<Objeto> contexto;
    std::string metodo = "consulta";
    ASSERT_TRUE(proxy->ExecutaMetodo(contexto, metodo, parametros));
    EXPECT_EQ(proxy->ObtemRetorno().Como<EquiptoED>()->Codigo.Valor(), "CTR_1");
    EXPECT_NO_THROW(ComoTipo<EquiptoED>(variavel)); // another object perhaps, of the same class
}

TEST_P(ContratoHost, Gateway_ARefusal_IsFalseAndShownByTheProxy)
{
    EXPECT_FALSE(Comanda("consulta", SoNumero(987654)));
    EXPECT_FALSE(Comanda("consultaSimples", SoNumero(987654)));
    EXPECT_FALSE(Comanda("desativa", SoNumero(987654)));
}

TEST_P(ContratoHost, inclui_OfANewEquipment_AnswersItNumberedActiveAndSigned)
{
    auto guardado = Pede<EquiptoED>("inclui", EquipamentoNovo("CTR_1"));
    ASSERT_FALSE(guardado.Nada());
    EXPECT_GT(guardado->NroIntEquip.Valor(), 0);
    EXPECT_EQ(guardado->Codigo.Valor(), "CTR_1");
    EXPECT_NE(guardado->Ativo.Valor(), 2);
    EXPECT_FALSE(guardado->ClienteTrans.Valor().empty());
    EXPECT_NE(guardado->DataTrans.Valor(), 0);
    EXPECT_NE(Incluido("CTR_2"), guardado->NroIntEquip.Valor());
}

TEST_P(ContratoHost, consulta_OfASavedEquipment_GivesWhatWasSent)
{
    auto enviado = EquipamentoNovo("CTR_1");
    enviado->SubCodigo = "A.B";
    enviado->TemPerfilMag = 1;
    const std::int32_t numero = Pede<EquiptoED>("inclui", enviado)->NroIntEquip;
    auto lido = Pede<EquiptoED>("consulta", SoNumero(numero));
    ASSERT_FALSE(lido.Nada());
    EXPECT_EQ(lido->NroIntEquip.Valor(), numero);
    EXPECT_EQ(lido->ClienteInc.Valor(), adaptador->objMTM()->ClienteLogado());
    EXPECT_EQ(lido->SubCodigo.Valor(), "A.B");
    EXPECT_EQ(lido->Descricao.Valor(), "Radar da suíte");
    EXPECT_EQ(lido->CodMunic.Valor(), enviado->CodMunic.Valor());
    EXPECT_EQ(lido->TipoEquip.Valor(), "R");
    EXPECT_EQ(lido->TipoAgente.Valor(), 2);
    EXPECT_EQ(lido->VelocPermitida.Valor(), 60);
    EXPECT_EQ(lido->ArquivoLayout.Valor(), "NENHUM");
    EXPECT_EQ(lido->TemPerfilMag.Valor(), 1);
    EXPECT_EQ(lido->TemLimiteDif.Valor(), 2);
    lido->Descricao = "of this reader alone";
    EXPECT_EQ(Pede<EquiptoED>("consultaSimples", SoNumero(numero))->Descricao.Valor(), "Radar da suíte");
}

TEST_P(ContratoHost, altera_OfAnEquipment_LeavesTheMembersThatWereNotSent)
{
    const std::int32_t numero = Incluido("CTR_1");
    auto alterado = Alteracao(numero);
    alterado->TemLimiteDif = 1;
    alterado->NroIntRejLimDif = 3;
    ASSERT_TRUE(Comanda("altera", alterado));
    auto semRejeicao = Alteracao(numero);
    semRejeicao->TemLimiteDif = 1;
    semRejeicao->Modelo = "Modelo 2";
    ASSERT_TRUE(Comanda("altera", semRejeicao));
    auto lido = Pede<EquiptoED>("consulta", SoNumero(numero));
    EXPECT_EQ(lido->Modelo.Valor(), "Modelo 2");
    EXPECT_EQ(lido->NroIntRejLimDif.Valor(), 3);
}

TEST_P(ContratoHost, altera_WithSensorsAndCalibrations_StoresThemAndFindsTheOneInForce)
{
    const std::int32_t numero = Incluido("CTR_1");
    const std::string caminho = adaptador->Diretorio() + "certificado.pdf";
    Plataforma()->GravaArquivo(caminho, PdfMinimo());
    double documento = 0;
    ASSERT_TRUE(Dados()->EnviaDocumento(caminho, documento, 0));

    auto afericao = Novo<AfericaoED>();
    afericao->Numero = "123";
    afericao->Marca = "456";
    afericao->DataVerificacao = DataDe(1, 2, 2025);
    afericao->DataVencimento = DataDe(31, 1, 2026);
    afericao->Ativo = 1;
    afericao->NroIntImgCertif = documento;
    afericao->TipoAfer = 1;
    afericao->PortDimel = "";
    auto sensor = Novo<SensorED>();
    sensor->NroSensor = 1;
    sensor->LocalInfr = "RUA A, 10";
    sensor->Ativo = 1;
    sensor->Afericoes = Lista(afericao);
    auto pedido = Alteracao(numero);
    pedido->Sensores = Lista(sensor);
    ASSERT_TRUE(Comanda("altera", pedido));

    auto lido = Pede<EquiptoED>("consulta", SoNumero(numero));
    ASSERT_FALSE(lido->Sensores.Valor().Nada());
    ASSERT_EQ(lido->Sensores.Valor()->Count(), 1);
    const SensorED &gravado = *lido->Sensores.Valor()->Item(1);
    EXPECT_GT(gravado.NroIntSensor.Valor(), 0);
    EXPECT_EQ(gravado.LocalInfr.Valor(), "RUA A, 10");
    ASSERT_EQ(gravado.Afericoes.Valor()->Count(), 1);
    EXPECT_GT(gravado.Afericoes.Valor()->Item(1)->NroIntAfericao.Valor(), 0);
    EXPECT_EQ(gravado.Afericoes.Valor()->Item(1)->DataVencimento.Valor(), DataDe(31, 1, 2026));
    EXPECT_EQ(gravado.Afericoes.Valor()->Item(1)->NroIntImgCertif.Valor(), documento);

    const auto vigenteEm = [&](Data dia) {
        auto pergunta = Novo<ConsultaAfericaoED>();
        pergunta->NroIntEquip = numero;
        pergunta->TipoConsulta = 1;
        pergunta->DtInfracao = dia;
        return Pede<AfericaoED>("consultaSimplesAfericaoVigente", pergunta);
    };
    EXPECT_EQ(vigenteEm(DataDe(1, 2, 2025))->Numero.Valor(), "123");
    EXPECT_GT(vigenteEm(DataDe(31, 1, 2026))->NroIntAfericao.Valor(), 0);
    EXPECT_EQ(vigenteEm(DataDe(31, 1, 2025))->NroIntAfericao.Valor(), 0);
    EXPECT_EQ(vigenteEm(DataDe(1, 2, 2026))->NroIntAfericao.Valor(), 0);
}

TEST_P(ContratoHost, lista2_ByCriteria_FindsPageByPage)
{
    auto criterios = [&] {
        auto lista = Novo<ListaEquiptoED>();
        lista->ClienteInc = adaptador->objMTM()->ClienteLogado();
        lista->IndTrabFoto = 1; // the mode of the type R
        lista->Ativo = 1;
        return lista;
    };
    EXPECT_TRUE(Pede<ListaEquiptoED>("lista2", criterios())->Equipamentos.Valor().Nada());

    const std::int32_t numero = Incluido("CTR_1");
    const std::int32_t outro = Incluido("CTR_2");
    std::vector<std::int32_t> achados;
    auto pedido = criterios();
    for (int pagina = 0; pagina < 3; ++pagina) {
        auto resposta = Pede<ListaEquiptoED>("lista2", pedido);
        for (std::int32_t i = 1; i <= resposta->Equipamentos.Valor()->Count(); ++i) {
            achados.push_back(resposta->Equipamentos.Valor()->Item(i)->NroIntEquip);
        }
        if (resposta->ProxNroIntEquip.Valor() < 1) {
            break;
        }
        pedido->ProxNroIntEquip = resposta->ProxNroIntEquip.Valor();
    }
    EXPECT_EQ(achados.size(), 2U);

    pedido = criterios();
    pedido->Codigo = "CTR_2";
    auto resposta = Pede<ListaEquiptoED>("lista2", pedido);
    ASSERT_FALSE(resposta->Equipamentos.Valor().Nada());
    ASSERT_EQ(resposta->Equipamentos.Valor()->Count(), 1);
    EXPECT_EQ(resposta->Equipamentos.Valor()->Item(1)->NroIntEquip.Valor(), outro);
    EXPECT_EQ(resposta->Equipamentos.Valor()->Item(1)->TipoEquip.Valor(), "R");

    ASSERT_TRUE(Comanda("desativa", SoNumero(outro)));
    EXPECT_TRUE(Pede<ListaEquiptoED>("lista2", pedido)->Equipamentos.Valor().Nada());
    pedido->Ativo = 2;
    EXPECT_EQ(Pede<ListaEquiptoED>("lista2", pedido)->Equipamentos.Valor()->Count(), 1);
    ASSERT_TRUE(Comanda("reativa", SoNumero(outro)));
    EXPECT_TRUE(Pede<ListaEquiptoED>("lista2", pedido)->Equipamentos.Valor().Nada());

    pedido = criterios();
    pedido->TipoAgente = 3;
    EXPECT_TRUE(Pede<ListaEquiptoED>("lista2", pedido)->Equipamentos.Valor().Nada());
    EXPECT_GT(numero, 0);
}

TEST_P(ContratoHost, Limites_SavedInOneCall_AreListedReadChangedAndTakenAway)
{
    const std::int32_t numero = ComLimites();
    auto equipto = Novo<EquiptoED>();
    equipto->ListaLimiteDif = Novo<Colecao<Ref<LimiteDifED>>>();
    for (std::uint8_t dia : {std::uint8_t{2}, std::uint8_t{8}}) {
        auto limite = Novo<LimiteDifED>();
        limite->NroIntEquip = numero;
        limite->Dia = dia;
        limite->HoraInicio = 730;
        limite->HoraFim = 1800;
        limite->Ativo = 1;
        limite->TipoLimite = 1;
        limite->VelocPerm = 40;
        limite->VelocMin = 0;
        equipto->ListaLimiteDif.Valor()->Add(limite);
    }
    ASSERT_TRUE(Comanda("alteraListaLimitesDif", equipto));

    auto pedido = Novo<LimiteDifED>();
    pedido->NroIntEquip = numero;
    pedido->TipoLimite = 1;
    auto lista = Pede<EquiptoED>("listaLimiteDif", pedido)->ListaLimiteDif.Valor();
    ASSERT_FALSE(lista.Nada());
    ASSERT_EQ(lista->Count(), 2);
    EXPECT_NE(lista->Item(1)->NroInt.Valor(), lista->Item(2)->NroInt.Valor());

    auto soNumero = Novo<LimiteDifED>();
    soNumero->NroInt = lista->Item(1)->NroInt.Valor();
    auto lido = Pede<LimiteDifED>("consultaSimplesLimiteDif", soNumero);
    EXPECT_EQ(lido->NroIntEquip.Valor(), numero);
    EXPECT_EQ(lido->HoraInicio.Valor(), 730);
    EXPECT_EQ(lido->HoraFim.Valor(), 1800);
    EXPECT_EQ(lido->VelocPerm.Valor(), 40);

    lido->HoraFim = 1900;
    lido->Ativo = 1;
    lido->TipoLimite = 1;
    auto uma = Novo<EquiptoED>();
    uma->ListaLimiteDif = Lista(lido);
    ASSERT_TRUE(Comanda("alteraListaLimitesDif", uma));
    EXPECT_EQ(Pede<LimiteDifED>("consultaSimplesLimiteDif", soNumero)->HoraFim.Valor(), 1900);
    EXPECT_EQ(Pede<EquiptoED>("listaLimiteDif", pedido)->ListaLimiteDif.Valor()->Count(), 2);

    ASSERT_TRUE(Comanda("desativaLimiteDif", soNumero));
    EXPECT_EQ(Pede<EquiptoED>("listaLimiteDif", pedido)->ListaLimiteDif.Valor()->Count(), 1);
    pedido->TipoLimite = 2;
    auto proibidos = Pede<EquiptoED>("listaLimiteDif", pedido)->ListaLimiteDif.Valor();
    EXPECT_TRUE(proibidos.Nada() || proibidos->Count() == 0);
}

TEST_P(ContratoHost, Dias_Added_AreListedReadChangedAndTakenAway)
{
    const std::int32_t numero = ComLimites();
    auto dia = Novo<DiaEspecificoED>();
    dia->NroIntEquip = numero;
    dia->Data = DataDe(25, 12, 2026);
    dia->HoraInicio = 0;
    dia->HoraFim = 2359;
    dia->VelocPerm = 40;
    dia->VelocMin = 20;
    dia->Ativo = 1;
    ASSERT_TRUE(Comanda("adicionaDiaEspecifico", dia));

    auto pedido = Novo<DiaEspecificoED>();
    pedido->NroIntEquip = numero;
    auto lista = Pede<EquiptoED>("listaDiaEspecifico", pedido)->ListaDiaEspecifico.Valor();
    ASSERT_FALSE(lista.Nada());
    ASSERT_EQ(lista->Count(), 1);
    EXPECT_EQ(lista->Item(1)->Data.Valor(), DataDe(25, 12, 2026));

    auto soNumero = Novo<DiaEspecificoED>();
    soNumero->NroInt = lista->Item(1)->NroInt.Valor();
    auto lido = Pede<DiaEspecificoED>("consultaSimplesDiaEspecifico", soNumero);
    EXPECT_EQ(lido->VelocMin.Valor(), 20);
    lido->Data = DataDe(26, 12, 2026);
    lido->Ativo = 1;
    ASSERT_TRUE(Comanda("alteraDiaEspecifico", lido));
    EXPECT_EQ(Pede<DiaEspecificoED>("consultaSimplesDiaEspecifico", soNumero)->Data.Valor(), DataDe(26, 12, 2026));

    ASSERT_TRUE(Comanda("desativaDiaEspecifico", soNumero));
    lista = Pede<EquiptoED>("listaDiaEspecifico", pedido)->ListaDiaEspecifico.Valor();
    EXPECT_TRUE(lista.Nada() || lista->Count() == 0);
}

TEST_P(ContratoHost, Certificado_OfUnknownKeys_IsRefused)
{
    auto pedido = Novo<RelatorioAfericaoED>();
    pedido->CodOat = 999999;
    pedido->Serie = "ZZ";
    pedido->TxtIdent = "x";
    EXPECT_FALSE(Executa("RelatorioRN", "consultaRelatorioRVOR011", pedido, nullptr));
}

} // namespace
