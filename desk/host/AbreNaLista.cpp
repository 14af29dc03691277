#include "desk/host/AbreNaLista.h"

#include "controls/ztList.h"
#include "controls/ztMask.h"
#include "host/MenuLista.h"
#include "host/Texto.h"
#include "tela/Pessoa.h"

namespace mesa {

namespace {

constexpr const char *Lista = "ztlLista";
constexpr const char *Codigo = "txtCodEquip";

// A list is searched by the beginning of a code: what the field does not take, and what is behind it, is left out.
void DigitaComeco(Pessoa &pessoa, const ztMask &campo, const std::string &texto)
{
    pessoa.Apaga(Codigo);
    for (std::size_t tomados = 0; tomados < Len(texto); ++tomados) {
        const std::string antes = campo.Text();
        if (!pessoa.Digita(Codigo, Mid(texto, tomados + 1, 1)) || campo.Text() == antes) {
            return;
        }
    }
}

// The page on which it stands may not be the first.
std::int32_t LinhaDe(Pessoa &pessoa, const ztList &lista, std::int32_t nroIntEquip)
{
    std::int32_t linha = 0;
    do {
        while (linha < lista.NroItens()) {
            ++linha;
            if (lista.Celula(linha, "NroIntEquip") == std::to_string(nroIntEquip)) {
                return linha;
            }
        }
    } while (lista.TemMais() && pessoa.PedeMais(Lista) && linha < lista.NroItens());
    return 0;
}

} // namespace

bool AbreNaLista(const Ref<IForm> &form, const EquipamentoRecente &qual)
{
    Pessoa pessoa(form);
    const Ref<ztList> lista = pessoa.Acha<ztList>(Lista);
    const Ref<ztMask> codigo = pessoa.Acha<ztMask>(Codigo);
    if (lista.Nada() || codigo.Nada()) {
        return false;
    }
    pessoa.EscolheCliente("ztCliente", qual.Cliente, "");
    pessoa.EscolheIndice("cboTipoAgente", 0);
    pessoa.EscolheIndice("cboTipoEquipto", 0);
    pessoa.Escolhe("cboCriterio", "Código");
    DigitaComeco(pessoa, *codigo, qual.Codigo);
    if (codigo->Text().empty()) { // none of it can be typed there
        pessoa.Escolhe("cboCriterio", "Todos");
    }
    if (qual.Ativo) {
        pessoa.Desmarca("chkInativos");
    } else {
        pessoa.Marca("chkInativos");
    }
    if (!pessoa.Localiza(Lista)) {
        return false;
    }
    const std::int32_t linha = LinhaDe(pessoa, *lista, qual.NroIntEquip);
    if (linha == 0 || !pessoa.Foco(Lista)) {
        return false;
    }
    lista->DefineItemAtual(linha); // whatever the order in which the person sees the rows
    if (lista->ItemAtual() != linha || !pessoa.EscolheMenu(Lista, MenuLista::Detalhes)) {
        return false;
    }
    lista->SetFocus(); // to go on from there
    return true;
}

} // namespace mesa
