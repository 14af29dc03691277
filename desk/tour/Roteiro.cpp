#include "desk/tour/Roteiro.h"

#include "desk/tour/Telas.h"
#include "services/sample/Amostra.h"
#include "services/sample/CertificadoPDF.h"

#include <QDate>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTableWidget>
#include <QVariant>

namespace mesa {

namespace {

constexpr const char *Codigo = "ROTEIRO1";
constexpr const char *NomeDaConexao = "roteiro";

QString Digitada(const QDate &dia)
{
    return dia.toString("ddMMyyyy");
}
QString Mostrada(const QDate &dia)
{
    return dia.toString("dd/MM/yyyy");
}

// The first calibration runs from before today to after it; the second begins inside it.
QDate PrimeiraVerificacao()
{
    return QDate::currentDate().addDays(-300);
}
QDate PrimeiroVencimento()
{
    return QDate::currentDate().addDays(60);
}
QDate SegundaVerificacao()
{
    return QDate::currentDate().addDays(-10);
}
QDate SegundoVencimento()
{
    return QDate::currentDate().addDays(350);
}

constexpr int Estados = 10; // of the panel of deadlines

// The number that the panel shows of a state; below 0 while it shows none.
int NoEstado(int estado)
{
    for (const QWidget *inicio : Principal()->findChildren<QWidget *>("Inicio")) {
        const auto *botao = inicio->findChild<QWidget *>(QString("estado%1").arg(estado));
        if (inicio->isVisible() && botao != nullptr) {
            bool contado = false;
            const int quantos = botao->findChild<QLabel *>("quantos")->text().toInt(&contado);
            return contado ? quantos : -1;
        }
    }
    return -1;
}

} // namespace

Roteiro::Roteiro(std::filesystem::path registro, const QString &pasta, ServidorAoLado *servidor)
    : m_Registro(std::move(registro)),
      m_Pasta(pasta),
      m_Servidor(servidor),
      m_Condutor(pasta)
{
}

QString Roteiro::Resumo() const
{
    return QString("Roteiro completo: %1 passos e %2 conferências de telas e banco de dados, sem diferenças.")
        .arg(m_Condutor.Passos())
        .arg(m_Condutor.Conferencias());
}

QString Roteiro::NoBanco(const QString &sql) const
{
    QString valor;
    {
        QSqlDatabase banco = QSqlDatabase::addDatabase("QSQLITE", NomeDaConexao);
        banco.setDatabaseName(QString::fromStdString(m_Registro.string()));
        banco.setConnectOptions("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=10000");
        if (!banco.open()) {
            throw Diferenca("O registro não abriu para conferência: " + banco.lastError().text());
        }
        QSqlQuery consulta(banco);
        if (!consulta.exec(sql)) {
            throw Diferenca("A conferência não pôde ser feita: " + consulta.lastError().text());
        }
        valor = consulta.next() ? consulta.value(0).toString() : QString();
    }
    QSqlDatabase::removeDatabase(NomeDaConexao);
    return valor;
}

QString Roteiro::FazPDF() const
{
    const QString caminho = m_Pasta + "/certificado-de-exemplo.pdf";
    const Bytes bytes = FazCertificadoPDF("Certificado de Verificação Metrológica",
                                          {"Equipamento: ROTEIRO1", "Documento de exemplo, sem valor legal."});
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) ||
        arquivo.write(reinterpret_cast<const char *>(bytes.data()), static_cast<qint64>(bytes.size())) < 0) {
        throw Diferenca("Não foi possível gravar " + caminho);
    }
    return caminho;
}

void Roteiro::Percorre()
{
    m_Condutor.Relata("# Roteiro do registro de equipamentos");
    try {
        PercorreTudo();
    } catch (const Diferenca &diferenca) {
        m_Condutor.Relata(QString("\nDiferença: ") + diferenca.what());
        m_Condutor.GravaRelato();
        throw;
    }
    m_Condutor.Relata("\n" + Resumo());
    m_Condutor.GravaRelato();
}

void Roteiro::PercorreTudo()
{
    if (m_Servidor != nullptr) {
        EscolheServidor();
    }
    Entra("ana");
    Pesquisa();
    IncluiEquipamento();
    IncluiSensor();
    IncluiAfericoes();
    Salva();
    Limites();
    DiaEspecifico();
    HorarioProibido();
    DesativaEReativa();
    ConsultaParaAutuacao();
    if (m_Servidor != nullptr) {
        ServidorQueMorreNumaGravacao();
    }
    PrazosNoPainel();
    TrocaDeUsuario();
    if (const QStringList &cortes = m_Condutor.Cortes(); !cortes.isEmpty()) {
        throw Diferenca("Há o que não se lê inteiro:\n" + cortes.join('\n'));
    }
}

void Roteiro::EscolheServidor()
{
    m_Condutor.Passo("Começo num computador sem registro", [&] { m_Condutor.EsperaJanela("PrimeiroInicio"); });
    m_Condutor.Passo("Servidor escolhido", [&] {
        m_Condutor.Clica("servidor");
        m_Condutor.EsperaJanela("LugarDoRegistro");
        m_Condutor.Digita("endereco", m_Servidor->Onde());
    });
    m_Condutor.Passo("Digital do servidor", [&] {
        m_Condutor.Clica("usar");
        m_Condutor.EsperaJanela("DigitalDoServidor");
        QString emLinhas = m_Servidor->Digital();
        m_Condutor.ConfereTexto("digital", emLinhas.insert(72, '\n').insert(48, '\n').insert(24, '\n'));
    });
    m_Condutor.Passo("Servidor de confiança", [&] {
        m_Condutor.Clica("confiar");
        m_Condutor.EsperaJanela("Entrada");
        m_Condutor.ConfereTexto("onde", "Registro: servidor " + m_Servidor->Onde());
        m_Condutor.ConfereTexto("estadoServidor", "Servidor: " + m_Servidor->Onde());
    });
}

void Roteiro::Entra(const QString &usuario)
{
    m_Condutor.Passo("Entrada de " + usuario, [&] {
        m_Condutor.EsperaJanela("Entrada");
        m_Condutor.Digita("usuario", usuario);
        m_Condutor.Digita("senha", "senha errada");
        m_Condutor.Clica("entrar");
        m_Condutor.ConfereTexto("aviso", "Usuário ou senha incorretos.");
        m_Condutor.ConfereHabilitado("entrar", true);
        m_Condutor.Digita("senha", SenhaDaAmostra);
    });
    m_Condutor.Passo("Mesa aberta para " + usuario, [&] {
        m_Condutor.Clica("entrar");
        m_Condutor.EsperaSemJanela("Entrada");
        m_Condutor.ConfereTexto("estadoUsuario", "Usuário: Ana Bittencourt");
        m_Condutor.ConfereTexto("estadoCliente", "Cliente: Autoridade Estadual de Trânsito   Setor: Fiscalização");
        m_Condutor.ConfereFerramenta("mnuModVOREquiptos", true);
    });
}

void Roteiro::Pesquisa()
{
    m_Condutor.Passo("Janela de pesquisa", [&] {
        m_Condutor.ClicaMenu("Equipamentos", "Equipamentos com trabalho fotográfico...");
        m_Condutor.EsperaJanela("frmLista");
        m_Condutor.ConfereLinhas("ztlLista", 0);
        m_Condutor.ConfereHabilitado("ztlLista/mnuZTLObjEditar", false);
    });
    m_Condutor.Passo("Pesquisa por todos", [&] {
        m_Condutor.Clica("ztlLista_localizar");
        const int total = NoBanco("SELECT COUNT(*) FROM EQUIPAMENTO WHERE ClienteInc = 'Autoridade Estadual de "
                                  "Trânsito' AND Ativo = 1 AND TrabFoto = 1")
                              .toInt();
        m_Condutor.ConfereLinhas("ztlLista", qMin(total, 50));
        m_Condutor.ConfereTexto("ztlLista/titulo", "Autoridade Estadual de Trânsito");
        m_Condutor.ConfereHabilitado("ztlLista/mnuZTLObjEditar", true);
    });
}

void Roteiro::IncluiEquipamento()
{
    m_Condutor.Passo("Novo equipamento", [&] {
        m_Condutor.Clica("ztlLista/mnuZTLObjNovo");
        m_Condutor.EsperaJanela("frmEquipDetalhes");
        m_Condutor.ConfereHabilitado("ztCmdAplicar", false);
        m_Condutor.Digita("txtCodEquip", Codigo);
        m_Condutor.Digita("txtDescricao", "Lombada da Avenida do Forte");
        m_Condutor.Escolhe("cboTipoMedidor", "Fixo");
        m_Condutor.Escolhe("cboTipoEquip", "Lombada");
        m_Condutor.Digita("txtModelo", "Lombada Eletrônica LE-50");
        m_Condutor.ConfereHabilitado("ztCmdAplicar", true);
        m_Condutor.ConfereHabilitado("ztCmdOK", false);
    });
    m_Condutor.Passo("Dados do equipamento", [&] {
        m_Condutor.AbreAba("sstDados", 1);
        m_Condutor.Escolhe("cboMunic", "Porto Alegre");
        m_Condutor.Escolhe("cboArqLayout", "LOMBADA");
        m_Condutor.Digita("txtVelocPerm", "60");
        m_Condutor.ConfereTexto("lblTolerancia", "7 Km/h");
        m_Condutor.Clica("optUrbana");
        m_Condutor.ConfereTexto("optUrbana", "marcado");
    });
    m_Condutor.Passo("Inclusão aplicada", [&] {
        m_Condutor.Clica("ztCmdAplicar");
        m_Condutor.Responde("Confirma a inclusão?", "Sim");
        m_Condutor.EsperaAba("sstDados", 2);
        m_Condutor.Confere("descrição", NoBanco("SELECT Descricao FROM EQUIPAMENTO WHERE Codigo = 'ROTEIRO1'"),
                           "Lombada da Avenida do Forte");
        m_Condutor.Confere("velocidade permitida",
                           NoBanco("SELECT VelocPermitida FROM EQUIPAMENTO WHERE Codigo = 'ROTEIRO1'"), "60");
        m_Condutor.AbreAba("sstDados", 0);
        m_Condutor.ConfereTexto("lblOperador", "101");
        m_Condutor.ConfereTravado("cboTipoEquip");
    });
}

void Roteiro::IncluiSensor()
{
    m_Condutor.Passo("Sensor com endereço", [&] {
        m_Condutor.AbreAba("sstDados", 2);
        m_Condutor.Clica("ztListaSensor/mnuZTLObjNovo");
        m_Condutor.EsperaJanela("frmEquipSensores");
        m_Condutor.Escolhe("ztEndereco1/municipio", "Porto Alegre");
        m_Condutor.Digita("ztEndereco1/via", "bento goncalves");
        m_Condutor.Digita("ztEndereco1/numero", "1500");
        m_Condutor.Clica("ztEndereco1/usar");
        m_Condutor.ConfereTexto("txtLocalInfr", "Rua Bento Gonçalves, 1500 - Centro");
    });
    m_Condutor.Passo("Sensor na lista", [&] {
        m_Condutor.Clica("cmdOK");
        m_Condutor.EsperaJanela("frmEquipDetalhes");
        m_Condutor.ConfereLinhas("ztListaSensor", 1);
        m_Condutor.ConfereCelula("ztListaSensor", 1, "Endereço", "Rua Bento Gonçalves, 1500 - Centro");
    });
}

void Roteiro::PreencheAfericao(const QString &numero, const QString &verificacao, const QString &vencimento)
{
    m_Condutor.Clica("ztListaAfericao/mnuZTLObjNovo");
    m_Condutor.EsperaJanela("frmEquipAfericoes");
    m_Condutor.Digita("txtNroINMETRO", numero);
    m_Condutor.Digita("txtMarcaINMETRO", numero + "01");
    m_Condutor.Digita("txtDtVerifINMETRO", verificacao);
    m_Condutor.Digita("txtDtVencINMETRO", vencimento);
    m_Condutor.Clica("cmdProcurar");
    m_Condutor.EscolheArquivo(FazPDF());
}

void Roteiro::IncluiAfericoes()
{
    m_Condutor.Passo("Documento escolhido", [&] {
        m_Condutor.ClicaLinha("ztListaSensor", 1);
        m_Condutor.Clica("ztListaSensor/mnuZTLObjEditar");
        m_Condutor.EsperaJanela("frmEquipSensores");
        m_Condutor.AbreAba("sstDados", 1);
        PreencheAfericao("10000001", Digitada(PrimeiraVerificacao()), Digitada(PrimeiroVencimento()));
        m_Condutor.EsperaJanela("VisorPDF");
        m_Condutor.EsperaPaginas("paginas");
    });
    m_Condutor.Passo("Aferição com documento enviado", [&] {
        m_Condutor.FechaJanela("VisorPDF");
        m_Condutor.ConfereHabilitado("cmdUpload", true);
        m_Condutor.Clica("cmdUpload");
        m_Condutor.ConfereTexto("lblMsgCert", "Upload Concluido!");
        m_Condutor.Confere("documentos do cliente enviados agora",
                           NoBanco("SELECT COUNT(*) FROM DOCUMENTO WHERE NroDocumento NOT IN (SELECT NroIntImgCertif "
                                   "FROM AFERICAO WHERE NroIntImgCertif IS NOT NULL)"),
                           "1");
    });
    m_Condutor.Passo("Primeira aferição", [&] {
        m_Condutor.Clica("cmdOK");
        m_Condutor.EsperaJanela("frmEquipSensores");
        m_Condutor.ConfereLinhas("ztListaAfericao", 1);
        m_Condutor.ConfereCelula("ztListaAfericao", 1, "Dt.Vencimento", Mostrada(PrimeiroVencimento()));
    });
    m_Condutor.Passo("Segunda aferição em conflito", [&] {
        PreencheAfericao("10000002", Digitada(SegundaVerificacao()), Digitada(SegundoVencimento()));
        m_Condutor.FechaJanela("VisorPDF");
        m_Condutor.Clica("cmdUpload");
        m_Condutor.ConfereTexto("lblMsgCert", "Upload Concluido!");
        m_Condutor.Clica("cmdOK");
        m_Condutor.Responde("em conflito com a", "Sim");
        m_Condutor.EsperaJanela("frmEquipSensores");
        m_Condutor.ConfereLinhas("ztListaAfericao", 2);
        m_Condutor.ConfereCelula("ztListaAfericao", 1, "Dt.Vencimento", Mostrada(SegundaVerificacao().addDays(-1)));
        m_Condutor.ConfereCelula("ztListaAfericao", 2, "Dt.Verificação", Mostrada(SegundaVerificacao()));
    });
    m_Condutor.Passo("Sensor confirmado", [&] {
        m_Condutor.Clica("cmdOK");
        m_Condutor.EsperaJanela("frmEquipDetalhes");
        m_Condutor.ConfereHabilitado("ztCmdOK", true);
    });
}

void Roteiro::Salva()
{
    m_Condutor.Passo("Opções do equipamento", [&] {
        m_Condutor.AbreAba("sstDados", 4);
        m_Condutor.Clica("optTrabDiasDif_1");
        m_Condutor.ConfereHabilitado("chkRejeicaoAuto", true);
        m_Condutor.Clica("chkRejeicaoAuto");
        m_Condutor.Escolhe("cboRejeicao", "Horário com limite diferenciado");
    });
    m_Condutor.Passo("Equipamento salvo", [&] {
        m_Condutor.Clica("ztCmdOK");
        m_Condutor.Responde("Confirma a alteração?", "Sim");
        m_Condutor.EsperaJanela("frmLista");
        const QString doEquipamento =
            " FROM AFERICAO A JOIN SENSOR S ON S.NroIntSensor = A.NroIntSensor JOIN EQUIPAMENTO E ON "
            "E.NroIntEquip = S.NroIntEquip WHERE E.Codigo = 'ROTEIRO1' AND A.Ativo = 1";
        m_Condutor.Confere("aferições ativas", NoBanco("SELECT COUNT(*)" + doEquipamento), "2");
        m_Condutor.Confere("vencimento da primeira", NoBanco("SELECT MIN(A.DataVencimento)" + doEquipamento),
                           SegundaVerificacao().addDays(-1).toString("yyyyMMdd"));
        m_Condutor.Confere("verificação da segunda", NoBanco("SELECT MAX(A.DataVerificacao)" + doEquipamento),
                           SegundaVerificacao().toString("yyyyMMdd"));
        m_Condutor.Confere("limites diferenciados",
                           NoBanco("SELECT TemLimiteDif FROM EQUIPAMENTO WHERE Codigo = 'ROTEIRO1'"), "1");
        m_Condutor.Confere("rejeição", NoBanco("SELECT NroIntRejLimDif FROM EQUIPAMENTO WHERE Codigo = 'ROTEIRO1'"),
                           "10");
    });
}

void Roteiro::ProcuraPeloCodigo(const QString &codigo)
{
    m_Condutor.Escolhe("cboCriterio", "Código");
    m_Condutor.Digita("txtCodEquip", codigo);
    m_Condutor.Clica("ztlLista_localizar");
}

void Roteiro::Limites()
{
    m_Condutor.Passo("Pesquisa pelo código", [&] {
        ProcuraPeloCodigo(Codigo);
        m_Condutor.ConfereLinhas("ztlLista", 1);
        m_Condutor.ConfereCelula("ztlLista", 1, "Município", "Porto Alegre");
        m_Condutor.ConfereTexto("ztlLista/titulo", "Autoridade Estadual de Trânsito - Cód. Equipto.: ROTEIRO1");
    });
    m_Condutor.Passo("Limite diferenciado em três dias", [&] {
        m_Condutor.Clica("ztlLista/mnuZTLObjLimitesDif");
        m_Condutor.EsperaJanela("frmLimitesDif");
        m_Condutor.ConfereLinhas("ztLista", 0);
        m_Condutor.Clica("ztLista/mnuZTLObjNovo");
        m_Condutor.EsperaJanela("frmLimitesDifDetalhes");
        for (const char *dia : {"chkDia_2", "chkDia_4", "chkDia_6"}) {
            m_Condutor.Clica(dia);
            m_Condutor.ConfereTexto(dia, "marcado");
        }
        m_Condutor.Digita("ztmHInicial", "0800");
        m_Condutor.ConfereTexto("ztmHInicial", "08:00");
        m_Condutor.Digita("ztmHFinal", "1200");
        m_Condutor.Digita("txtVelocPerm", "40");
    });
    m_Condutor.Passo("Três limites na lista", [&] {
        m_Condutor.Clica("ztCmdOK");
        m_Condutor.EsperaJanela("frmLimitesDif");
        m_Condutor.ConfereLinhas("ztLista", 3);
        m_Condutor.ConfereCelula("ztLista", 1, "Veloc. Perm.", "40 Km");
        m_Condutor.Confere("limites ativos",
                           NoBanco("SELECT COUNT(*) FROM LIMITE L JOIN EQUIPAMENTO E ON E.NroIntEquip = L.NroIntEquip "
                                   "WHERE E.Codigo = 'ROTEIRO1' AND L.Ativo = 1 AND L.TipoLimite = 1"),
                           "3");
    });
    m_Condutor.Passo("Limites fechados", [&] {
        m_Condutor.FechaJanela("frmLimitesDif");
        m_Condutor.EsperaJanela("frmLista");
    });
}

void Roteiro::DiaEspecifico()
{
    m_Condutor.Passo("Dia específico", [&] {
        m_Condutor.Clica("ztlLista/mnuZTLObjDiasEspec");
        m_Condutor.EsperaJanela("frmLimitesDif");
        m_Condutor.Clica("ztLista/mnuZTLObjNovo");
        m_Condutor.EsperaJanela("frmLimitesDifDetalhes");
        m_Condutor.Digita("ztdData", Digitada(QDate::currentDate().addDays(15)));
        m_Condutor.Digita("ztmHInicial", "0000");
        m_Condutor.Digita("ztmHFinal", "2359");
        m_Condutor.Digita("txtVelocPerm", "30");
    });
    m_Condutor.Passo("Dia específico na lista", [&] {
        m_Condutor.Clica("ztCmdOK");
        m_Condutor.EsperaJanela("frmLimitesDif");
        m_Condutor.ConfereLinhas("ztLista", 1);
        m_Condutor.ConfereCelula("ztLista", 1, "Dia", Mostrada(QDate::currentDate().addDays(15)));
        m_Condutor.Confere("dias ativos",
                           NoBanco("SELECT COUNT(*) FROM DIA D JOIN EQUIPAMENTO E ON E.NroIntEquip = D.NroIntEquip "
                                   "WHERE E.Codigo = 'ROTEIRO1' AND D.Ativo = 1"),
                           "1");
        m_Condutor.FechaJanela("frmLimitesDif");
        m_Condutor.EsperaJanela("frmLista");
    });
}

void Roteiro::HorarioProibido()
{
    m_Condutor.Passo("Horário proibido", [&] {
        m_Condutor.Escolhe("cboCriterio", "Todos");
        m_Condutor.Escolhe("cboTipoEquipto", "Agente Eletrônico");
        m_Condutor.Clica("ztlLista_localizar");
        m_Condutor.ClicaLinha("ztlLista", 1);
        m_Condutor.ConfereHabilitado("ztlLista/mnuZTLObjLimitesDif", false);
        m_Condutor.Clica("ztlLista/mnuZTLObjHorarioProib");
        m_Condutor.EsperaJanela("frmLimitesDif");
        m_Condutor.ConfereLinhas("ztLista", 2);
        m_Condutor.Clica("ztLista/mnuZTLObjNovo");
        m_Condutor.EsperaJanela("frmLimitesDifDetalhes");
        m_Condutor.Clica("chkDia_8");
        m_Condutor.Digita("ztmHInicial", "2200");
        m_Condutor.Digita("ztmHFinal", "2359");
    });
    m_Condutor.Passo("Horário proibido na lista", [&] {
        m_Condutor.Clica("ztCmdOK");
        m_Condutor.EsperaJanela("frmLimitesDif");
        m_Condutor.ConfereLinhas("ztLista", 3);
        m_Condutor.FechaJanela("frmLimitesDif");
        m_Condutor.EsperaJanela("frmLista");
        m_Condutor.Escolhe("cboTipoEquipto", "Todos");
    });
}

void Roteiro::DesativaEReativa()
{
    m_Condutor.Passo("Equipamento desativado", [&] {
        ProcuraPeloCodigo(Codigo);
        m_Condutor.ConfereLinhas("ztlLista", 1);
        m_Condutor.Clica("ztlLista/mnuZTLObjReativar");
        m_Condutor.Responde("Deseja desativar o equipamento ROTEIRO1 ?", "Sim");
        m_Condutor.Responde("Não foram encontrados registros para os critérios especificados.", "OK");
        m_Condutor.ConfereLinhas("ztlLista", 0);
        m_Condutor.Confere("situação", NoBanco("SELECT Ativo FROM EQUIPAMENTO WHERE Codigo = 'ROTEIRO1'"), "2");
    });
    m_Condutor.Passo("Equipamento reativado", [&] {
        m_Condutor.Clica("chkInativos");
        m_Condutor.Clica("ztlLista_localizar");
        m_Condutor.ConfereLinhas("ztlLista", 1);
        m_Condutor.ConfereHabilitado("ztlLista/mnuZTLObjEditar", false);
        m_Condutor.Clica("ztlLista/mnuZTLObjReativar");
        m_Condutor.Responde("Deseja reativar o equipamento ROTEIRO1 ?", "Sim");
        m_Condutor.Responde("Não foram encontrados registros para os critérios especificados.", "OK");
        m_Condutor.Confere("situação", NoBanco("SELECT Ativo FROM EQUIPAMENTO WHERE Codigo = 'ROTEIRO1'"), "1");
        m_Condutor.Clica("chkInativos");
    });
}

void Roteiro::PrazosNoPainel()
{
    m_Condutor.Passo("Painel de prazos", [&] {
        m_Condutor.ClicaMenu("Equipamentos", "Painel de prazos");
        m_Condutor.Espera("o painel foi contado", [] { return NoEstado(1) >= 0; });
        int soma = 0;
        for (int estado = 1; estado <= Estados; ++estado) {
            soma += NaTela([&] { return NoEstado(estado); });
        }
        m_Condutor.Confere("soma dos estados", QString::number(soma),
                           NoBanco("SELECT COUNT(*) FROM EQUIPAMENTO WHERE ClienteInc = 'Autoridade Estadual de "
                                   "Trânsito' AND Ativo = 1"));
    });
    m_Condutor.Passo("Lista de um número do painel", [&] {
        const int quantos = NaTela([] { return NoEstado(1); });
        m_Condutor.Clica("estado1");
        m_Condutor.EsperaJanela("JanelaDePrazos");
        m_Condutor.Confere(
            "linhas da lista", QString::number(NaTela([] {
                return qobject_cast<QTableWidget *>(Procura(Principal(), "JanelaDePrazos/linhas"))->rowCount();
            })),
            QString::number(quantos));
    });
    m_Condutor.Passo("Lista do painel fechada", [&] {
        m_Condutor.Tecla(Qt::Key_F4, Qt::ControlModifier);
        m_Condutor.EsperaSemJanela("JanelaDePrazos");
    });
}

void Roteiro::ConsultaParaAutuacao()
{
    // Another module sees the equipment outside photo work: one with a calibration in force today, and one without.
    const QString hoje = QDate::currentDate().toString("yyyyMMdd");
    const QString vigente = "EXISTS (SELECT 1 FROM SENSOR S JOIN AFERICAO A ON A.NroIntSensor = S.NroIntSensor WHERE "
                            "S.NroIntEquip = E.NroIntEquip AND S.Ativo = 1 AND A.Ativo = 1 AND A.DataVerificacao <= " +
                            hoje + " AND A.DataVencimento >= " + hoje + ")";
    const QString base = "FROM EQUIPAMENTO E WHERE E.ClienteInc = 'Autoridade Estadual de Trânsito' AND E.Ativo = 1 "
                         "AND E.TrabFoto = 2 AND ";
    const QString codigo = NoBanco("SELECT E.Codigo " + base + vigente + " ORDER BY E.NroIntEquip");
    const QString semVigente = NoBanco("SELECT E.Codigo " + base + "NOT " + vigente + " ORDER BY E.NroIntEquip");
    const auto daAfericao = [&](const QString &campo) {
        return NoBanco("SELECT A." + campo +
                       " FROM AFERICAO A JOIN SENSOR S ON S.NroIntSensor = A.NroIntSensor JOIN "
                       "EQUIPAMENTO E ON E.NroIntEquip = S.NroIntEquip WHERE E.Codigo = '" +
                       codigo + "' AND A.Ativo = 1 AND A.DataVerificacao <= " + hoje +
                       " AND A.DataVencimento >= " + hoje);
    };

    m_Condutor.Passo("Consulta de outro módulo", [&] {
        m_Condutor.ClicaMenu("Equipamentos", "Consulta para autuação...");
        m_Condutor.EsperaJanela("ConsultaAutuacao");
        m_Condutor.Digita("codigo", codigo);
        m_Condutor.Clica("selecionar");
        m_Condutor.EsperaJanela("frmLista");
        m_Condutor.ConfereLinhas("ztlLista", 1);
        m_Condutor.ClicaLinha("ztlLista", 1);
    });
    m_Condutor.Passo("Equipamento selecionado pela data da infração", [&] {
        m_Condutor.Clica("cmdOK");
        m_Condutor.EsperaJanela("ConsultaAutuacao");
        m_Condutor.ConfereTexto("resultado", "Equipamento selecionado.");
        m_Condutor.ConfereTexto("resposta1",
                                NoBanco("SELECT NroIntEquip FROM EQUIPAMENTO WHERE Codigo = '" + codigo + "'"));
        m_Condutor.ConfereTexto("resposta3", codigo);
        m_Condutor.ConfereTexto("resposta5", daAfericao("Numero"));
        m_Condutor.ConfereTexto("resposta6", daAfericao("Marca"));
        m_Condutor.ConfereTexto("resposta7", Mostrada(QDate::fromString(daAfericao("DataVerificacao"), "yyyyMMdd")));
    });
    if (!semVigente.isEmpty()) {
        m_Condutor.Passo("Busca de equipamento sem aferição vigente", [&] {
            m_Condutor.Digita("codigo", semVigente);
            m_Condutor.Clica("buscar");
            m_Condutor.Responde("Equipamento não possui Aferição Vigente para a data de Infração.", "OK");
            m_Condutor.ConfereTexto("resposta3", "");
        });
    }
    m_Condutor.Passo("Busca pelo código", [&] {
        m_Condutor.Digita("codigo", codigo.toLower());
        m_Condutor.Clica("buscar");
        m_Condutor.ConfereTexto("resultado", "Equipamento encontrado.");
        m_Condutor.ConfereTexto("resposta3", codigo);
    });
    m_Condutor.Passo("Certificado da aferição", [&] {
        m_Condutor.ConfereTexto("codOat", daAfericao("NroIntAfericao"));
        m_Condutor.Clica("imprimir");
        m_Condutor.EsperaJanela("VisorPDF");
        m_Condutor.EsperaPaginas("paginas");
    });
    m_Condutor.Passo("Certificado fechado", [&] {
        m_Condutor.FechaJanela("VisorPDF");
        m_Condutor.ConfereTexto("resultado", "Certificado aberto.");
    });
}

void Roteiro::ServidorQueMorreNumaGravacao()
{
    const auto alteracoes = [&] {
        return NoBanco("SELECT COUNT(*) FROM HISTORICO H JOIN EQUIPAMENTO E ON E.NroIntEquip = H.NroEntidade WHERE "
                       "H.Entidade = 'EQUIPAMENTO' AND H.Acao = 'altera' AND E.Codigo = 'ROTEIRO1'");
    };
    const int antes = alteracoes().toInt();
    m_Condutor.Passo("Gravação que o servidor não responde", [&] {
        m_Condutor.EsperaJanela("ConsultaAutuacao");
        m_Condutor.ClicaMenu("Janela", "Fechar");
        m_Condutor.EsperaJanela("frmLista");
        ProcuraPeloCodigo(Codigo);
        m_Condutor.ConfereLinhas("ztlLista", 1);
        m_Condutor.ClicaLinha("ztlLista", 1);
        m_Condutor.Clica("ztlLista/mnuZTLObjEditar");
        m_Condutor.EsperaJanela("frmEquipDetalhes");
        m_Condutor.Digita("txtDescricao", "Lombada da Avenida do Forte, 200");
        m_Servidor->Emudece();
        m_Condutor.Clica("ztCmdOK");
        m_Condutor.Responde("Confirma a alteração?", "Sim");
        m_Condutor.EsperaJanela("Andamento");
    });
    m_Condutor.Passo("Servidor que morre na gravação", [&] {
        m_Servidor->Mata();
        m_Condutor.EsperaJanela("SemResposta");
        m_Condutor.ConfereTexto("estadoServidor", "Servidor: " + m_Servidor->Onde() + " (sem conexão)");
    });
    m_Condutor.Passo("Servidor que volta", [&] {
        m_Servidor->Comeca();
        m_Condutor.Clica("deNovo");
        m_Condutor.EsperaJanela("SessaoTerminada");
        m_Condutor.ConfereTexto("usuario", "ana");
        m_Condutor.Digita("senha", SenhaDaAmostra);
    });
    m_Condutor.Passo("Gravação feita uma vez", [&] {
        m_Condutor.Clica("entrar");
        m_Condutor.EsperaJanela("frmLista");
        m_Condutor.ConfereTexto("estadoServidor", "Servidor: " + m_Servidor->Onde());
        m_Condutor.Confere("descrição", NoBanco("SELECT Descricao FROM EQUIPAMENTO WHERE Codigo = 'ROTEIRO1'"),
                           "Lombada da Avenida do Forte, 200");
        m_Condutor.Confere("alterações no histórico", alteracoes(), QString::number(antes + 1));
    });
}

void Roteiro::TrocaDeUsuario()
{
    m_Condutor.Passo("Saída fecha todas as janelas", [&] {
        m_Condutor.ClicaMenu("Equipamentos", "Trocar de usuário...");
        m_Condutor.EsperaJanela("Entrada");
        m_Condutor.ConfereTexto("estadoUsuario", "Ninguém entrou");
        m_Condutor.Digita("usuario", "carla");
        m_Condutor.Digita("senha", SenhaDaAmostra);
    });
    m_Condutor.Passo("Usuária sem permissão", [&] {
        m_Condutor.Clica("entrar");
        m_Condutor.EsperaJanela("Mesa");
        m_Condutor.ConfereTexto("estadoUsuario", "Usuário: Carla Nunes");
        m_Condutor.ConfereFerramenta("mnuModVOREquiptos", false);
        m_Condutor.ConfereFerramenta("mnuModNABEquiptos", false);
    });
}

} // namespace mesa
