#include "planilhas/LeitorXml.h"

#include "planilhas/Falhas.h"
#include "planilhas/Pacote.h"

#include <expat.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace planilhas {

namespace {

constexpr char EntreEspacoENome = '\n'; // stands in no namespace
constexpr std::size_t TamanhoDoPedaco = 65536;
constexpr std::uint64_t MaiorMarca = 4194304;
constexpr int MaisFundo = 200;

[[noreturn]] void Danificado()
{
    FalhaDeFormato("O arquivo está danificado: o conteúdo de uma das suas partes não se lê.");
}

NomeXml Separa(const char *nome)
{
    const char *const onde = std::strrchr(nome, EntreEspacoENome);
    if (onde == nullptr) {
        return {"", nome};
    }
    return {{nome, static_cast<std::size_t>(onde - nome)}, onde + 1};
}

class OuvinteDeElementos : public OuvinteXml {
  public:
    using Procedimento = std::function<void(const NomeXml &, const AtributosXml &)>;

    explicit OuvinteDeElementos(const Procedimento &procedimento) : m_Procedimento(procedimento) {}

    void Abre(const NomeXml &nome, const AtributosXml &atributos) override { m_Procedimento(nome, atributos); }
    void Fecha(const NomeXml & /*nome*/) override {}
    void Texto(std::string_view /*texto*/) override {}

  private:
    const Procedimento &m_Procedimento;
};

} // namespace

std::string_view AtributosXml::Valor(std::string_view local, std::string_view fimDoEspaco) const
{
    const char *const valor = Acha(local, fimDoEspaco);
    return valor == nullptr ? std::string_view() : std::string_view(valor);
}

bool AtributosXml::Tem(std::string_view local, std::string_view fimDoEspaco) const
{
    return Acha(local, fimDoEspaco) != nullptr;
}

const char *AtributosXml::Acha(std::string_view local, std::string_view fimDoEspaco) const
{
    for (const char **atributo = m_Atributos; *atributo != nullptr; atributo += 2) {
        const NomeXml nome = Separa(*atributo);
        if (nome.Local == local && nome.Espaco.ends_with(fimDoEspaco) && nome.Espaco.empty() == fimDoEspaco.empty()) {
            return atributo[1];
        }
    }
    return nullptr;
}

struct LeitorXml::Chamadas {
    // Nothing goes through the library as an exception.
    template <class Ato> static void Tenta(void *dado, Ato &&ato) noexcept
    {
        LeitorXml &leitor = *static_cast<LeitorXml *>(dado);
        if (leitor.m_Lancado) {
            return; // it may still tell something after it was stopped
        }
        try {
            ato(leitor);
        } catch (...) {
            leitor.m_Lancado = std::current_exception();
            XML_StopParser(leitor.m_Leitor, XML_FALSE);
        }
    }

    static void Abre(void *dado, const char *nome, const char **atributos)
    {
        Tenta(dado, [&](LeitorXml &leitor) {
            if (++leitor.m_Fundo > MaisFundo) {
                Danificado();
            }
            leitor.m_Ouvinte.Abre(Separa(nome), AtributosXml(atributos));
        });
    }

    static void Fecha(void *dado, const char *nome)
    {
        Tenta(dado, [&](LeitorXml &leitor) {
            --leitor.m_Fundo;
            leitor.m_Ouvinte.Fecha(Separa(nome));
            if (leitor.m_Ouvinte.Cheio()) {
                XML_StopParser(leitor.m_Leitor, XML_TRUE);
            }
        });
    }

    static void Texto(void *dado, const char *texto, int quantos)
    {
        Tenta(dado, [&](LeitorXml &leitor) { leitor.m_Ouvinte.Texto({texto, static_cast<std::size_t>(quantos)}); });
    }

    static void Entidade(void *dado, const char * /*nome*/, int /*parametro*/, const char * /*valor*/, int /*tamanho*/,
                         const char * /*base*/, const char * /*sistema*/, const char * /*publico*/,
                         const char * /*notacao*/)
    {
        Tenta(dado, [](LeitorXml &) { Danificado(); });
    }

    // One that nothing declares, which the library would leave out of the text.
    static void EntidadeDesconhecida(void *dado, const char * /*nome*/, int /*parametro*/)
    {
        Tenta(dado, [](LeitorXml &) { Danificado(); });
    }
};

LeitorXml::LeitorXml(std::unique_ptr<ParteDoPacote> parte, OuvinteXml &ouvinte)
    : m_Parte(std::move(parte)),
      m_Ouvinte(ouvinte),
      m_Leitor(XML_ParserCreateNS(nullptr, EntreEspacoENome))
{
    if (m_Leitor == nullptr) {
        throw Falha(NumeroFalha::SemMemoria);
    }
    XML_SetUserData(m_Leitor, this);
    XML_SetElementHandler(m_Leitor, Chamadas::Abre, Chamadas::Fecha);
    XML_SetCharacterDataHandler(m_Leitor, Chamadas::Texto);
    XML_SetEntityDeclHandler(m_Leitor, Chamadas::Entidade);
    XML_SetSkippedEntityHandler(m_Leitor, Chamadas::EntidadeDesconhecida);
}

LeitorXml::~LeitorXml()
{
    XML_ParserFree(m_Leitor);
}

bool LeitorXml::Avanca()
{
    if (m_DeuTudo && !m_Pausado) {
        return false;
    }
    const int estado = std::exchange(m_Pausado, false) ? XML_ResumeParser(m_Leitor) : LePedaco();
    if (m_Lancado) {
        m_DeuTudo = true;
        std::rethrow_exception(m_Lancado);
    }
    m_Pausado = estado == XML_STATUS_SUSPENDED;
    // The library keeps a tag until it has the whole of it.
    const auto entendidos = static_cast<std::uint64_t>(std::max<XML_Index>(0, XML_GetCurrentByteIndex(m_Leitor)));
    if (estado == XML_STATUS_ERROR || (estado == XML_STATUS_OK && !m_DeuTudo && m_Dados - entendidos > MaiorMarca)) {
        m_DeuTudo = true;
        Danificado();
    }
    return true;
}

int LeitorXml::LePedaco()
{
    void *const pedaco = XML_GetBuffer(m_Leitor, static_cast<int>(TamanhoDoPedaco));
    if (pedaco == nullptr) {
        throw Falha(NumeroFalha::SemMemoria);
    }
    const std::size_t lidos = m_Parte->Le(static_cast<char *>(pedaco), TamanhoDoPedaco);
    m_DeuTudo = lidos == 0;
    m_Dados += lidos;
    return XML_ParseBuffer(m_Leitor, static_cast<int>(lidos), m_DeuTudo ? XML_TRUE : XML_FALSE);
}

void ParaCadaElemento(std::unique_ptr<ParteDoPacote> parte,
                      const std::function<void(const NomeXml &, const AtributosXml &)> &procedimento)
{
    OuvinteDeElementos ouvinte(procedimento);
    LeitorXml leitor(std::move(parte), ouvinte);
    while (leitor.Avanca()) {
    }
}

} // namespace planilhas
