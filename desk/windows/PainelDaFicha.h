#pragma once

#include "desk/host/Ficha.h"

#include <QWidget>

#include <functional>
#include <string>
#include <utility>
#include <vector>

class QFormLayout;

namespace mesa {

// The fields of a form as widgets, each with the field's name.
class PainelDaFicha : public QWidget {
  public:
    // ficha: outlives the panel.
    PainelDaFicha(Ficha &ficha, QWidget *dono);

    // Puts what the person did into the form.
    void Recolhe();
    // The same of the passwords, which are in the form only while it is being taken.
    void RecolheSenhas();
    void LimpaSenhas();
    void Foca(const std::string &campo);

  private:
    struct Posto {
        std::string Campo;
        QWidget *Widget = nullptr;
        std::function<void(CampoDaFicha &)> Recolhe;
        std::function<void(const CampoDaFicha &)> Mostra;
    };

    QFormLayout *Lugar(const std::string &grupo, QFormLayout *principal);
    Posto FazTexto(CampoDaFicha &campo);
    Posto FazSenha(CampoDaFicha &campo);
    Posto FazEscolha(CampoDaFicha &campo);
    Posto FazMarca(CampoDaFicha &campo);
    Posto FazLinhas(CampoDaFicha &campo);
    Posto Faz(CampoDaFicha &campo);
    void Mudou(const std::string &campo);

    Ficha &m_Ficha;
    std::vector<Posto> m_Postos;
    std::vector<std::pair<std::string, QFormLayout *>> m_Grupos;
    bool m_Mostrando = false;
};

} // namespace mesa
