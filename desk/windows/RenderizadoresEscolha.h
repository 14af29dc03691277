#pragma once

#include "controls/ztClienteSetor.h"
#include "desk/host/Logradouros.h"
#include "desk/services/SessaoServico.h"
#include "desk/windows/Renderizador.h"

#include <vector>

class QComboBox;
class QCompleter;
class QLabel;
class QLineEdit;
class QPushButton;
class QStringListModel;

// Address picker: finds the street by name or postal code while the person types.
class RenderEndereco : public Renderizador {
  public:
    RenderEndereco(Ref<IControle> controle, QWidget *widget, Borda borda);

    std::vector<QWidget *> Partes() const override;

  protected:
    void Mostra() override;
    QWidget *AlvoDoFoco() override;

  private:
    std::int32_t CodMunic() const;
    void Procura(const QString &texto);
    void Escolhe(const QString &item);
    void Usa();

    QComboBox *m_Municipio;
    QLineEdit *m_Via;
    QLineEdit *m_Numero;
    QLineEdit *m_Complemento;
    QPushButton *m_Usar;
    QPushButton *m_Limpar;
    QLabel *m_Atual;
    QStringListModel *m_Sugestoes;
    QCompleter *m_Completador;
    std::vector<Logradouro> m_Achados;
    Logradouro m_Escolhido;
    Conexao m_MudouEndereco;
};

// Picker of a client and one of its sectors.
class RenderClienteSetor : public Renderizador {
  public:
    RenderClienteSetor(Ref<IControle> controle, QWidget *widget, Borda borda, std::vector<ClienteCadastrado> clientes);

    std::vector<QWidget *> Partes() const override;

  protected:
    void Mostra() override;
    QWidget *AlvoDoFoco() override;

  private:
    void Escolhe();
    void MostraSetores(const std::string &cliente);

    std::vector<ClienteCadastrado> m_Clientes;
    QComboBox *m_Cliente;
    QComboBox *m_Setor;
};
