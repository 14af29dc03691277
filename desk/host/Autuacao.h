#pragma once

#include "desk/host/Dossies.h"
#include "host/Data.h"
#include "search/CVorEquip.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

// What is asked for a notice of infraction.
struct PerguntaDaAutuacao {
    std::string Codigo;  // of the equipment
    std::string Tipo;    // empty for all
    Data DataDaInfracao; // empty: without the calibration
};

// The query for notices of infraction without its window: what was asked last, what the registry answered to that and
// to nothing else, and the certificate of the calibration in the answer.
class Autuacao {
  public:
    // criaConsulta: makes a query service of the registry. Each question has one of its own, since a service keeps what
    // it answered before.
    explicit Autuacao(std::function<Ref<CVorEquip>()> criaConsulta) : m_CriaConsulta(std::move(criaConsulta)) {}

    // Ask. The answer to the question before is gone whatever comes of this one, a fault too.
    void Seleciona(const PerguntaDaAutuacao &pergunta);
    void Busca(const PerguntaDaAutuacao &pergunta);
    // The person changes the question: what was answered to the one before is not the answer to it.
    void MudaPergunta();
    // The person writes the number of a calibration of that equipment.
    void DefineNroAfericao(const std::string &numero) { m_NroAfericao = numero; }
    // Shows the certificate of the calibration of that number.
    void Imprime();

    // What a dossier is of: the equipment of the answer; without one, that of the code, since a dossier also tells why
    // there is no answer. Nothing, and the reason in Frase, without a code or a day.
    std::optional<PedidoDeDossie> Dossie(const PerguntaDaAutuacao &pergunta);

    // What came of what was done last; empty when nothing was.
    const std::string &Frase() const { return m_Frase; }
    static constexpr int NroRespostas = 7;
    // Internal number, model, code, speed, number at INMETRO, certificate and date of verification; all empty when
    // there is no answer.
    const std::vector<std::string> &Respostas() const { return m_Respostas; }
    // Internal number of the calibration in the answer, empty when there is none in it; or what was written since.
    const std::string &NroAfericao() const { return m_NroAfericao; }

  private:
    using Procura = bool (CVorEquip::*)(const std::string &, const std::string &, Data);
    void Pergunta(const PerguntaDaAutuacao &pergunta, Procura procura, const char *achou, const char *naoAchou);
    static std::string NroDaAfericaoDe(const CVorEquip &consulta, Data dia);

    std::function<Ref<CVorEquip>()> m_CriaConsulta;
    Ref<CVorEquip> m_Consulta; // of the answer
    std::string m_Frase;
    std::vector<std::string> m_Respostas = std::vector<std::string>(NroRespostas);
    std::string m_NroAfericao;
};

} // namespace mesa
