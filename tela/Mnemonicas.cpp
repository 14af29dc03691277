#include "tela/Mnemonicas.h"

#include "host/IControlesPadrao.h"
#include "host/Texto.h"
#include "tela/Partes.h"

#include <cctype>

namespace {

constexpr std::string_view DosMenus = "ejugm";

bool EhLetraSimples(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char Minuscula(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool EhBranco(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

} // namespace

std::string Mnemonica(std::string_view caption)
{
    for (std::size_t i = caption.find('&'); i != std::string_view::npos; i = caption.find('&', i)) {
        const std::string tecla = Left(caption.substr(i + 1), 1);
        if (tecla != "&") {
            return LCase(tecla);
        }
        i += 2;
    }
    return {};
}

std::string SemMarca(std::string_view caption)
{
    std::string lido;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && ++i == caption.size()) {
            break;
        }
        lido += caption[i];
    }
    return lido;
}

std::string ComMarca(std::string_view caption, std::string_view letra)
{
    std::string marcado(caption);
    if (letra.size() == 1) {
        for (std::size_t i = 0; i < caption.size(); ++i) {
            if (Minuscula(caption[i]) == letra.front()) {
                return marcado.insert(i, 1, '&');
            }
        }
    }
    return marcado;
}

Mnemonicas::Mnemonicas()
{
    for (const char letra : DosMenus) {
        m_Tomadas.emplace(1, letra);
    }
}

Mnemonicas::Mnemonicas(const IForm &form) : Mnemonicas()
{
    for (const Ref<IControle> &controle : form.Controles()) {
        Toma(controle->Rotulo());
        Toma(controle->Caption());
        if (const auto *abas = dynamic_cast<const ISSTab *>(controle.Ponteiro())) {
            for (std::int16_t pagina = 0; pagina < abas->Tabs(); ++pagina) {
                Toma(abas->TabCaption(pagina));
            }
        }
        for (const BotaoDeParte &botao : CaptionsDasPartes(controle->Especie())) {
            Toma(botao.Caption);
        }
    }
}

void Mnemonicas::Toma(std::string_view caption)
{
    if (std::string letra = Mnemonica(caption); !letra.empty()) {
        m_Tomadas.insert(std::move(letra));
    }
}

std::string Mnemonicas::Acha(std::string_view caption)
{
    std::string candidatas;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (i == 0 || EhBranco(caption[i - 1])) {
            candidatas += caption[i];
        }
    }
    candidatas += caption;
    for (const char candidata : candidatas) {
        if (EhLetraSimples(candidata)) {
            std::string letra(1, Minuscula(candidata));
            if (m_Tomadas.insert(letra).second) {
                return letra;
            }
        }
    }
    return {};
}
