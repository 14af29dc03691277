#pragma once

#include "desk/windows/Renderizador.h"
#include "tela/EscolhaDeCliente.h"
#include "tela/EscolhaDeEndereco.h"

#include <vector>

class QCompleter;
class QLabel;
class QLineEdit;
class QPushButton;
class QStringListModel;

namespace mesa {

class Combo;

// Address picker: the streets found are offered while the person types.
class RenderEndereco : public Renderizador {
  public:
    RenderEndereco(Ref<IControle> controle, QWidget *widget, Borda borda, Ref<ILogradouros> logradouros,
                   Ref<MemoriaDeEnderecos> memoria);

    EscolhaDeEndereco &Escolha() { return m_Escolha; }

  protected:
    void Mostra() override;
    QWidget *WidgetDe(Parte parte) const override;

  private:
    void Digita(QLineEdit *onde, void (EscolhaDeEndereco::*digita)(const std::string &), const QString &texto);

    EscolhaDeEndereco m_Escolha;
    Combo *m_Municipio;
    QLineEdit *m_Via;
    QLineEdit *m_Numero;
    QLineEdit *m_Complemento;
    QPushButton *m_Usar;
    QPushButton *m_Limpar;
    QLabel *m_Atual;
    QStringListModel *m_Sugestoes;
};

// Picker of a client and one of its sectors.
class RenderClienteSetor : public Renderizador {
  public:
    RenderClienteSetor(Ref<IControle> controle, QWidget *widget, Borda borda, std::vector<ClienteOferecido> clientes);

  protected:
    void Mostra() override;
    QWidget *WidgetDe(Parte parte) const override;

  private:
    EscolhaDeCliente m_Escolha;
    Combo *m_Cliente;
    Combo *m_Setor;
};

} // namespace mesa
