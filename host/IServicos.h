#pragma once

#include "host/IAplicacaoHost.h"
#include "host/IPlataforma.h"
#include "host/IztCombo.h"

#include <cstdint>
#include <string>

// Message service.
class IMensagem : public Objeto {
  public:
    // Title of its boxes.
    virtual void DefineTitulo(const std::string &valor) = 0;
    // A date of a remote record in the form dd/mm/yyyy; empty for 0. reservado is always 0.
    virtual std::string FormataData(std::int32_t numero, std::int16_t reservado) = 0;
    // A time of a remote record in the form hh:mm:ss. reservado is always 0.
    virtual std::string FormataHora(std::int32_t numero, std::int16_t reservado) = 0;
    // Shows a notice; the control, if there is one, gets the focus afterwards.
    virtual void ExibeMensagem(const std::string &texto, const Ref<IFocavel> &controle) = 0;
    // Turns a form read-only for details mode.
    virtual void PreparaDetalhes(const Ref<IForm> &form) = 0;
    virtual void ExibeErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                           const std::string &fonte, const std::string &titulo) = 0;
    // Content of a document that arrived as text.
    virtual Bytes TextoParaBytes(const std::string &texto) = 0;
};

class IOrgao : public Objeto {
  public:
    virtual std::int32_t CodCliente() = 0;
};

// Domain-data service.
class IDadosVor : public Objeto {
  public:
    virtual void Inicializa(const Ref<IObjInterface> &objInterface) = 0;
    virtual void Finaliza() = 0;
    virtual Ref<IOrgao> ObtemOrgao() = 0;
    // Empties the combo and fills it with rejections, "text|number". The numbers are always 0.
    virtual void PreencheRejeicoes(const Ref<IztCombo> &combo, std::int32_t reservado1, std::int32_t reservado2) = 0;
    // Directory of the ".LAY" files, with a separator at its end.
    virtual std::string DirLayouts() = 0;
    // Empties the combo and fills it with the meter types of the photo-work mode, "text|code".
    // comTodos: puts "Todos|0" first. escolhePrimeiro: chooses the first item.
    virtual void PreencheTipoAgente(const Ref<IztCombo> &combo, bool trabFoto, bool comTodos, bool escolhePrimeiro) = 0;
    // The same with the equipment types of a meter type (0: all), "text|code"; "Todos|T" with comTodos.
    virtual void PreencheTipoEquip(const Ref<IztCombo> &combo, std::int16_t tipoAgente, bool trabFoto, bool comTodos,
                                   bool escolhePrimeiro) = 0;
    // Stores the document in a file. On true its number is in nroDocumento. reservado is always 0.
    virtual bool EnviaDocumento(const std::string &caminho, double &nroDocumento, std::int32_t reservado) = 0;
    // Fetches a whole document. reservado is always true.
    virtual bool RecebeDocumento(double nroDocumento, Bytes &bytes, bool reservado) = 0;
};

// Directory service.
class IDiretorios : public Objeto {
  public:
    // Directory for temporary documents, with a separator at its end. Always asked with 99 and "".
    virtual std::string ObtemDiretorio(std::int16_t codigo, const std::string &subdiretorio) = 0;
};

// Application-global object of the host's system library.
class IObjGlobalVor : public Objeto {
  public:
    // The fourth object is always Nothing.
    virtual void InicializaSessao(const Ref<IobjMTM> &objMTM, const Ref<IobjSCA> &objSCA, const Ref<IoAppEXE> &oAppEXE,
                                  const Ref<Objeto> &reservado) = 0;
    virtual Ref<ICredencial> ObtemCredencial() = 0;
};

// Document viewer.
class IDocumentoPDF : public Objeto {
  public:
    virtual void DefineArquivoPDF(const std::string &caminho) = 0;
    // Shows the file; true when it could be opened. modal: true returns when the person closes the viewer.
    virtual bool Mostra(bool modal) = 0;
};
