#pragma once

#include "controls/ztList.h"
#include "host/MenuLista.h"
#include "shell/Formulario.h"
#include "tela/Pessoa.h"
#include "tests/support/HostTeste.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

using Textos = std::vector<std::string>;

// A person's action that must work, or must not.
#define FAZ(pessoa, gesto) EXPECT_TRUE((pessoa).gesto) << (pessoa).Motivo()
#define NAO_FAZ(pessoa, gesto) EXPECT_FALSE((pessoa).gesto)

// The keys of the standard items that are enabled, without their common beginning.
Textos MenuHabilitado(const Ref<IztList> &lista);
// Enables those of the standard items that would not be on their own, and disables the others.
void EstragaMenu(const Ref<IztList> &lista);
const Textos MenuEstragado{"Editar", "Excluir"};
const Textos SoNovo{"Novo"};
const Textos SemExcluir{"Novo", "Editar", "Detalhes"};
const Textos MenuCheio{"Novo", "Editar", "Detalhes", "Excluir"};

// The cells of a row, or of a column.
Textos Linha(const Ref<IztList> &lista, std::int32_t linha);
Textos Coluna(const Ref<IztList> &lista, std::int32_t coluna);

// What the list consists of at each of its notices while something is done, the same only once in a row: its columns,
// its rows and how many standard items are enabled, "3/0/4".
Textos RetratosDaLista(const Ref<IztList> &lista, const std::function<void()> &acao);

// While the answer is kept, whatever changes the list raises fault 70 of source "Fora".
Conexao FalhaAoMudar(const Ref<IztList> &lista);

// The sources of the faults that a command raises when its first request for memory is refused, then its second, and so
// on up to the first attempt that asks for less. Every fault must be the platform's for lack of memory.
std::set<std::string> FontesSemMemoria(const std::function<void()> &comando);

// A window with one list and a button, in which a list's controller works as in a form of the module.
class frmComLista : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmComLista"; }
    ::Desenho Desenho() const override;
    void Abre();

    Ref<IztList> ztLista;

  protected:
    void LigaControles() override { Toma(ztLista, "ztLista"); }
};

// A scenario, with a shell on which the host has logged on, and in it a controller that is to drive such a list.
template <class Cenario, class Controlador> class ComLista : public Cenario {
  protected:
    void SetUp() override
    {
        Cenario::SetUp();
        dona = Novo<frmComLista>();
        dona->Abre();
        lista = dona->ztLista;
        controlador = Novo<Controlador>();
        this->host->LimpaRegistro();
    }
    void TearDown() override
    {
        controlador = nullptr;
        lista = nullptr;
        dona = nullptr;
        Cenario::TearDown();
    }

    Pessoa Operador() { return Pessoa(dona, this->host->Tela); }
    // The person makes a row the current one, unless it is 0, and chooses a standard item.
    void Comanda(const std::string &item, std::int32_t linha = 0)
    {
        Pessoa operador = Operador();
        if (linha > 0) {
            FAZ(operador, ClicaLinha("ztLista", linha));
        }
        FAZ(operador, EscolheMenu("ztLista", "mnuZTLObj" + item));
    }

    Ref<frmComLista> dona;
    Ref<IztList> lista;
    Ref<Controlador> controlador;
};
