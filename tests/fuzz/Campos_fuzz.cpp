#include "tests/fuzz/Alvo.h"

#include "controls/TextBox.h"
#include "controls/ztData.h"
#include "controls/ztMask.h"
#include "host/Conversoes.h"
#include "tests/fuzz/Impede.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Typed fields of random settings, with a person and the module at them in turns: limits and masks are kept, the value
// is the text's, and each event comes with a text of its own.

namespace {

constexpr std::string_view Letras[] = {"0", "1", "2", "9", "/", ":", "_", " ", ".", "a", "Z", "é", "Ç", "÷", "ß", "😀"};
constexpr std::string_view Digitos = "0123456789";

// Text that fields are likely to take, or any bytes.
std::string Frase(Octetos &octetos)
{
    const int tipo = octetos.Ate(3);
    if (tipo == 0) {
        return octetos.Texto(24);
    }
    std::string frase;
    for (int tamanho = octetos.Ate(12); tamanho > 0; --tamanho) {
        if (tipo == 1) {
            frase += static_cast<char>('0' + octetos.Ate(9));
        } else {
            frase += Letras[octetos.Ate(15)];
        }
    }
    return frase;
}

using Caracteres = std::vector<std::string>;

Caracteres Separa(std::string_view texto)
{
    Caracteres separados;
    while (!texto.empty()) {
        separados.push_back(Left(texto, 1));
        texto.remove_prefix(separados.back().size());
    }
    return separados;
}

std::string Junta(const Caracteres &separados)
{
    std::string texto;
    for (const std::string &carater : separados) {
        texto += carater;
    }
    return texto;
}

// No byte stands outside of a character.
bool BemFormado(std::string_view texto)
{
    return std::ranges::all_of(Separa(texto), [](const std::string &carater) {
        return carater.size() > 1 || static_cast<std::uint8_t>(carater[0]) < 0x80;
    });
}

bool EDigito(std::string_view carater)
{
    return carater.size() == 1 && Digitos.find(carater) != std::string_view::npos;
}

// What a limited field takes.
struct Regra {
    std::size_t Limite = 0;
    std::function<bool(const std::string &)> Aceita;
    bool Maiusculas = false;
    bool CortaEscrito = false;

    // The text after n characters from a position were deleted and others typed there.
    std::string Depois(std::string_view antes, std::size_t posicao, std::size_t n, std::string_view digitado) const
    {
        Caracteres agora = Separa(antes);
        const std::size_t inicio = std::min(posicao, agora.size());
        const std::size_t fim = inicio + std::min(n, agora.size() - inicio);
        agora.erase(agora.begin() + static_cast<std::ptrdiff_t>(inicio),
                    agora.begin() + static_cast<std::ptrdiff_t>(fim));
        auto aqui = static_cast<std::ptrdiff_t>(inicio);
        for (const std::string &carater : Separa(digitado)) {
            const bool controle = static_cast<std::uint8_t>(carater[0]) < 0x20 || carater == "\x7F";
            if (!controle && Aceita(carater) && (Limite == 0 || agora.size() < Limite)) {
                agora.insert(agora.begin() + aqui++, Maiusculas ? UCase(carater) : carater);
            }
        }
        return Junta(agora);
    }

    // The text that the module's becomes: a mask has it whole.
    std::string Escrito(std::string_view texto) const
    {
        Caracteres todos = Separa(texto);
        if (CortaEscrito && Limite > 0 && todos.size() > Limite) {
            todos.resize(Limite);
        }
        return Junta(todos);
    }

    // Keys have made one text of the other: none passed the limit, and none put there what the field does not take.
    void ConfereTeclas(const std::string &antes, const std::string &depois) const
    {
        Exige(Limite == 0 || Len(depois) <= std::max(Limite, Len(antes)), "the limit", depois);
        const Caracteres havia = Separa(antes);
        const Caracteres ha = Separa(depois);
        for (const std::string &carater : ha) {
            Exige(!BemFormado(depois) || Aceita(carater) ||
                      std::ranges::count(ha, carater) <= std::ranges::count(havia, carater),
                  "only what the field takes", depois);
        }
    }
};

// A text in the form of a template: digits or blanks in its places, and all the rest as it stands.
bool NaForma(std::string_view texto, std::string_view gabarito, char vazio)
{
    return std::ranges::equal(texto, gabarito, [&](char c, char lugar) {
        return lugar == '0' ? EDigito({&c, 1}) || c == vazio : c == lugar;
    });
}

// One kind of field under test.
template <class Campo> class Ensaio {
  public:
    template <class Ajustes> explicit Ensaio(const Ajustes &ajustes)
    {
        m_Campo = Feito<Campo>(m_Form, Chamado("campo", ajustes));
        m_Form->Guarda(m_Campo);
        m_Outro = Feito<TextBox>(m_Form, Chamado<AjustesTextBox>("outro"));
        m_Form->Guarda(m_Outro);
        m_Visto = m_Campo->Text();
        m_AoMudar = m_Campo->Mudou().liga([this] { ++m_Mudou; });
        m_AoTrocar = m_Campo->Change().liga([this] { Trocou(); });
    }

    // One act of the person or of the module. `escrito` answers what a text that the module writes becomes, `editado`
    // what becomes of the text that was there; they are asked only where all is well-formed and nothing interferes.
    template <class Escrita, class Edicao> void Passo(Octetos &octetos, Escrita &&escrito, Edicao &&editado)
    {
        const std::string antes = m_Campo->Text();
        m_Visto = antes;
        m_Trocas = 0;
        m_Mudou = 0;
        m_Reagiu = false;
        m_Escreveu = false;
        const bool podia = Pode();
        switch (octetos.Ate(9)) {
        case 0: {
            const std::string texto = Frase(octetos);
            m_Campo->DefineText(texto);
            m_Escreveu = true;
            ConfereTexto(BemFormado(texto), [&] { return escrito(texto); });
            break;
        }
        case 1:
        case 2: {
            const std::string texto = Frase(octetos);
            ConfereAcao(m_Campo->Preenche(texto), podia);
            if (podia) {
                ConfereTexto(BemFormado(antes + texto), [&] { return editado(antes, 0, 1000, texto); });
            }
            break;
        }
        case 3:
            ConfereAcao(m_Campo->Apaga(), podia);
            break;
        case 4:
        case 5:
        case 6: {
            const auto posicao = static_cast<std::size_t>(octetos.Ate(15));
            const auto n = static_cast<std::size_t>(octetos.Ate(6));
            const std::string texto = Frase(octetos);
            ConfereAcao(m_Campo->Edita(posicao, n, texto), podia);
            if (podia) {
                ConfereTexto(BemFormado(antes + texto), [&] { return editado(antes, posicao, n, texto); });
            }
            break;
        }
        case 7:
            m_Outro->Foco();
            break;
        case 8:
            Impede(octetos, *m_Form, *m_Campo, [&](bool valor) {
                if constexpr (std::is_same_v<Campo, TextBox>) {
                    m_Campo->DefineLocked(valor);
                } else {
                    m_Campo->DefineReadOnly(valor);
                }
            });
            Exige(m_Campo->Text() == antes && m_Trocas == 0, "what keeps the person out changes no text", antes);
            m_Mudou = 0;
            break;
        default:
            m_Reacao = octetos.Ate(4);
            m_Escrita = Frase(octetos);
            return;
        }
        Exige(m_Visto == m_Campo->Text(), "the last event has the last text", m_Visto);
        Exige((m_Campo->Text() == antes) || m_Trocas > 0, "another text raises Change", antes);
        Exige(m_Reagiu || m_Mudou == m_Trocas, "the screen is told of each change", antes);
        // The text is one that the field takes.
        const std::string agora = m_Campo->Text();
        const int trocas = m_Trocas;
        m_Campo->DefineText(agora);
        Exige(m_Campo->Text() == agora && m_Trocas == trocas, "writing the text that it has changes nothing", agora);
    }

    // The last act wrote a text of the module's.
    bool Escreveu() const { return m_Escreveu; }
    // The module has not released the form.
    bool Vivo() const { return !m_Form.Nada(); }
    Campo &operator*() const { return *m_Campo; }

  private:
    bool Pode() const
    {
        return m_Form && m_Form->Enabled() && m_Form->Visible() && m_Campo->Enabled() && m_Campo->Visible() &&
               !m_Campo->SomenteLeitura();
    }

    void ConfereAcao(bool feita, bool podia) const
    {
        Exige(podia || !feita, "who cannot act is refused");
        Exige(podia || m_Trocas == 0, "who is refused changes nothing");
        Exige(!podia || feita || m_Reagiu, "who can act is not refused");
    }

    template <class Esperado> void ConfereTexto(bool bemFormado, Esperado &&esperado) const
    {
        if (bemFormado && !m_Reagiu) {
            const std::string texto = esperado();
            Exige(m_Campo->Text() == texto, "the text", "is " + m_Campo->Text() + ", not " + texto);
        }
    }

    // The module's own code at the event; once it may do something to the field.
    void Trocou()
    {
        ++m_Trocas;
        Exige(m_Reagiu || m_Mudou >= m_Trocas, "the screen is told before the module");
        Exige(m_Campo->Text() != m_Visto, "Change comes with another text", m_Visto);
        m_Visto = m_Campo->Text();
        const int reacao = std::exchange(m_Reacao, 0);
        m_Reagiu = m_Reagiu || reacao != 0;
        switch (reacao) {
        case 1:
            m_Campo->DefineEnabled(false);
            break;
        case 2:
            m_Campo->DefineText(m_Escrita);
            m_Escreveu = true;
            m_Visto = m_Campo->Text();
            break;
        case 3:
            m_Outro->Foco();
            break;
        case 4:
            m_Form = nullptr;
            break;
        default:
            break;
        }
    }

    Ref<FormFalso> m_Form = FormNaTela();
    Ref<Campo> m_Campo;
    Ref<TextBox> m_Outro;
    Conexao m_AoMudar;
    Conexao m_AoTrocar;
    std::string m_Visto;
    int m_Trocas = 0;
    int m_Mudou = 0;
    int m_Reacao = 0;
    bool m_Reagiu = false;
    bool m_Escreveu = false;
    std::string m_Escrita;
};

constexpr int MaximoPassos = 60;

template <class Campo, class Confere>
void ComRegra(Octetos &octetos, Ensaio<Campo> &ensaio, const Regra &regra, Confere &&confere)
{
    for (int passo = 0; passo < MaximoPassos && !octetos.Acabou() && ensaio.Vivo(); ++passo) {
        const std::string antes = (*ensaio).Text();
        ensaio.Passo(
            octetos, [&](const std::string &texto) { return regra.Escrito(texto); },
            [&](const std::string &antes, std::size_t posicao, std::size_t n, const std::string &texto) {
                return regra.Depois(antes, posicao, n, texto);
            });
        const std::string texto = (*ensaio).Text();
        if (!ensaio.Escreveu()) {
            regra.ConfereTeclas(antes, texto);
        }
        Exige(!regra.CortaEscrito || regra.Limite == 0 || Len(texto) <= regra.Limite, "the limit of all", texto);
        confere(*ensaio, texto);
    }
}

// The groups of places of a template, each with where it begins and ends.
std::vector<std::pair<std::size_t, std::size_t>> GruposDe(std::string_view texto, std::string_view pertencem)
{
    std::vector<std::pair<std::size_t, std::size_t>> grupos;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        if (pertencem.find(texto[i]) == std::string_view::npos) {
            continue;
        }
        if (!grupos.empty() && grupos.back().second == i) {
            ++grupos.back().second;
        } else {
            grupos.emplace_back(i, i + 1);
        }
    }
    return grupos;
}

// Digits in a template of random places. `Depois` as above.
std::string DepoisNoGabarito(std::string texto, std::string_view gabarito, char vazio, std::size_t posicao,
                             std::size_t n, std::string digitado)
{
    const auto grupos = GruposDe(gabarito, "0");
    const auto lugares = std::ranges::count(gabarito, '0');
    const auto digitos = std::ranges::count_if(digitado, [](char c) { return EDigito({&c, 1}); });
    if (digitado.size() > 1 && (GruposDe(digitado, Digitos).size() == grupos.size() || digitos >= lugares)) {
        posicao = 0;
        n = texto.size();
    }
    const auto vago = [&](std::size_t i) { return gabarito[i] == '0' && texto[i] == vazio; };
    for (std::size_t i = posicao; i < std::min(texto.size(), posicao + n); ++i) {
        texto[i] = gabarito[i] == '0' ? vazio : texto[i];
    }
    for (const char c : digitado) {
        std::size_t fim = texto.size();
        while (fim > 0 && (gabarito[fim - 1] != '0' || vago(fim - 1))) {
            --fim;
        }
        if (EDigito({&c, 1})) {
            posicao = std::min(posicao, fim);
            std::size_t lugar = gabarito.find('0', posicao);
            for (std::size_t i = texto.size(); i > 0 && gabarito.find('0', posicao) == std::string_view::npos; --i) {
                lugar = vago(i - 1) ? i - 1 : lugar;
            }
            if (lugar != std::string_view::npos) {
                texto[lugar] = c;
                posicao = lugar + 1;
            }
        } else if (std::string("/-.:, hH").find(c) != std::string::npos || gabarito.find(c) != std::string_view::npos) {
            posicao = std::min(posicao, fim);
            for (std::size_t g = 0; g + 1 < grupos.size(); ++g) {
                const auto [inicio, atras] = grupos[g];
                if (posicao < inicio || posicao > atras) {
                    continue;
                }
                std::string neles = texto.substr(inicio, atras - inicio);
                std::erase(neles, vazio);
                if (!neles.empty()) {
                    texto.replace(inicio, atras - inicio, std::string(atras - inicio - neles.size(), '0') + neles);
                    posicao = grupos[g + 1].first;
                }
                break;
            }
        }
    }
    return texto;
}

std::string EscritoNoGabarito(const std::string &texto, std::string_view gabarito, char vazio)
{
    if (NaForma(texto, gabarito, vazio)) {
        return texto;
    }
    std::string escrito(gabarito);
    std::ranges::replace(escrito, '0', vazio);
    std::string so = texto;
    std::erase_if(so, [](char c) { return !EDigito({&c, 1}); });
    for (std::size_t i = 0, lugar = 0; i < so.size(); ++i, ++lugar) {
        lugar = gabarito.find('0', lugar);
        if (lugar == std::string_view::npos) {
            break;
        }
        escrito[lugar] = so[i];
    }
    return escrito;
}

std::string SoDigitos(std::string_view texto, std::string_view gabarito, char vazio)
{
    std::string digitos;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        if (gabarito[i] == '0' && texto[i] != vazio) {
            digitos += texto[i];
        }
    }
    return digitos;
}

void Hora(Octetos &octetos)
{
    AjustesZtMask ajustes;
    ajustes.Tipo = TipoMascara::Hora;
    ajustes.Mascara = "00:00";
    if (octetos.Sim()) {
        ajustes.Mascara.clear();
        constexpr std::string_view Pecas = "000:/_- ";
        for (int tamanho = 1 + octetos.Ate(11); tamanho > 0; --tamanho) {
            ajustes.Mascara += Pecas[static_cast<std::size_t>(octetos.Ate(7))];
        }
    }
    const std::string gabarito = ajustes.Mascara;
    Ensaio<ztMask> ensaio(ajustes);
    for (int passo = 0; passo < MaximoPassos && !octetos.Acabou() && ensaio.Vivo(); ++passo) {
        ensaio.Passo(
            octetos, [&](const std::string &texto) { return EscritoNoGabarito(texto, gabarito, '_'); },
            [&](const std::string &antes, std::size_t posicao, std::size_t n, const std::string &texto) {
                return DepoisNoGabarito(antes, gabarito, '_', posicao, n, texto);
            });
        const ztMask &campo = *ensaio;
        const std::string texto = campo.Text();
        Exige(NaForma(texto, gabarito, '_'), "the mask", texto);
        Exige(campo.Valor() == SoDigitos(texto, gabarito, '_'), "the value is the digits", texto);
        Exige(campo.ValorNumerico() == Val(texto), "the number is the text's", texto);
    }
}

void Mascarado(Octetos &octetos)
{
    AjustesZtMask ajustes;
    ajustes.Tipo = octetos.Ate(2) * octetos.Ate(2) > 1 ? TipoMascara::Codigo
                   : octetos.Sim()                     ? TipoMascara::Digitos
                                                       : TipoMascara::Livre;
    ajustes.MaxLength = octetos.Ate(20);
    ajustes.TabelaCaracteres = octetos.Sim() ? std::int16_t{1} : std::int16_t{0};
    ajustes.SomenteMaiusculas = octetos.Sim();
    ajustes.ReadOnly = octetos.Ate(15) == 15;
    constexpr std::string_view Aceitos[] = {"", "._", "-/ '", "éÉ"};
    ajustes.CaracteresAceitos = Aceitos[octetos.Ate(3)];

    Regra regra;
    regra.Limite = static_cast<std::size_t>(ajustes.MaxLength);
    regra.Maiusculas = ajustes.Tipo == TipoMascara::Codigo && ajustes.SomenteMaiusculas;
    if (ajustes.Tipo == TipoMascara::Livre) {
        regra.Aceita = [](const std::string &) { return true; };
    } else if (ajustes.Tipo == TipoMascara::Digitos) {
        regra.Aceita = [](const std::string &carater) { return EDigito(carater); };
    } else {
        regra.Aceita = [&](const std::string &carater) {
            const bool letra = UCase(carater) != LCase(carater);
            return EDigito(carater) || (letra && (carater.size() == 1 || ajustes.TabelaCaracteres == 0)) ||
                   std::ranges::count(Separa(ajustes.CaracteresAceitos), carater) > 0;
        };
    }
    Ensaio<ztMask> ensaio(ajustes);
    ComRegra(octetos, ensaio, regra, [](const ztMask &campo, const std::string &texto) {
        Exige(campo.Valor() == texto, "the value is the text", texto);
        double numero = 0;
        double valor = 0;
        const std::int32_t falhaTexto = NumeroDaFalha([&] { valor = Val(texto); });
        const std::int32_t falhaNumero = NumeroDaFalha([&] { numero = campo.ValorNumerico(); });
        Exige(falhaNumero == falhaTexto && numero == valor, "the number is the text's", texto);
    });
}

void Caixa(Octetos &octetos)
{
    AjustesTextBox ajustes;
    ajustes.MaxLength = octetos.Ate(12);
    Regra regra;
    regra.Limite = static_cast<std::size_t>(ajustes.MaxLength);
    regra.Aceita = [](const std::string &) { return true; };
    regra.CortaEscrito = true;
    Ensaio<TextBox> ensaio(ajustes);
    ComRegra(octetos, ensaio, regra, [](const TextBox &, const std::string &) {});
}

bool DiaExiste(std::string_view texto)
{
    if (texto.find(' ') != std::string_view::npos) {
        return false;
    }
    const auto numero = [&](std::size_t onde, std::size_t quantos) {
        int valor = 0;
        for (const char c : texto.substr(onde, quantos)) {
            valor = valor * 10 + (c - '0');
        }
        return valor;
    };
    const int dia = numero(0, 2);
    const int mes = numero(3, 2);
    const int ano = numero(6, 4);
    const bool bissexto = (ano % 4 == 0 && ano % 100 != 0) || ano % 400 == 0;
    const int dias[] = {31, bissexto ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return ano >= 100 && mes >= 1 && mes <= 12 && dia >= 1 && dia <= dias[mes - 1];
}

// A date that begins with its year, from its day on.
std::string DataEmOrdem(const std::string &texto)
{
    const bool doAno =
        texto.size() == 10 && texto[4] == '-' && texto[7] == '-' && std::ranges::count_if(texto, [](char c) {
                                                                        return EDigito({&c, 1});
                                                                    }) == 8;
    return doAno ? texto.substr(8) + "/" + texto.substr(5, 2) + "/" + texto.substr(0, 4) : texto;
}

void CampoData(Octetos &octetos)
{
    constexpr std::string_view Gabarito = "00/00/0000";
    Ensaio<ztData> ensaio(AjustesZtData{});
    for (int passo = 0; passo < MaximoPassos && !octetos.Acabou() && ensaio.Vivo(); ++passo) {
        ensaio.Passo(
            octetos,
            [&](const std::string &texto) {
                if (texto.find_first_not_of(Digitos) == std::string::npos || NaForma(texto, Gabarito, ' ')) {
                    return EscritoNoGabarito(texto, Gabarito, ' ');
                }
                const bool dia = IsDate(texto) && (CDate(texto) < Data{0} || CDate(texto) >= Data{1});
                if (!dia) {
                    return std::string("  /  /    ");
                }
                std::string escrita = Format(CDate(texto), "dd/mm/yyyy");
                return escrita.insert(6, 10 - escrita.size(), '0');
            },
            [&](const std::string &antes, std::size_t posicao, std::size_t n, const std::string &texto) {
                return DepoisNoGabarito(antes, Gabarito, ' ', posicao, n, DataEmOrdem(texto));
            });
        ztData &campo = *ensaio;
        const std::string texto = campo.Text();
        Exige(NaForma(texto, Gabarito, ' '), "the mask", texto);
        const bool vazio = SoDigitos(texto, Gabarito, ' ').empty();
        Exige(campo.Valor() == (vazio ? std::string() : texto), "the value is the text when something is typed", texto);
        Exige(campo.DataValida() == DiaExiste(texto), "whether the day exists", texto);
        if (campo.DataValida()) {
            campo.DefineText(CStr(CDate(texto)));
            Exige(campo.Text() == texto || CDate(texto).Vazia(), "a valid date is read as it stands", texto);
        }
    }
}

// A year of two digits is made whole when the person leaves the field, and nothing else is.
void SaiDaData(Octetos &octetos)
{
    Ref<FormFalso> form = FormNaTela();
    Ref<ztData> campo = Feito<ztData>(form, Chamado<AjustesZtData>("campo"));
    Ref<TextBox> outro = Feito<TextBox>(form, Chamado<AjustesTextBox>("outro"));
    form->Guarda(campo);
    form->Guarda(outro);
    campo->Preenche(Frase(octetos));
    campo->Edita(static_cast<std::size_t>(octetos.Ate(9)), 1, {});
    const std::string antes = campo->Text();
    outro->Foco();
    std::string depois = antes;
    const std::string ano = antes.substr(6);
    if (EDigito(ano.substr(0, 1)) && EDigito(ano.substr(1, 1)) && ano.substr(2) == "  ") {
        depois = antes.substr(0, 6) + (ano < "30" ? "20" : "19") + ano.substr(0, 2);
    }
    Exige(campo->Text() == depois, "the year made whole", antes);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    return Despacha(dados, tamanho, {Hora, Mascarado, Mascarado, Caixa, CampoData, SaiDaData});
}
