#include "tests/host_contract/ContratoHost.h"

void ContratoHost::SetUp()
{
    adaptador = GetParam()();
    InstalaHost(adaptador->Host());
}

void ContratoHost::TearDown()
{
    if (!form.Nada()) {
        form->Fecha();
    }
    form = nullptr;
    if (!m_Dados.Nada()) {
        m_Dados->Finaliza();
    }
    m_Dados = nullptr;
    m_Mensagem = nullptr;
    InstalaHost(nullptr);
    adaptador->Encerra();
}

void ContratoHost::Mostra()
{
    Ref<Objeto> formClick;
    form->Mostra(adaptador->ObjInterface(), false, formClick);
    adaptador->DeixaPassar();
}

const int &ContratoHost::Conta(Evento<> &evento)
{
    int &vezes = m_Contagens.emplace_back(0);
    m_Conexoes.push_back(evento.liga([&vezes] { ++vezes; }));
    return vezes;
}

Ref<IDadosVor> ContratoHost::Dados()
{
    if (m_Dados.Nada()) {
        m_Dados = Host().CriaDadosVor();
        m_Dados->Inicializa(adaptador->ObjInterface());
    }
    return m_Dados;
}

Ref<IMensagem> ContratoHost::Mensagem()
{
    if (m_Mensagem.Nada()) {
        m_Mensagem = Host().CriaMensagem();
        m_Mensagem->DefineTitulo(adaptador->oAppEXE()->ProductName());
    }
    return m_Mensagem;
}

Ref<IMDB> ContratoHost::Banco()
{
    Ref<ITrataBD> trataBD = adaptador->objMTM()->CreateQMR()->CreateNewTrataBD();
    trataBD->InicializaInfoSistema("VOR", 1);
    return trataBD->AbreZTBanco(99);
}

Ref<ICursor> ContratoHost::Consulta(const std::string &sql)
{
    return Banco()->OpenRecordset(sql, InstantaneoSomenteLeitura, Valor(), Valor());
}

std::vector<std::string> ContratoHost::Coluna(const std::string &coluna, const std::string &sql)
{
    std::vector<std::string> valores;
    Ref<ICursor> cursor = Consulta(sql);
    for (; !cursor->EOF_(); cursor->MoveNext()) {
        valores.push_back(cursor->Fields(coluna)->Value().Texto());
    }
    cursor->Close();
    return valores;
}

Ref<IGateway> ContratoHost::Gateway()
{
    return adaptador->objMTM()->ObtemGateway();
}

bool ContratoHost::Comanda(const std::string &metodo, const Ref<Registro> &pedido)
{
    return Executa("EquiptoRN", metodo, pedido, nullptr);
}

bool ContratoHost::Executa(const std::string &classe, const std::string &metodo, const Ref<Registro> &pedido,
                           Valor *retorno)
{
    Ref<IProxyRN> proxy = Gateway()->CriaObjetoRN("VOR", classe, "ZTVORLIB", "4");
    Ref<Objeto> variavel = pedido;
    std::vector<Valor> parametros{Valor::PorReferencia(variavel)};
    Ref<Objeto> contexto;
    std::string nome = metodo;
    if (!proxy->ExecutaMetodo(contexto, nome, parametros)) {
        adaptador->FechaProximaCaixa();
        proxy->MostraErro();
        return false;
    }
    if (retorno != nullptr) {
        *retorno = proxy->ObtemRetorno();
    }
    return true;
}

Ref<EquiptoED> ContratoHost::EquipamentoNovo(const std::string &codigo)
{
    auto equipto = Novo<EquiptoED>();
    equipto->ClienteInc = adaptador->objMTM()->ClienteLogado();
    equipto->Codigo = codigo;
    equipto->SubCodigo = "";
    equipto->Descricao = "Radar da suíte";
    equipto->TipoAgente = 2;
    equipto->TipoEquip = "R";
    equipto->Modelo = "Modelo 1";
    equipto->CodMunic = CLng(Coluna("COD_MUNIC", "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 "
                                                 "ORDER BY NOME_MUNICIPIO")
                                 .at(0));
    equipto->ArquivoLayout = "NENHUM";
    equipto->TipoVia = "R";
    equipto->Ativo = 2; // as the module sends it
    equipto->VelocPermitida = 60;
    equipto->TemImagemEntrelacada = 2;
    equipto->TemLimiteDif = 2;
    equipto->TemPerfilMag = 2;
    return equipto;
}

std::int32_t ContratoHost::Incluido(const std::string &codigo)
{
    Ref<EquiptoED> guardado = Pede<EquiptoED>("inclui", EquipamentoNovo(codigo));
    if (guardado.Nada()) {
        ADD_FAILURE() << "the service refused an equipment";
        return 0;
    }
    return guardado->NroIntEquip;
}

Ref<EquiptoED> ContratoHost::SoNumero(std::int32_t nroIntEquip)
{
    auto equipto = Novo<EquiptoED>();
    equipto->NroIntEquip = nroIntEquip;
    return equipto;
}

Ref<EquiptoED> ContratoHost::Lido(std::int32_t nroIntEquip)
{
    return Pede<EquiptoED>("consulta", SoNumero(nroIntEquip));
}

Ref<EquiptoED> ContratoHost::Alteracao(std::int32_t nroIntEquip)
{
    auto alteracao = EquipamentoNovo("CTR_1");
    alteracao->NroIntEquip = nroIntEquip;
    alteracao->VersaoLida = Lido(nroIntEquip)->VersaoLida;
    alteracao->Ativo = 1;
    return alteracao;
}

std::int32_t ContratoHost::ComLimites()
{
    const std::int32_t numero = Incluido("CTR_1");
    auto alteracao = Alteracao(numero);
    alteracao->TemLimiteDif = 1;
    EXPECT_TRUE(Comanda("altera", alteracao));
    return numero;
}

Bytes ContratoHost::PdfMinimo()
{
    std::string pdf = "%PDF-1.4\n";
    std::vector<std::size_t> inicios;
    for (const char *objeto : {"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
                               "<</Type/Page/Parent 2 0 R/MediaBox[0 0 72 72]>>"}) {
        inicios.push_back(pdf.size());
        pdf += std::to_string(inicios.size()) + " 0 obj" + objeto + "endobj\n";
    }
    const std::size_t tabela = pdf.size();
    pdf += "xref\n0 4\n0000000000 65535 f \n";
    for (std::size_t inicio : inicios) {
        pdf += Format(static_cast<double>(inicio), "0000000000") + " 00000 n \n";
    }
    pdf += "trailer<</Size 4/Root 1 0 R>>\nstartxref\n" + std::to_string(tabela) + "\n%%EOF\n";
    return {pdf.begin(), pdf.end()};
}
