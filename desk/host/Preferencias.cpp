#include "desk/host/Preferencias.h"

#include "services/TextoQt.h"

#include <algorithm>
#include <array>

namespace mesa {

namespace {

constexpr std::int32_t MinutosDeInicio = 15;
constexpr const char *AteTravar = "minutosAteTravar";
constexpr const char *ACopiaDiaria = "copiaDiaria";
constexpr const char *APastaDasCabecas = "pastaDasCabecas";
constexpr const char *OTema = "aspecto/tema";
constexpr const char *OTamanhoDoTexto = "aspecto/tamanhoDoTexto";
constexpr const char *AImpressora = "aspecto/impressora";
constexpr const char *LembrarUsuario = "entrada/lembraUsuario";
constexpr const char *NaoLembra = "não";
constexpr const char *Ultimos = "entrada/ultimos/";
constexpr std::array<const char *, 3> Temas = {"sistema", "claro", "escuro"};

} // namespace

Preferencias::Preferencias(const std::filesystem::path &arquivo) : LugaresConhecidos(arquivo) {}

std::int32_t Preferencias::MinutosAteTravar() const
{
    bool numero = false;
    const std::int32_t minutos = Guardadas().value(AteTravar, MinutosDeInicio).toInt(&numero);
    return numero ? std::clamp(minutos, 0, MaisMinutos) : MinutosDeInicio;
}

void Preferencias::DefineMinutosAteTravar(std::int32_t minutos)
{
    Grava(AteTravar, QString::number(std::clamp(minutos, 0, MaisMinutos)));
}

Aspecto Preferencias::Aspecto() const
{
    mesa::Aspecto aspecto;
    const auto tema = std::ranges::find(Temas, Guardadas().value(OTema).toString());
    if (tema != Temas.end()) {
        aspecto.Cores = static_cast<Tema>(tema - Temas.begin());
    }
    bool numero = false;
    const std::int32_t tamanho = Guardadas().value(OTamanhoDoTexto).toInt(&numero);
    if (numero) {
        aspecto.TamanhoDoTexto = std::clamp(tamanho, mesa::Aspecto::MenorTexto, mesa::Aspecto::MaiorTexto);
    }
    aspecto.Impressora = S(Guardadas().value(AImpressora).toString());
    return aspecto;
}

void Preferencias::DefineAspecto(const mesa::Aspecto &valor)
{
    Grava(OTema, Temas.at(static_cast<std::size_t>(valor.Cores)));
    Grava(OTamanhoDoTexto, QString::number(valor.TamanhoDoTexto));
    Grava(AImpressora, Q(valor.Impressora));
    m_MudouAspecto.dispara();
}

bool Preferencias::LembraUsuario() const
{
    return Texto(LembrarUsuario) != NaoLembra;
}

void Preferencias::DefineLembraUsuario(bool valor)
{
    GuardaTexto(LembrarUsuario, valor ? "" : NaoLembra);
    if (!valor) {
        EsqueceUsuarios();
    }
}

void Preferencias::EsqueceUsuarios()
{
    EsqueceTextos(Ultimos);
}

std::string Preferencias::UltimoUsuario(const std::string &identificador) const
{
    return Texto(Ultimos + Q(identificador));
}

void Preferencias::LembraUltimoUsuario(const std::string &identificador, const std::string &usuario)
{
    if (LembraUsuario()) {
        GuardaTexto(Ultimos + Q(identificador), usuario);
    }
}

std::string Preferencias::UltimaConferencia(const std::string &identificador) const
{
    return S(Guardadas().value("conferencias/" + Q(identificador)).toString());
}

void Preferencias::LembraConferencia(const std::string &identificador, const std::string &resultado)
{
    Grava("conferencias/" + Q(identificador), Q(resultado));
}

std::int32_t Preferencias::DiaConferido(const std::string &identificador) const
{
    return Guardadas().value("conferidos/" + Q(identificador)).toInt();
}

void Preferencias::LembraDiaConferido(const std::string &identificador, std::int32_t dia)
{
    Grava("conferidos/" + Q(identificador), QString::number(dia));
}

bool Preferencias::CopiaDiaria() const
{
    return Guardadas().value(ACopiaDiaria, true).toBool();
}

void Preferencias::DefineCopiaDiaria(bool valor)
{
    Grava(ACopiaDiaria, valor ? "true" : "false");
}

std::string Preferencias::PastaDasCabecas() const
{
    return S(Guardadas().value(APastaDasCabecas).toString());
}

void Preferencias::DefinePastaDasCabecas(const std::string &pasta)
{
    Grava(APastaDasCabecas, Q(pasta));
}

void Preferencias::GuardaTexto(const QString &chave, const std::string &texto)
{
    if (texto.empty()) {
        Guardadas().remove(chave);
    } else {
        Guardadas().setValue(chave, Q(texto));
    }
}

void Preferencias::EsqueceTextos(const QString &comeco)
{
    for (const QString &chave : Guardadas().allKeys()) {
        if (chave.startsWith(comeco)) {
            Guardadas().remove(chave);
        }
    }
}

} // namespace mesa
