#include "desk/host/Manual.h"

#include "services/TextoQt.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace mesa {

namespace {

// What each window and page is about, by the anchor of its section.
constexpr std::array<std::pair<std::string_view, const char *>, 50> Assuntos{{
    {"Mesa", "a-janela-principal"},
    {"Inicio", "página-inicial"},
    {"JanelaDePrazos", "painel-de-prazos"},
    {"frmLista", "pesquisar"},
    {"frmEquipDetalhes", "cadastrar-um-equipamento"},
    {"frmEquipDetalhes.Equipamento", "página-equipamento"},
    {"frmEquipDetalhes.Dados", "página-dados"},
    {"frmEquipDetalhes.Sensores", "sensores"},
    {"frmEquipDetalhes.Aferições", "aferições-e-certificados"},
    {"frmEquipDetalhes.Opções", "página-opções"},
    {"frmEquipSensores", "sensores"},
    {"frmEquipSensores.Dados", "dados-do-sensor"},
    {"frmEquipSensores.Aferições", "aferições-do-sensor"},
    {"frmEquipAfericoes", "aferições-e-certificados"},
    {"frmEquipAfericoes.Geral", "dados-da-aferição"},
    {"frmLimitesDif", "limites-dias-e-horários"},
    {"frmLimitesDifDetalhes", "limites-dias-e-horários"},
    {"Colunas", "colunas"},
    {"ConsultaAutuacao", "consulta-para-autuação"},
    {"VisorPDF", "o-documento-na-tela"},
    {"Motivo", "corrigir-uma-aferição"},
    {"Entrada", "entrar"},
    {"Trava", "travar-e-trocar-de-usuário"},
    {"MinhaSenha", "a-sua-senha"},
    {"Preferencias", "preferências"},
    {"PrimeiroInicio", "primeiro-início"},
    {"Preparo", "primeiro-início"},
    {"NovoRegistro", "primeiro-início"},
    {"Falta", "o-registro-não-pôde-ser-aberto"},
    {"LugarDoRegistro", "trabalhar-com-um-servidor"},
    {"DigitalDoServidor", "a-digital-do-servidor"},
    {"FaltaServidor", "quando-o-servidor-não-responde"},
    {"SemResposta", "quando-o-servidor-não-responde"},
    {"JaPedido", "quando-o-servidor-não-responde"},
    {"SessaoTerminada", "quando-a-sessão-termina"},
    {"Achados", "conferir-o-registro"},
    {"Administracao", "para-quem-administra"},
    {"Administracao.usuarios", "pessoas-e-direitos"},
    {"Administracao.clientes", "clientes-e-setores"},
    {"Administracao.entradas", "entradas-recusadas"},
    {"Administracao.logradouros", "logradouros"},
    {"Administracao.layouts", "layouts"},
    {"FichaUsuario", "pessoas-e-direitos"},
    {"FichaSenha", "pessoas-e-direitos"},
    {"FichaCliente", "clientes-e-setores"},
    {"FichaLogradouro", "logradouros"},
    {"FichaLayout", "layouts"},
    {"Cabeca", "a-cabeça-do-histórico"},
    {"Trabalho", "o-que-demora"},
    {"Relato", "o-que-demora"},
}};

QChar Dobra(QChar letra)
{
    while (letra.decompositionTag() == QChar::Canonical) {
        letra = letra.decomposition().at(0);
    }
    return letra.isSpace() ? QChar(' ') : letra.toCaseFolded();
}

QString Dobrado(const QString &texto)
{
    QString dobrado(texto.size(), ' ');
    std::ranges::transform(texto, dobrado.begin(), Dobra);
    return dobrado;
}

// As the places where the manual is read outside of the desk make it.
QString AncoraDe(const QString &titulo)
{
    QString ancora;
    for (const QChar letra : titulo.toLower()) {
        if (letra.isLetterOrNumber() || letra == '-' || letra == '_') {
            ancora += letra;
        } else if (letra == ' ') {
            ancora += '-';
        }
    }
    return ancora;
}

} // namespace

Manual::Manual(const QTextDocument &documento) : m_Texto(documento.toRawText()), m_Dobrado(Dobrado(m_Texto))
{
    for (QTextBlock bloco = documento.begin(); bloco.isValid(); bloco = bloco.next()) {
        if (const int nivel = bloco.blockFormat().headingLevel(); nivel > 0) {
            const QString ancora = AncoraDe(bloco.text());
            QString livre = ancora;
            for (int numero = 1; SecaoDe(livre); ++numero) {
                livre = ancora + "-" + QString::number(numero);
            }
            m_Secoes.push_back({bloco.text(), livre, nivel, bloco.position()});
        }
    }
}

std::optional<std::size_t> Manual::SecaoEm(int posicao) const
{
    const auto depois = std::ranges::upper_bound(m_Secoes, posicao, {}, &SecaoDoManual::Posicao);
    if (depois == m_Secoes.begin()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(depois - m_Secoes.begin() - 1);
}

std::optional<std::size_t> Manual::SecaoDe(const QString &ancora) const
{
    const auto achada = std::ranges::find(m_Secoes, ancora, &SecaoDoManual::Ancora);
    if (achada == m_Secoes.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(achada - m_Secoes.begin());
}

QString Manual::AncoraDoTopico(const std::string &topico)
{
    const auto achado = std::ranges::find(Assuntos, topico, &decltype(Assuntos)::value_type::first);
    if (achado != Assuntos.end()) {
        return QString::fromUtf8(achado->second);
    }
    const std::size_t ponto = topico.rfind('.');
    return ponto == std::string::npos ? QString() : AncoraDoTopico(topico.substr(0, ponto));
}

std::vector<std::string> Manual::Topicos()
{
    std::vector<std::string> topicos;
    for (const auto &[topico, ancora] : Assuntos) {
        topicos.emplace_back(topico);
    }
    return topicos;
}

std::vector<AchadoNoManual> Manual::Procura(const QString &texto) const
{
    const QString procurado = Dobrado(texto.normalized(QString::NormalizationForm_C).simplified());
    std::vector<AchadoNoManual> achados;
    if (procurado.isEmpty()) {
        return achados;
    }
    const auto tamanho = static_cast<int>(procurado.size());
    for (qsizetype onde = m_Dobrado.indexOf(procurado); onde >= 0;
         onde = m_Dobrado.indexOf(procurado, onde + tamanho)) {
        achados.push_back({static_cast<int>(onde), tamanho});
    }
    return achados;
}

QString Manual::Trecho(const AchadoNoManual &achado) const
{
    constexpr int ao_redor = 40;
    const int comeco = std::max(0, achado.Posicao - ao_redor);
    QString trecho = m_Texto.mid(comeco, achado.Tamanho + 2 * ao_redor);
    // What is no letter is an object in the text, such as a picture, or the end of a line or of a table's field.
    for (QChar &letra : trecho) {
        if (letra == QChar::ObjectReplacementCharacter || letra.isSpace() || letra.isNonCharacter() ||
            !letra.isPrint()) {
            letra = ' ';
        }
    }
    return trecho.simplified();
}

int Manual::FimDa(std::size_t secao) const
{
    return secao + 1 < m_Secoes.size() ? m_Secoes[secao + 1].Posicao : static_cast<int>(m_Texto.size());
}

std::string Manual::Lugar(int posicao) const
{
    const auto secao = SecaoEm(posicao);
    return secao ? S(m_Secoes[*secao].Ancora) + "+" + std::to_string(posicao - m_Secoes[*secao].Posicao)
                 : std::string();
}

std::optional<int> Manual::PosicaoDe(const std::string &lugar) const
{
    const QString texto = Q(lugar);
    const qsizetype mais = texto.lastIndexOf('+');
    bool numero = false;
    const int depois = texto.mid(mais + 1).toInt(&numero);
    const auto secao = SecaoDe(texto.left(mais));
    if (mais < 0 || !numero || depois < 0 || !secao) {
        return std::nullopt;
    }
    // The section may have become shorter.
    const int posicao = m_Secoes[*secao].Posicao;
    return depois < FimDa(*secao) - posicao ? posicao + depois : posicao;
}

} // namespace mesa
