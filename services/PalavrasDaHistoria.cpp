#include "services/PalavrasDaHistoria.h"

#include "host/Conversoes.h"
#include "services/Calendario.h"
#include "services/NomesCampos.h"
#include "services/TextoQt.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace mesa {

namespace {

constexpr std::array<std::string_view, 9> Dias = {"",       "Domingo", "Segunda", "Terça",  "Quarta",
                                                  "Quinta", "Sexta",   "Sábado",  "Feriado"};
constexpr int HorarioProibido = 2;
constexpr int Declaracao = 2;

QJsonObject LeJson(const std::string &texto)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(texto)).object();
}

std::string NomeDoDia(int dia)
{
    return dia >= 1 && dia <= 8 ? std::string(Dias[static_cast<std::size_t>(dia)]) : CStr(dia);
}

std::string Horas(const QJsonObject &linha)
{
    return TextoDaHora(linha.value("HoraInicio").toInt()) + " a " + TextoDaHora(linha.value("HoraFim").toInt());
}

// A value of the history, whose rows have texts and whole numbers.
std::string EmPalavras(const std::string &membro, const QJsonValue &valor)
{
    if (valor.isString() || valor.isUndefined() || valor.isNull()) {
        const std::string texto = S(valor.toString());
        return texto.empty() ? "vazio" : texto;
    }
    const std::int64_t numero = valor.toInteger();
    if (membro.starts_with("Data")) {
        return numero == 0 ? "vazio" : TextoDoDia(static_cast<std::int32_t>(numero));
    }
    if (membro.starts_with("Hora")) {
        return TextoDaHora(static_cast<std::int32_t>(numero));
    }
    if (membro == "Ativo" || membro.starts_with("Tem")) {
        return numero == 2 ? "não" : "sim";
    }
    if (membro == "Dia") {
        return NomeDoDia(static_cast<int>(numero));
    }
    return membro == "TipoAfer" ? (numero == Declaracao ? "declaração" : "aferição") : CStr(numero);
}

// What a row that comes to be is known by.
std::string Descreve(const std::string &entidade, const QJsonObject &linha)
{
    static const std::map<std::string, std::vector<std::string>> membros = {
        {"EQUIPAMENTO", {"Descricao", "Modelo", "VelocPermitida"}},
        {"SENSOR", {"LocalInfr", "SentidoVia"}},
        {"AFERICAO", {"DataVerificacao", "DataVencimento", "Marca", "NroIntImgCertif"}},
        {"LIMITE", {"VelocPerm", "VelocMin"}},
        {"DIA", {"VelocPerm", "VelocMin"}}};
    std::string texto;
    const auto daEntidade = membros.find(entidade);
    if (daEntidade != membros.end()) {
        for (const std::string &membro : daEntidade->second) {
            const QJsonValue valor = linha.value(Q(membro));
            if (!valor.isUndefined() && valor != QJsonValue("")) {
                texto += (texto.empty() ? "" : "; ") + NomeDoCampo(membro) + " " + EmPalavras(membro, valor);
            }
        }
    }
    return texto;
}

} // namespace

std::string PalavrasDaHistoria::Assunto(const EntradaDaHistoria &entrada)
{
    const QJsonObject linha = LeJson(entrada.Depois);
    const auto texto = [&](const char *membro) { return S(linha.value(QLatin1String(membro)).toString()); };
    if (entrada.Entidade == "EQUIPAMENTO") {
        return "equipamento " + texto("Codigo");
    }
    if (entrada.Entidade == "SENSOR") {
        return "sensor " + CStr(linha.value("NroSensor").toInt());
    }
    if (entrada.Entidade == "AFERICAO") {
        return linha.value("TipoAfer").toInt() == Declaracao ? "declaração " + texto("Marca")
                                                             : "aferição " + texto("Numero");
    }
    if (entrada.Entidade == "LIMITE") {
        const bool proibido = linha.value("TipoLimite").toInt() == HorarioProibido;
        return (proibido ? "horário proibido de " : "limite diferenciado de ") + NomeDoDia(linha.value("Dia").toInt()) +
               ", " + Horas(linha);
    }
    if (entrada.Entidade == "DIA") {
        return "dia específico " + TextoDoDia(linha.value("Data").toInt()) + ", " + Horas(linha);
    }
    return entrada.Entidade;
}

std::string PalavrasDaHistoria::OQue(const EntradaDaHistoria &entrada, const EntradaDaHistoria *antes)
{
    const QJsonObject depois = LeJson(entrada.Depois);
    const std::string genero = entrada.Entidade == "AFERICAO" ? "a" : "o";
    std::string oQue;
    if (entrada.Acao == "desativa") {
        oQue = "desativad" + genero;
    } else if (entrada.Acao == "reativa") {
        oQue = "reativad" + genero;
    } else if (antes == nullptr || entrada.Acao != "altera") {
        oQue = (entrada.Acao == "migra" ? "trazid" + genero + " de um registro mais antigo" : "incluíd" + genero);
        const std::string descricao = Descreve(entrada.Entidade, depois);
        return oQue + (descricao.empty() ? "" : ": " + descricao);
    }
    if (antes != nullptr) {
        for (const CampoDiferente &campo : Diferencas(LeJson(antes->Depois), depois)) {
            if (campo.Membro != "Ativo" || oQue.empty()) {
                oQue += (oQue.empty() ? "" : "; ") + NomeDoCampo(campo.Membro) + ": de " +
                        EmPalavras(campo.Membro, campo.Antes) + " para " + EmPalavras(campo.Membro, campo.Depois);
            }
        }
    }
    return oQue.empty() ? "gravad" + genero + " de novo, sem diferença" : oQue;
}

std::string PalavrasDaHistoria::Momento(const EntradaDaHistoria &entrada)
{
    return TextoDoMomento(entrada.Local());
}

} // namespace mesa
