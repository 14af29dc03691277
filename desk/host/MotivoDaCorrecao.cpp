#include "desk/host/MotivoDaCorrecao.h"

#include "services/TextoQt.h"

namespace mesa {

namespace {

constexpr qsizetype Minimo = 5;
constexpr qsizetype Maximo = 500;

} // namespace

Ficha FichaDoMotivo(const std::string &pergunta, std::string &motivo)
{
    Ficha ficha;
    ficha.Nome = "Motivo";
    ficha.Titulo = "Motivo da correção";
    ficha.Frase = pergunta;
    ficha.Campos.push_back({.Nome = "motivo", .Rotulo = "&Motivo:", .Especie = EspecieDoCampo::Linhas});
    ficha.Salva = [&motivo](Ficha &aberta) -> std::optional<ProblemaDaFicha> {
        const QString informado = Q(aberta.Valor("motivo")).trimmed();
        if (informado.size() < Minimo) {
            return ProblemaDaFicha{"motivo", "Informe o motivo da correção, com ao menos 5 caracteres."};
        }
        if (informado.size() > Maximo) {
            return ProblemaDaFicha{"motivo", "O motivo da correção tem no máximo 500 caracteres."};
        }
        motivo = S(informado);
        return std::nullopt;
    };
    return ficha;
}

} // namespace mesa
