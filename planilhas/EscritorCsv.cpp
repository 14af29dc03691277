#include "planilhas/EscritorCsv.h"

#include "planilhas/Desarme.h"
#include "planilhas/Falhas.h"
#include "planilhas/RegrasDaEscrita.h"

#include <fcntl.h>
#include <unistd.h>

namespace planilhas {

EscritorCsv::EscritorCsv(const std::filesystem::path &lugar, char separador)
    : m_Arquivo(lugar),
      m_Aberto(open(m_Arquivo.Caminho().c_str(), O_WRONLY | O_CLOEXEC)),
      m_Gravacao(m_Aberto, m_Arquivo.Ato()),
      m_Separador(separador),
      m_Especiais{separador, '"', '\r', '\n'}
{
    if (m_Aberto < 0) {
        FalhaDeArquivo(errno, m_Arquivo.Ato());
    }
    m_Gravacao.Poe("\xEF\xBB\xBF");
}

EscritorCsv::~EscritorCsv()
{
    close(m_Aberto);
}

void EscritorCsv::Folha(const std::string & /*nome*/)
{
    if (m_TemFolha) {
        throw Falha(NumeroFalha::ArgumentoInvalido, "planilhas", "Um arquivo CSV tem uma folha só.");
    }
    m_TemFolha = true;
}

void EscritorCsv::Cabecalho(const std::vector<std::string> &titulos)
{
    Escreve(LinhaDeTextos(titulos));
}

void EscritorCsv::Escreve(const Linha &linha)
{
    for (std::size_t i = 0; i < linha.size(); ++i) {
        if (i > 0) {
            m_Gravacao.Poe(std::string_view(&m_Separador, 1));
        }
        PoeCelula(linha[i]);
    }
    m_Gravacao.Poe("\r\n");
}

void EscritorCsv::PoeCelula(const Celula &celula)
{
    ConfereTexto(celula.Texto);
    const bool texto = celula.Tipo == TipoDeCelula::Texto || celula.Tipo == TipoDeCelula::Erro;
    const std::string valor = TextoDaCelula(celula, m_Separador == ',' ? '.' : ',');
    const std::string escrito = texto ? Desarma(valor) : valor;
    if (escrito.find_first_of(m_Especiais) == std::string::npos) {
        m_Gravacao.Poe(escrito);
        return;
    }
    std::string entreAspas = "\"";
    for (const char letra : escrito) {
        entreAspas.append(letra == '"' ? 2 : 1, letra);
    }
    m_Gravacao.Poe(entreAspas + "\"");
}

void EscritorCsv::Conclui()
{
    m_Gravacao.Descarrega();
    m_Arquivo.TomaOLugar();
}

} // namespace planilhas
