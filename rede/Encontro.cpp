#include "rede/Encontro.h"

#include "services/TextoQt.h"

#include <QUuid>

#include <cctype>
#include <filesystem>

namespace rede {

namespace {

// By what the server is known from now on. Nothing: it is not trusted.
std::optional<Confianca> Confia(const Endereco &servidor, const Confianca &dita, const LugaresConhecidos &lugares,
                                const ConectaServidor &rede, const QuemEncontra &quem)
{
    Confianca confianca = dita;
    if (!confianca.Autoridade.empty()) { // it is read again wherever the next program is called from
        confianca.Autoridade = std::filesystem::absolute(confianca.Autoridade).lexically_normal().string();
    }
    if (confianca.Digital.empty() && confianca.Autoridade.empty()) {
        confianca = lugares.Confianca(servidor);
    }
    if (confianca.Digital.empty() && confianca.Autoridade.empty()) {
        confianca.Digital = rede.Digital(servidor);
        // On this computer a server may do without one.
        if (!confianca.Digital.empty() && !quem.Confia(servidor.Texto(), confianca.Digital)) {
            return std::nullopt;
        }
    }
    return confianca;
}

// What to say of a server that could not be had: what it said, or that its certificate is another one.
void DizPorque(const Endereco &servidor, const Confianca &confianca, const ConectaServidor &rede,
               const QuemEncontra &quem, Encontrado &encontrado)
{
    encontrado.Frase = FalhaCorrente().Descricao;
    if (confianca.Digital.empty()) {
        return;
    }
    IgnoraErro([&] {
        if (LeDigital(rede.Digital(servidor)) != LeDigital(confianca.Digital)) {
            encontrado.Desfecho = Encontrado::Como::SemConfianca;
            encontrado.Frase =
                "O certificado do servidor " + servidor.Texto() +
                " não é o que se espera, e nada foi enviado a ele. Pode ser outra máquina no lugar da certa. Se quem "
                "administra o servidor trocou o certificado, peça-lhe a digital nova, que o servidor escreve quando "
                "inicia, e informe-a " +
                quem.ComoInformar + ".";
        }
    });
}

void Conhece(const Endereco &servidor, const LugaresConhecidos &lugares, const QuemEncontra &quem,
             Encontrado &encontrado)
{
    encontrado.Identificador = encontrado.Servicos->Identificador();
    if (QUuid::fromString(mesa::Q(encontrado.Identificador)).isNull()) { // a directory is called so
        encontrado.Frase = "O servidor " + servidor.Texto() + " não diz qual é o seu registro.";
        return;
    }
    const std::string deAntes = lugares.RegistroNo(servidor);
    if (!deAntes.empty() && deAntes != encontrado.Identificador) {
        encontrado.Frase = "O registro do servidor " + servidor.Texto() +
                           " não é aquele em que se trabalhava: é o de identificador " + encontrado.Identificador +
                           ", e o de antes era o de identificador " + deAntes + ".";
        if (!quem.Aceita(encontrado.Frase + " Trabalhar neste registro de agora em diante?")) {
            encontrado.Desfecho = Encontrado::Como::OutroRegistro;
            return;
        }
    }
    encontrado.Desfecho = Encontrado::Como::Conectado;
    encontrado.Frase.clear();
}

} // namespace

std::optional<std::string> LeDigital(const std::string &texto)
{
    constexpr std::size_t pares = 32;
    std::string digitos;
    for (const char letra : texto) {
        const auto uma = static_cast<unsigned char>(letra);
        if (std::isxdigit(uma) != 0) {
            digitos += static_cast<char>(std::toupper(uma));
        } else if (letra != ':' && std::isspace(uma) == 0) {
            return std::nullopt;
        }
    }
    if (digitos.size() != 2 * pares) {
        return std::nullopt;
    }
    std::string digital;
    for (std::size_t par = 0; par < pares; ++par) {
        digital += (par == 0 ? "" : ":") + digitos.substr(2 * par, 2);
    }
    return digital;
}

Encontrado Encontra(const Endereco &servidor, const Confianca &dita, LugaresConhecidos &lugares,
                    const ConectaServidor &rede, const QuemEncontra &quem)
{
    Encontrado encontrado;
    std::optional<Confianca> confianca;
    try {
        confianca = Confia(servidor, dita, lugares, rede, quem);
        if (!confianca) {
            encontrado.Desfecho = Encontrado::Como::SemConfianca;
            encontrado.Frase = "A digital do servidor " + servidor.Texto() +
                               " não foi aceita, e nada foi enviado a ele. Confirme-a com quem administra o servidor.";
            return encontrado;
        }
        encontrado.Servicos = rede.Conecta(servidor, *confianca);
        Conhece(servidor, lugares, quem, encontrado);
        if (encontrado.Desfecho == Encontrado::Como::Conectado) {
            lugares.LembraConfianca(servidor, *confianca);
            lugares.LembraRegistroNo(servidor, encontrado.Identificador);
            encontrado.Confiado = *confianca;
        }
    } catch (...) {
        encontrado.Desfecho = Encontrado::Como::SemServidor;
        DizPorque(servidor, confianca.value_or(Confianca()), rede, quem, encontrado);
    }
    if (encontrado.Desfecho != Encontrado::Como::Conectado) {
        encontrado.Servicos = nullptr;
    }
    return encontrado;
}

} // namespace rede
