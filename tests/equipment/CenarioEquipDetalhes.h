#pragma once

#include "equipment/frmEquipDetalhes.h"
#include "tests/support/HostTeste.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// A logged-on shell and an equipment form, with services that answer one equipment. Every equipment type is offered for
// the meter type 1, in both photo-work modes, together with an unknown one and one without a code.
class EquipDetalhesTeste : public HostTeste {
  protected:
    using Linhas = std::vector<std::string>;
    using Roteiro = std::function<void(Pessoa &)>;

    void SetUp() override;
    void TearDown() override;

    // Opens the form; the person does what the script says.
    bool Inclui(const Roteiro &roteiro, bool trabFoto = false);
    bool Edita(const Roteiro &roteiro, bool trabFoto = false);
    void Detalha(const Roteiro &roteiro, bool trabFoto = false);

    // An equipment with every member filled, number 7.
    static Ref<EquiptoED> NovoED(const std::string &tipoEquip = "C");
    // "consulta" answers this equipment from now on.
    void Responde(const Ref<EquiptoED> &equipto);
    // "inclui" answers the record sent with the number 7; "altera" is accepted.
    void AceitaSalvar();

    // Fills a new equipment of a type so that it can be saved.
    static void PreencheNovo(Pessoa &p, const std::string &tipoEquip);
    static void EscolheTipo(Pessoa &p, const std::string &tipoEquip);
    // Presses the button and answers its confirmation.
    void Aplica(Pessoa &p, bool inclusao, bool sim = true, const std::string &botao = "ztCmdAplicar");
    // Leaves an unaltered form.
    static void Cancela(Pessoa &p) { EXPECT_TRUE(p.Clica("cmdCancelar")); }
    // Leaves an altered form.
    void Descarta(Pessoa &p);
    static void Fecha(Pessoa &p) { EXPECT_TRUE(p.Fecha()); }

    static bool Visivel(const Pessoa &p, const std::string &nome) { return p.Acha(nome)->Visible(); }
    static bool Habilitado(const Pessoa &p, const std::string &nome) { return p.Acha(nome)->Enabled(); }
    static std::string Caption(const Pessoa &p, const std::string &nome) { return p.Acha(nome)->Caption(); }
    static std::string Texto(const Pessoa &p, const std::string &nome);
    static std::string Valor(const Pessoa &p, const std::string &combo) { return p.Acha<IztCombo>(combo)->Valor(); }
    static bool Ligada(const Pessoa &p, const std::string &opcao, std::int16_t indice = -1);
    static bool Marcada(const Pessoa &p, const std::string &caixa);
    static std::int16_t Pagina(const Pessoa &p) { return p.Acha<ISSTab>("sstDados")->Tab(); }
    // Which pages are available.
    static std::vector<bool> Paginas(const Pessoa &p);
    // Whether ztCmdOK and ztCmdAplicar are enabled.
    static std::vector<bool> Botoes(const Pessoa &p);

    // The only call of a remote operation in the log, without its result; otherwise how many there were.
    std::string Enviado(const std::string &metodo);
    // What was sent with that call of one member; empty when the member was left unset.
    std::string MembroEnviado(const std::string &metodo, const std::string &membro);

    static constexpr const char *Confirmacao(bool inclusao)
    {
        return inclusao ? "Confirma a inclusão?" : "Confirma a alteração?";
    }
    static constexpr const char *PerguntaDescarte = "Foram feitas alterações neste equipamento. Deseja descartá-las?";

    Ref<frmEquipDetalhes> form;
};

inline const std::vector<bool> BotoesDesligados{false, false};
inline const std::vector<bool> BotoesLigados{true, true};
inline const std::vector<bool> SoAplicar{false, true};
