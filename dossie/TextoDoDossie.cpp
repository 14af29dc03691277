#include "dossie/TextoDoDossie.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/Calendario.h"
#include "services/TextoQt.h"

#include <QStringList>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace dossie {

using namespace mesa;

namespace {

const QString Estilo = R"(
    h1 { font-size: 16pt; margin-bottom: 0px; }
    h2 { font-size: 11pt; margin-top: 14px; margin-bottom: 4px; }
    p { margin-top: 2px; margin-bottom: 4px; }
    th { text-align: left; background-color: #e8e8e8; }
)";

QString Escapa(const std::string &texto)
{
    return Q(texto).toHtmlEscaped();
}

QString Paragrafo(const std::string &texto)
{
    return "<p>" + Escapa(texto) + "</p>";
}

QString Secao(const std::string &titulo)
{
    return "<h2>" + Escapa(titulo) + "</h2>";
}

// One column of a table: what stands over it, and its part of the width.
struct Coluna {
    std::string Nome;
    int Parte; // per cent
};

QString Tabela(const std::vector<Coluna> &colunas, const std::vector<std::vector<std::string>> &linhas)
{
    QString html = R"(<table width="100%" border="1" cellspacing="0" cellpadding="4" )"
                   R"(style="border-collapse: collapse; border-color: #808080;"><thead><tr>)";
    for (const Coluna &coluna : colunas) {
        html += QString(R"(<th width="%1%">)").arg(coluna.Parte) + Escapa(coluna.Nome) + "</th>";
    }
    html += "</tr></thead>";
    for (const auto &linha : linhas) {
        html += "<tr>";
        for (const std::string &celula : linha) {
            html += "<td>" + Escapa(celula) + "</td>";
        }
        html += "</tr>";
    }
    return html + "</table>";
}

using Ficha = std::vector<std::pair<std::string, std::string>>;

// Names and what they stand for; what is empty is told as such.
QString Dados(const Ficha &ficha)
{
    QString html = R"(<table width="100%" border="1" cellspacing="0" cellpadding="4" )"
                   R"(style="border-collapse: collapse; border-color: #808080;">)";
    for (const auto &[nome, valor] : ficha) {
        html += R"(<tr><td width="30%"><b>)" + Escapa(nome) + R"(</b></td><td width="70%">)" +
                (valor.empty() ? QString("—") : Escapa(valor)) + "</td></tr>";
    }
    return html + "</table>";
}

std::string Situacao(std::uint8_t ativo)
{
    return ativo == Indicador::Nao ? "desativado" : "ativo";
}

std::string Dia(Data data)
{
    return TextoDoDia(DiaCivil(data));
}

// A hash is read in groups.
std::string EmGrupos(const std::string &soma)
{
    std::string texto;
    for (std::size_t n = 0; n < soma.size(); ++n) {
        texto += (n > 0 && n % 8 == 0 ? " " : "") + soma.substr(n, 1);
    }
    return texto;
}

std::string Inteiro(double numero)
{
    return Format(numero, "0");
}

QString Identificacao(const ProvaED &prova)
{
    const EquiptoED &e = *prova.Equipamento.Valor()->Item(1);
    return Secao("1. Identificação") +
           Dados(
               {{"Código", e.Codigo},
                {"Subcódigo", e.SubCodigo},
                {"Descrição", e.Descricao},
                {"Tipo de equipamento", prova.TipoEmPalavras},
                {"Marca/modelo", e.Modelo},
                {"Cliente", prova.Cliente},
                {"Setor", e.SetorInc},
                {"Município", prova.Municipio},
                {"Velocidade permitida", e.VelocPermitida.Valor() == 0 ? "" : CStr(e.VelocPermitida.Valor()) + " km/h"},
                {"Situação no registro", Situacao(e.Ativo)},
                {"Número interno", CStr(e.NroIntEquip.Valor())}});
}

std::string Endereco(const SensorED &sensor, const ProvaED &prova)
{
    std::string endereco;
    const ListaDe<LocalProvadoED> &locais = prova.Locais;
    for (std::int32_t n = 1; n <= locais->Count(); ++n) {
        if (locais->Item(n)->NroIntSensor.Valor() == sensor.NroIntSensor.Valor()) {
            endereco = locais->Item(n)->Logradouro;
        }
    }
    const auto junta = [&](const std::string &parte) {
        endereco += (endereco.empty() || parte.empty() ? "" : ", ") + parte;
    };
    junta(sensor.EndNro.Valor() == 0 ? "" : CStr(sensor.EndNro.Valor()));
    junta(sensor.EndCompl);
    junta(sensor.EndDescr);
    junta(sensor.EndCep.Valor() == 0 ? "" : "CEP " + Format(CDbl(sensor.EndCep.Valor()), "00000-000"));
    return endereco;
}

QString Sensores(const ProvaED &prova)
{
    const ListaDe<SensorED> &sensores = prova.Equipamento.Valor()->Item(1)->Sensores;
    std::vector<std::vector<std::string>> linhas;
    for (std::int32_t n = 1; n <= sensores->Count(); ++n) {
        const SensorED &sensor = *sensores->Item(n);
        linhas.push_back({CStr(sensor.NroSensor.Valor()), Endereco(sensor, prova), sensor.LocalInfr, sensor.SentidoVia,
                          Situacao(sensor.Ativo)});
    }
    return Secao("2. Sensores e endereços") + (linhas.empty() ? Paragrafo("O equipamento não tem sensor no registro.")
                                                              : Tabela({{"Sensor", 9},
                                                                        {"Endereço", 33},
                                                                        {"Endereço na notificação", 27},
                                                                        {"Sentido da via", 17},
                                                                        {"Situação", 14}},
                                                                       linhas));
}

std::string NroDoSensor(const ProvaED &prova)
{
    const ListaDe<SensorED> &sensores = prova.Equipamento.Valor()->Item(1)->Sensores;
    for (std::int32_t n = 1; n <= sensores->Count(); ++n) {
        if (sensores->Item(n)->NroIntSensor.Valor() == prova.NroIntSensor.Valor()) {
            return CStr(sensores->Item(n)->NroSensor.Valor());
        }
    }
    return "";
}

QString EmVigor(const ProvaED &prova, const Certificado &certificado, bool desenhado)
{
    const QString titulo = Secao("3. Aferição em vigor em " + Dia(prova.Dia));
    if (prova.Vigente.Valor()->Count() == 0) {
        return titulo + "<p><b>Nenhuma aferição estava em vigor.</b> " + Escapa(prova.SemVigente) + "</p>";
    }
    const AfericaoED &a = *prova.Vigente.Valor()->Item(1);
    const bool declaracao = a.TipoAfer.Valor() == 2;
    const std::string documento =
        certificado.Falta.empty()
            ? "Documento " + Inteiro(prova.Documento) + ", de " + Inteiro(prova.TamanhoDoDocumento) +
                  " bytes: anexado a este arquivo, byte por byte, com o nome " + NomeDoCertificado +
                  (desenhado ? "; as suas páginas vêm depois dos fatos" : "; as suas páginas não podem ser desenhadas")
            : "Documento " + Inteiro(prova.Documento) + ": NÃO ESTÁ NESTE ARQUIVO. " + certificado.Falta;
    return titulo + Dados({{"Espécie", declaracao ? "declaração de conformidade" : "aferição"},
                           {"Número INMETRO", a.Numero},
                           {declaracao ? "Declaração" : "Certificado", a.Marca},
                           {"Data de verificação", Dia(a.DataVerificacao)},
                           {"Data de vencimento", Dia(a.DataVencimento)},
                           {"Sensor", NroDoSensor(prova)},
                           {"Portaria DIMEL", a.PortDimel},
                           {"Certificado", documento},
                           {"SHA-256 do certificado", EmGrupos(prova.Sha256DoDocumento)}});
}

std::string EspecieEmPalavras(std::uint8_t especie)
{
    switch (especie) {
    case 1:
        return "Horário proibido";
    case 2:
        return "Dia específico";
    case 3:
        return "Limite de feriado";
    case 4:
        return "Limite do dia da semana";
    default:
        return "Velocidade do equipamento";
    }
}

QString Limites(const ProvaED &prova)
{
    const ListaDe<LimiteProvadoED> &limites = prova.Limites;
    const QString titulo = Secao("4. Limites, dias específicos e horários proibidos de " + MomentoDoFato(prova));
    if (limites->Count() == 0) {
        return titulo + Paragrafo("Nenhum limite casa com o momento.");
    }
    std::vector<std::vector<std::string>> linhas;
    for (std::int32_t n = 1; n <= limites->Count(); ++n) {
        const LimiteProvadoED &l = *limites->Item(n);
        const auto velocidade = [](std::int16_t v) { return v == 0 ? std::string("—") : CStr(v) + " km/h"; };
        linhas.push_back({l.Ordem.Valor() == 0 ? "não vale" : CStr(l.Ordem.Valor()) + "º", EspecieEmPalavras(l.Especie),
                          TextoDaHora(l.HoraInicio) + " a " + TextoDaHora(l.HoraFim), velocidade(l.VelocPerm),
                          velocidade(l.VelocMin), l.Nota});
    }
    return titulo +
           Paragrafo(
               "Na ordem em que se aplicam: horário proibido, dia específico, limite de feriado, limite do dia da "
               "semana, velocidade do equipamento. Contam como estavam no registro no momento do fato; o que "
               "mudou depois está na observação.") +
           Tabela(
               {{"Ordem", 9}, {"Espécie", 21}, {"Horário", 16}, {"Permitida", 12}, {"Mínima", 11}, {"Observação", 31}},
               linhas);
}

QString Entradas(const ListaDe<EntradaProvadaED> &entradas, const std::string &nenhuma)
{
    if (entradas->Count() == 0) {
        return Paragrafo(nenhuma);
    }
    std::vector<std::vector<std::string>> linhas;
    for (std::int32_t n = 1; n <= entradas->Count(); ++n) {
        const EntradaProvadaED &e = *entradas->Item(n);
        linhas.push_back({Inteiro(e.Entrada), e.Momento, e.Quem.Valor().empty() ? "o sistema" : e.Quem.Valor(),
                          e.Assunto.Valor() + ": " + e.OQue.Valor(), e.Motivo});
    }
    return Tabela({{"Entrada", 12}, {"Quando", 17}, {"Quem", 16}, {"O quê", 35}, {"Motivo", 20}}, linhas);
}

std::string EntradaEElo(const ListaDe<EntradaProvadaED> &entradas)
{
    if (entradas->Count() == 0) {
        return "";
    }
    const EntradaProvadaED &e = *entradas->Item(1);
    return "entrada " + Inteiro(e.Entrada) + ", elo " + EmGrupos(e.Elo);
}

QString Provas(const ProvaED &prova, const std::string &sha256DosFatos)
{
    return Secao("8. Prova") +
           Paragrafo("Cada entrada do histórico tem um elo, que é um resumo (SHA-256) sobre ela e sobre o elo da "
                     "entrada anterior: nenhuma pode ser mudada, posta ou tirada sem que todos os elos seguintes o "
                     "digam. Este arquivo tem um selo sobre todos os seus bytes. O comando \"Conferir dossiê\" do "
                     "registro diz se o arquivo está como foi feito e se o registro ainda concorda com ele.") +
           Dados({{"Registro", prova.Identificador},
                  {"Entrada da aferição", EntradaEElo(prova.EntradaDaAfericao)},
                  {"Entrada do documento", EntradaEElo(prova.EntradaDoDocumento)},
                  {"Última entrada que contou",
                   "entrada " + Inteiro(prova.Corte) + ", elo " + EmGrupos(prova.EloDoCorte)},
                  {"Fim do histórico na emissão",
                   "entrada " + Inteiro(prova.Cabeca) + ", elo " + EmGrupos(prova.EloDaCabeca)},
                  {std::string("SHA-256 de ") + NomeDosFatos, EmGrupos(sha256DosFatos)}});
}

} // namespace

std::string Titulo(const ProvaED &prova)
{
    return "Dossiê do equipamento " + prova.Equipamento.Valor()->Item(1)->Codigo.Valor();
}

std::string MomentoDoFato(const ProvaED &prova)
{
    return Dia(prova.Dia) + (prova.Hora.Valor() < 0 ? ", o dia inteiro" : ", às " + TextoDaHora(prova.Hora));
}

QString TextoDoDossie(const mesa::ProvaED &prova, const Certificado &certificado, bool desenhado,
                      const std::string &sha256DosFatos)
{
    QString html = "<html><head><style>" + Estilo + "</style></head><body><h1>" + Escapa(Titulo(prova)) + "</h1>";
    html += "<p>Momento do fato: <b>" + Escapa(MomentoDoFato(prova)) + "</b><br>" +
            (prova.ConhecidoEm.Valor().empty()
                 ? QString("Como o registro o conhece na emissão.")
                 : "Como o registro o conhecia em <b>" + Escapa(prova.ConhecidoEm) + "</b>.") +
            "<br>Emitido em " + Escapa(prova.EmitidoEm) + " por " + Escapa(prova.EmitidoPor) + ".</p>";
    if (!prova.Ressalva.Valor().empty()) {
        html += "<p><b>Ressalva:</b> " + Escapa(prova.Ressalva) + "</p>";
    }
    html += Identificacao(prova) + Sensores(prova) + EmVigor(prova, certificado, desenhado) + Limites(prova);
    html += Secao("5. Desativações e reativações") +
            Entradas(prova.Desativacoes, "O equipamento e os seus sensores nunca foram desativados.");
    html += Secao("6. Versões das aferições que têm, ou tiveram, o dia no seu período") +
            Entradas(prova.Versoes, "Nenhuma aferição teve o dia no seu período.");
    html += Secao("7. O que se escreveu deste equipamento depois") +
            Entradas(prova.Posteriores, "Nada se escreveu deste equipamento depois da última entrada que contou.");
    return html + Provas(prova, sha256DosFatos) + "</body></html>";
}

} // namespace dossie
