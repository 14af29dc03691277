#include "windows/host/ControlesDoForm.h"

#include "host/Texto.h"

#include <algorithm>

namespace nativo {
namespace {

constexpr std::int32_t ElementoInexistente = 340;

} // namespace

Ref<::Objeto> ControlesDoForm::Item(const Valor &indice) const
{
    if (const auto *nome = std::get_if<std::string>(&indice.Interno())) {
        if (Ref<::Objeto> controle = Chamado(m_Form, *nome)) {
            return controle;
        }
        throw Falha(NumeroFalha::MembroInexistente);
    }
    const std::int32_t posicao = indice.CLng();
    if (posicao < 0 || posicao >= Count()) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    return Todos()[static_cast<std::size_t>(posicao)];
}

Ref<::Objeto> ControlesDoForm::Chamado(const Ref<IForm> &form, std::string_view nome)
{
    const auto &todos = form->Controles();
    const auto achado =
        std::ranges::find_if(todos, [&](const Ref<IControle> &este) { return IgualSemCaixa(este->Nome(), nome); });
    if (achado == todos.end()) {
        return {};
    }
    if ((*achado)->Indice() < 0) {
        return *achado;
    }
    return Novo<ArranjoDeControles>(form, (*achado)->Nome());
}

Ref<IControle> ArranjoDeControles::Item(std::int16_t indice) const
{
    for (const Ref<IControle> &controle : Todos()) {
        if (controle->Indice() == indice) {
            return controle;
        }
    }
    throw Falha(ElementoInexistente);
}

std::vector<Ref<IControle>> ArranjoDeControles::Todos() const
{
    std::vector<Ref<IControle>> todos;
    std::ranges::copy_if(m_Form->Controles(), std::back_inserter(todos),
                         [&](const Ref<IControle> &este) { return este->Nome() == m_Nome; });
    return todos;
}

} // namespace nativo
