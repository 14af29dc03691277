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

    // An equipment with every member filled, number 7; then with these members (DoTexto).
    static Ref<EquiptoED> NovoED(const std::string &tipoEquip = "C", const std::string &membros = "");
    // Its member Sensores, of some Sensor; and what stands in it.
    static std::string Sensores(const std::string &sensores) { return "Sensores=[" + sensores + "]"; }
    static std::string Sensor(std::int32_t nroInt, std::int16_t nro, const std::string &local,
                              const std::string &afericoes = "");
    static std::string Afericao(std::int32_t nroInt, const std::string &numero);
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

    // Of controls, their names separated by blanks: what each shows, separated by "|", and which of them are so.
    static std::string Valores(const Pessoa &p, const std::string &nomes);
    static std::string Habilitados(const Pessoa &p, const std::string &nomes);
    static std::string Visiveis(const Pessoa &p, const std::string &nomes);
    static std::string Travados(const Pessoa &p, const std::string &nomes);
    static std::int32_t NroItens(const Pessoa &p, const std::string &combo)
    {
        return p.Acha<IztCombo>(combo)->NroItens();
    }
    static std::int16_t Pagina(const Pessoa &p) { return p.Acha<ISSTab>("sstDados")->Tab(); }
    // Which pages are available.
    static std::vector<bool> Paginas(const Pessoa &p);
    // Whether ztCmdOK and ztCmdAplicar are enabled.
    static std::vector<bool> Botoes(const Pessoa &p);

    // The control fails as long as this lives, whenever it changes.
    static Conexao Estraga(const Pessoa &p, const std::string &controle, std::int16_t indice = -1);
    // The error boxes since the last question.
    Linhas Erros() { return host->ErrosNovos(); }

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
