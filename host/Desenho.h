#pragma once

#include "host/IControle.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// What a form looks like, told once and without any toolkit: its controls with their stored settings, in the order in
// which they are created, and how they are arranged. A screen layer with layouts draws it with its own; one without
// arranges it by itself.

// What a label is for.
enum class PapelLabel {
    Rotulo,    // names the piece behind it
    Texto,     // stands for itself on one line
    Paragrafo, // the same, on as many lines as it takes
    Valor,     // shows a value, in a box as high as a field
};

// What a masked field takes of what a person types. The numbers are those with which the field stores them.
enum class TipoMascara : std::int16_t {
    Livre = 0,
    Digitos = 1,
    Codigo = 7, // letters and digits
    Hora = 12,  // digits in the places of a template
};

// Stored settings that are particular to one kind of control.

struct AjustesLabel {
    PapelLabel Papel = PapelLabel::Rotulo;
};

struct AjustesTextBox {
    std::int32_t MaxLength = 0; // characters; 0 for no limit
};

struct AjustesCheckBox {};

struct AjustesOptionButton {};

struct AjustesCommandButton {
    bool Default = false;
    bool Cancel = false;
};

// The pieces in it are its pages.
struct AjustesSSTab {
    std::vector<std::string> Paginas{}; // captions
};

struct AjustesImage {
    std::string Icone{}; // key of the picture
};

struct AjustesCommonDialog {};

// The pieces in it stand in its criteria bar.
struct AjustesZtList {
    // 2: the standard items Novo, Editar, Detalhes, Excluir show from the start; 3: also Localizar and Atualizar.
    std::int16_t TipoMenu = 2;
    std::int16_t TipoMenuComPersonalizado = 0;
    bool AncorarAoForm = false;
    bool BotoesLaterais = false;
    bool BotaoEliminar = true;
    bool BotaoVisivel = true;
    bool BotaoEnabled = true;
    bool BotoesFecharAjuda = true;
    bool BarraCriteriosAtiva = false;
    bool BarraCriteriosAutoOcultar = false;
    std::int32_t BarraCriteriosAltura = 0;
};

struct AjustesZtCombo {
    std::int16_t ColunaValor = 1; // column of the value, from 0; -1: no value column
    std::string DelimitadorColuna = "|";
    std::string Conteudo{}; // items from the start, each ended by "??"
    std::int16_t Estilo = 0;
    bool PesquisaAoDigitar = false; // searches as the person types
};

struct AjustesZtMask {
    std::int32_t MaxLength = 0; // characters, mask characters included; 0 for no limit
    TipoMascara Tipo = TipoMascara::Livre;
    std::string Mascara{};             // template of an hour, "00:00"
    std::string CaracteresAceitos{};   // taken besides the letters and digits of a code
    std::int16_t TabelaCaracteres = 0; // 1: of the letters, a code takes only those without accents
    bool SomenteMaiusculas = true;     // letters of a code become upper case as they are typed
    bool ReadOnly = false;
};

struct AjustesZtData {};

struct AjustesZtCommand {
    bool Default = false;
    bool LockFormOnClick = false; // the form is disabled while both events run
};

struct AjustesZtFrame {
    bool Contorno = false; // drawn as a box, with its caption on it; otherwise only holds what is in it
};

struct AjustesZtVeiObservacao {
    std::int32_t MaxLength = 0; // characters; 0 for no limit
};

struct AjustesZtEndereco {
    std::int16_t TipoCapturaEndereco = 0;
    bool ReadOnlyMunicipio = false;
    bool LogradouroObrigatorio = true;
    bool MostrarSomenteComBairro = false;
    bool ObrigarCodigoLogradouro = true;
    bool MostrarEnderecosIncompletos = true;
    std::int16_t EstiloEdicao = 0;
    std::int16_t TipoBorda = 0;
    bool MostraCepEPesquisaCep = true;
};

struct AjustesZtClienteSetor {};

// The settings tell the kind of control: behind the mere arrangement, one alternative each, in the order of the kinds.
using AjustesPeca = std::variant<std::monostate, AjustesLabel, AjustesTextBox, AjustesCheckBox, AjustesOptionButton,
                                 AjustesCommandButton, AjustesSSTab, AjustesImage, AjustesCommonDialog, AjustesZtList,
                                 AjustesZtCombo, AjustesZtMask, AjustesZtData, AjustesZtCommand, AjustesZtFrame,
                                 AjustesZtVeiObservacao, AjustesZtEndereco, AjustesZtClienteSetor>;

// How the pieces in a piece stand.
enum class Arranjo {
    Coluna, // one below the other
    Linha,  // one behind the other; those that have a Left stand in its order
    Grade,  // the pieces are rows, and what is in them stands in columns that are the same for all rows
};

// A control, or a mere arrangement of others.
struct Peca {
    AjustesPeca Ajustes{};
    std::string Nome{};
    std::int16_t Indice = -1; // inside a control array; -1 for a control that is in none
    std::string Caption{};
    // Text before the control, which has no label control of its own: in a row right before it, in a grid in the cell
    // before it. The form may change it.
    std::string Rotulo{};
    std::string NomeAcessivel{}; // what a screen reader says; empty: the text before the control, or its own
    bool Enabled = true;
    bool Visible = true;
    // Twips; told where a rule of the form reads or writes them, and only then.
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;

    // Natural width in characters; 0: of a field its limit, of a combo its values, of anything else its text.
    std::int16_t Caracteres = 0;
    std::int16_t Vao = 1;  // columns of the grid that it takes, its text before it not counted
    bool Elastica = false; // takes the room that is left in its row, its column of a grid, or its column of pieces

    Arranjo Disposicao = Arranjo::Coluna;
    std::vector<Peca> Pecas{};

    // Nothing for a mere arrangement.
    std::optional<EspecieControle> Especie() const
    {
        if (Ajustes.index() == 0) {
            return {};
        }
        return static_cast<EspecieControle>(Ajustes.index() - 1);
    }
};

struct Desenho {
    std::string Caption{};    // of the window, at each load
    std::int32_t Largura = 0; // twips
    std::int32_t Altura = 0;
    Peca Raiz{};
};

inline Peca EmColuna(std::vector<Peca> pecas)
{
    return {.Pecas = std::move(pecas)};
}

inline Peca EmLinha(std::vector<Peca> pecas)
{
    return {.Disposicao = Arranjo::Linha, .Pecas = std::move(pecas)};
}

inline Peca EmGrade(std::vector<Peca> linhas)
{
    return {.Disposicao = Arranjo::Grade, .Pecas = std::move(linhas)};
}

// Empty room that gives way or grows.
inline Peca Mola()
{
    return {.Elastica = true};
}
