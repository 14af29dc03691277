#pragma once

#include "tests/support/PlataformaRoteirizada.h"
#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// What the domain-data service, the message service and the logon's objects answer; kept by the host, so that it stays
// when the module creates those services again.
struct DominioRoteirizado {
    struct Aviso {
        std::string Texto;
        std::string Controle; // name of the control that got the focus; empty without one
        std::string Titulo;   // of the box
    };
    struct CaixaErro {
        std::string Contexto;
        std::int32_t Numero = 0;
        std::string Descricao;
        std::string Fonte;
        std::string Titulo;
    };
    struct TipoMedidor {
        std::int16_t Codigo;
        std::string Texto;
        bool TrabFoto;
    };
    struct TipoEquipamento {
        std::string Codigo;
        std::string Texto;
        std::int16_t TipoMedidor;
        bool TrabFoto;
    };

    std::int32_t CodCliente = 2;
    std::int32_t Credencial = 4711;
    std::int32_t CodMunic = 0;
    std::string DirLayouts = "C:\\HOST\\LAYOUTS\\";
    std::string DirTemporarios = "C:\\HOST\\TEMP\\";

    // Each row is offered in one mode only; a type that exists in both stands twice.
    std::vector<TipoMedidor> TiposMedidor{
        {1, "Fixo", true}, {2, "Estático", true}, {1, "Fixo", false}, {2, "Estático", false}, {3, "Portátil", false}};
    std::vector<TipoEquipamento> TiposEquipamento{{"C", "Caetano", 1, true},
                                                  {"L", "Lombada", 1, true},
                                                  {"P", "Pardal", 1, true},
                                                  {"R", "Radar Fotográfico", 1, true},
                                                  {"F", "Agente Eletrônico", 1, true},
                                                  {"V", "Verif. Estac. Rotativo", 1, true},
                                                  {"M", "Pardal Móvel", 2, true},
                                                  {"R", "Radar Fotográfico", 2, true},
                                                  {"C", "Caetano", 1, false},
                                                  {"L", "Lombada", 1, false},
                                                  {"P", "Pardal", 1, false},
                                                  {"R", "Radar Fotográfico", 1, false},
                                                  {"F", "Agente Eletrônico", 1, false},
                                                  {"V", "Verif. Estac. Rotativo", 1, false},
                                                  {"M", "Pardal Móvel", 2, false},
                                                  {"R", "Radar Fotográfico", 2, false},
                                                  {"A", "Operado por Agente", 3, false},
                                                  {"E", "Etilômetro", 3, false},
                                                  {"U", "Luxímetro", 3, false},
                                                  {"B", "Bafômetro", 3, false}};
    std::vector<std::pair<std::string, std::int32_t>> Rejeicoes{{"Excesso dentro do horário diferenciado", 31},
                                                                {"Imagem sem nitidez", 32}};

    // Documents by number; the next one gets the number after the last.
    std::map<double, Bytes> Documentos;
    double UltimoDocumento = 0;
    bool AceitaEnvio = true;
    bool AceitaRecebimento = true;

    std::vector<Aviso> Avisos;
    std::vector<CaixaErro> Erros;
};

class MensagemRoteirizada : public IMensagem {
  public:
    MensagemRoteirizada(RefRegistro registro, std::shared_ptr<DominioRoteirizado> dominio)
        : m_Registro(std::move(registro)),
          m_Dominio(std::move(dominio))
    {
    }

    std::string_view NomeTipo() const override { return "goMensagem"; }

    void DefineTitulo(const std::string &valor) override;
    // Numbers yyyymmdd and hhmmss.
    std::string FormataData(std::int32_t numero, std::int16_t reservado) override;
    std::string FormataHora(std::int32_t numero, std::int16_t reservado) override;
    void ExibeMensagem(const std::string &texto, const Ref<IFocavel> &controle) override;
    void PreparaDetalhes(const Ref<IForm> &form) override;
    void ExibeErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                   const std::string &fonte, const std::string &titulo) override;
    // One byte for each character up to U+00FF, "?" for any other.
    Bytes TextoParaBytes(const std::string &texto) override;

  private:
    RefRegistro m_Registro;
    std::shared_ptr<DominioRoteirizado> m_Dominio;
    std::string m_Titulo;
};

class DadosVorRoteirizado : public IDadosVor {
  public:
    DadosVorRoteirizado(RefRegistro registro, std::shared_ptr<DominioRoteirizado> dominio,
                        const Ref<PlataformaRoteirizada> &plataforma)
        : m_Registro(std::move(registro)),
          m_Dominio(std::move(dominio)),
          m_Plataforma(plataforma)
    {
    }

    std::string_view NomeTipo() const override { return "goDadosVor"; }

    void Inicializa(const Ref<IObjInterface> &objInterface) override;
    void Finaliza() override;
    Ref<IOrgao> ObtemOrgao() override;
    void PreencheRejeicoes(const Ref<IztCombo> &combo, std::int32_t reservado1, std::int32_t reservado2) override;
    std::string DirLayouts() override;
    void PreencheTipoAgente(const Ref<IztCombo> &combo, bool trabFoto, bool comTodos, bool escolhePrimeiro) override;
    void PreencheTipoEquip(const Ref<IztCombo> &combo, std::int16_t tipoAgente, bool trabFoto, bool comTodos,
                           bool escolhePrimeiro) override;
    bool EnviaDocumento(const std::string &caminho, double &nroDocumento, std::int32_t reservado) override;
    bool RecebeDocumento(double nroDocumento, Bytes &bytes, bool reservado) override;

  private:
    RefRegistro m_Registro;
    std::shared_ptr<DominioRoteirizado> m_Dominio;
    RefFraca<PlataformaRoteirizada> m_Plataforma;
};

class DiretoriosRoteirizados : public IDiretorios {
  public:
    DiretoriosRoteirizados(RefRegistro registro, std::shared_ptr<DominioRoteirizado> dominio)
        : m_Registro(std::move(registro)),
          m_Dominio(std::move(dominio))
    {
    }

    std::string_view NomeTipo() const override { return "goDiretorios"; }
    std::string ObtemDiretorio(std::int16_t codigo, const std::string &subdiretorio) override;

  private:
    RefRegistro m_Registro;
    std::shared_ptr<DominioRoteirizado> m_Dominio;
};

class ObjGlobalVorRoteirizado : public IObjGlobalVor {
  public:
    ObjGlobalVorRoteirizado(RefRegistro registro, std::shared_ptr<DominioRoteirizado> dominio)
        : m_Registro(std::move(registro)),
          m_Dominio(std::move(dominio))
    {
    }

    std::string_view NomeTipo() const override { return "ObjGlobalVor"; }
    void InicializaSessao(const Ref<IobjMTM> &objMTM, const Ref<IobjSCA> &objSCA, const Ref<IoAppEXE> &oAppEXE,
                          const Ref<Objeto> &reservado) override;
    Ref<ICredencial> ObtemCredencial() override;

  private:
    RefRegistro m_Registro;
    std::shared_ptr<DominioRoteirizado> m_Dominio;
};
