#pragma once

#include "tests/windows/externo/ClassesExternas.h"
#include "tests/windows/externo/ObjetoTardio.h"
#include "tests/windows/externo/ServicosExternos.h"

#include <windows.h>

#include <string>
#include <vector>

namespace nativo {

// A host that knows the component by its identifiers alone. Its objects are offered by name, its main form is a real
// window, and its boxes are real boxes.
class HospedeiroExterno {
  public:
    // semBiblioteca: the records' library is not registered.
    explicit HospedeiroExterno(bool semBiblioteca = false);
    HospedeiroExterno(const HospedeiroExterno &) = delete;
    HospedeiroExterno &operator=(const HospedeiroExterno &) = delete;
    ~HospedeiroExterno();

    // What the host does with a component that it has created, up to the session.
    void Prepara(const ObjetoTardio &geral);
    void Entra(const ObjetoTardio &geral);

    // Its boxes are told to the diary alone, and nobody has to close them.
    void SemCaixas() { m_ComCaixas = false; }

    // What the host gives to the component.
    Contado<ObjetoExterno> objMTM, objSCA, cGlobal, ObjInterface, FormMDI, MenuDestino, oAppEXE, MDB;

    Diario Livro;
    ServicosExternos Servicos{Livro};
    ClassesExternas Classes;
    bool Logado = true;
    bool Permite = true;

    // The form that was shown last.
    const ObjetoTardio &UltimaJanela() const { return m_UltimaJanela; }
    void EsqueceJanela() { m_UltimaJanela = ObjetoTardio(); }

    HWND Janela() const { return m_Janela; }
    const std::wstring &Pasta() const { return m_Pasta; }

    static constexpr const char *Titulo = "Fiscalização de Trânsito";
    static constexpr const wchar_t *ClasseDaJanela = L"HospedeiroExterno";

  private:
    void FazObjetos();
    void FazClasses(bool semBiblioteca);
    Contado<ObjetoExterno> FazTrataBD();
    Contado<ObjetoExterno> FazQMR();
    Contado<ObjetoExterno> FazMDB();
    Contado<ObjetoExterno> FazMensagem();
    Contado<ObjetoExterno> FazDadosVor();
    Contado<ObjetoExterno> FazVisor();
    Contado<ObjetoExterno> FazDiretorios();
    Contado<ObjetoExterno> FazGlobal();
    Contado<ObjetoExterno> FazLogradouros();
    Contado<ObjetoExterno> FazClientes();
    Var AbreConsulta(const std::string &sql);
    void MostraJanela(const ChamadaRecebida &chamada);
    void Caixa(const std::string &texto, const std::string &titulo, UINT estilo);

    HWND m_Janela = nullptr;
    std::wstring m_Pasta; // of its documents, with a separator at its end
    bool m_ComCaixas = true;
    ObjetoTardio m_UltimaJanela;
};

} // namespace nativo
