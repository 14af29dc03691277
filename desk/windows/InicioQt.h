#pragma once

#include "desk/host/Inicio.h"
#include "desk/windows/TeclaDeAjuda.h"

#include <memory>

class QProgressDialog;

namespace mesa {

// The person in front of the windows that the desk has before its main one.
class InicioQt : public IPessoaNoInicio {
  public:
    InicioQt();
    ~InicioQt() override;

    OpcaoDoInicio Comeca() override;
    bool
    PedeRegistroNovo(const std::function<std::optional<ProblemaDoRegistroNovo>(const RegistroNovo &)> &faz) override;
    std::optional<std::filesystem::path> EscolheRegistro() override;
    std::optional<std::filesystem::path> EscolheCopia() override;
    OpcaoDaFalta Falta(const std::string &frase) override;
    std::optional<LugarDoTrabalho> EscolheLugar(const LugarDoTrabalho &agora) override;
    bool ConfiaNoServidor(const std::string &servidor, const std::string &digital) override;
    OpcaoSemServidor FaltaServidor(const std::string &frase) override;
    bool Continua(const std::string &frase, const std::vector<std::string> &achados) override;
    bool Aceita(const std::string &pergunta) override;
    void Avisa(const std::string &frase) override;
    void Progresso(double parte) override;

  private:
    std::unique_ptr<QProgressDialog> m_Preparo;
    TeclaDeAjuda m_TeclaDeAjuda;
};

} // namespace mesa
