#pragma once

#include "tests/support/PessoaNaTela.h"
#include "windows/screen/CamadaWindows.h"

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

namespace nativo {

// The person in front of the native windows, with mouse and keyboard, from a thread of its own. An action ends when the
// windows that it has opened are gone: what is done in them, and what is answered, stands in the way. What is seen is
// read from the platform's controls.
class OperadorNativo : public PessoaNaTela {
  public:
    // Goes what is told for the window of that class, which is waited for, and for those that it opens, while this
    // thread, which is that of the windows, runs their messages. Empty when all was as expected, otherwise what was
    // not.
    static std::string Percorre(CamadaWindows &camada, const Percurso &percurso, const std::string &janela);

    void Clica(const std::string &nome, std::int16_t indice) override;
    void Marca(const std::string &nome, std::int16_t indice) override;
    void Preenche(const std::string &nome, const std::string &texto) override;
    void Escolhe(const std::string &nome, const std::string &texto) override;
    void Abre(const std::string &nome, std::int16_t pagina) override;
    void ClicaLinha(const std::string &nome, std::int32_t linha) override;
    void EscolheMenu(const std::string &nome, const std::string &chave) override;
    void PedeMais(const std::string &nome) override;
    void Localiza(const std::string &nome) override;
    void OrdenaPor(const std::string &nome, std::int32_t coluna) override;
    void InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                         const std::string &complemento, const std::string &cep, const std::string &descricao) override;
    void EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor) override;
    void Fecha() override;

    // Looks at the window in front, in the thread of the windows.
    void Olha(const std::function<void(HWND)> &olhar);

    std::int32_t Linhas(const std::string &nome) override;
    std::string Celula(const std::string &nome, std::int32_t linha, const std::string &coluna) override;

  private:
    class Telas;

    OperadorNativo(Telas &telas, const Percurso &percurso, std::string janela, const OperadorNativo *atras);

    static void Entra(Telas &telas, const Percurso &percurso, const std::string &janela, const OperadorNativo *atras);
    // Whether the way goes through a window in which nobody is yet.
    bool Falta(const std::string &janela) const;
    void Faz(const std::function<void()> &acao);
    // In the thread of the windows.
    const Renderizador &De(const std::string &nome, std::int16_t indice = -1) const;
    HWND Janela(const std::string &nome, Parte parte = Parte::Todo, std::int16_t indice = -1) const;
    void ClicaEm(HWND janela) const;
    void ClicaEm(HWND janela, POINT onde) const;
    void EscreveEm(HWND campo, const std::string &texto) const;
    void EscolheEm(HWND combo, const std::string &texto) const;

    Telas &m_Telas;
    const Percurso &m_Percurso;
    std::string m_Janela;
    const OperadorNativo *m_Atras;
};

} // namespace nativo
