#pragma once

#include "tests/support/PlataformaRoteirizada.h"
#include "tests/support/RegistroChamadas.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// The smaller host classes, which only log.

class AMRegistroRoteirizado : public IAMRegistro {
  public:
    explicit AMRegistroRoteirizado(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return "AMRegistro"; }
    void RegistraAM(const std::string &componente, const std::string &classe, const Valor &nomeAPP) override
    {
        m_Registro->Chama("AMRegistro.RegistraAM", componente, classe, nomeAPP);
    }
    void DesregistraAM(const std::string &componente, const Valor &nomeAPP) override
    {
        m_Registro->Chama("AMRegistro.DesregistraAM", componente, nomeAPP);
    }

  private:
    RefRegistro m_Registro;
};

class AMEditMenuRoteirizado : public IAMEditMenu {
  public:
    explicit AMEditMenuRoteirizado(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return "AMEditMenu"; }
    void IncorporaMenu(Ref<IActBar> &actBar, ItensMenu &itens, bool reservado) override
    {
        m_Registro->Chama("AMEditMenu.IncorporaMenu", actBar, itens, reservado);
    }
    void RemoveMenu(Ref<IActBar> &actBar, ItensMenu &itens) override
    {
        m_Registro->Chama("AMEditMenu.RemoveMenu", actBar, itens);
    }

  private:
    RefRegistro m_Registro;
};

class CFunGenRoteirizado : public ICFunGen {
  public:
    explicit CFunGenRoteirizado(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return "CFunGen"; }
    void SetaTituloAvisos(const std::string &titulo) override { m_Registro->Chama("CFunGen.SetaTituloAvisos", titulo); }
    void DefineAppTitle(const std::string &titulo) override { m_Registro->Escreve("CFunGen.AppTitle", titulo); }

  private:
    RefRegistro m_Registro;
};

class AjudaRoteirizada : public IAjuda {
  public:
    explicit AjudaRoteirizada(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return "Ajuda"; }
    void TrataAjuda2(const Ref<IAplicacao> &aplicacao, std::string &topico) override
    {
        m_Registro->Chama("Ajuda.TrataAjuda2", aplicacao, topico);
    }

  private:
    RefRegistro m_Registro;
};

class RelatoriosRoteirizados : public IRelatorios {
  public:
    explicit RelatoriosRoteirizados(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return "Relatorios"; }

    bool Imprimiu = true; // what both print operations answer
    // Runs inside both print operations, which may write to what goes by reference.
    std::function<void(ParametrosRelatorio &)> AoImprimir;

    void DefinePathRPT(const std::string &caminho) override { m_Registro->Escreve("Relatorios.PathRPT", caminho); }
    void DefinePathMDB(const std::string &caminho) override { m_Registro->Escreve("Relatorios.PathMDB", caminho); }
    void DefineCurrentRecordSet(const Ref<ICursor> &cursor) override
    {
        m_Registro->Escreve("Relatorios.CurrentRecordSet", cursor);
    }
    bool Imprimir(ParametrosRelatorio &parametros) override { return Imprime("Relatorios.Imprimir", parametros); }
    bool ImprimirDesigner(ParametrosRelatorio &parametros) override
    {
        return Imprime("Relatorios.ImprimirDesigner", parametros);
    }

  private:
    bool Imprime(const std::string &nome, ParametrosRelatorio &p)
    {
        const auto linha = m_Registro->Chama(nome, p.Relatorio, p.aParam, p.b1, p.n1, p.b2, p.o1, p.s1, p.o2);
        if (AoImprimir) {
            AoImprimir(p);
        }
        return linha.Resultado(Imprimiu);
    }

    RefRegistro m_Registro;
};

// What the person saw in the document viewer.
struct DocumentosVistos {
    struct Visto {
        std::string Caminho;
        Bytes Conteudo;
        bool Modal = false;
    };
    bool Abre = true; // the viewer can open files that exist
    std::vector<Visto> Vistos;
};

class DocumentoPDFRoteirizado : public IDocumentoPDF {
  public:
    DocumentoPDFRoteirizado(RefRegistro registro, std::shared_ptr<DocumentosVistos> vistos,
                            const Ref<PlataformaRoteirizada> &plataforma)
        : m_Registro(std::move(registro)),
          m_Vistos(std::move(vistos)),
          m_Plataforma(plataforma)
    {
    }
    std::string_view NomeTipo() const override { return "DocumentoPDF"; }
    void DefineArquivoPDF(const std::string &caminho) override
    {
        m_Registro->Escreve("DocumentoPDF.ArquivoPDF", caminho);
        m_Caminho = caminho;
    }
    bool Mostra(bool modal) override
    {
        const auto linha = m_Registro->Chama("DocumentoPDF.Mostra", modal);
        const ArquivosEmMemoria &arquivos = m_Plataforma.Alvo()->Arquivos;
        const bool abriu = m_Vistos->Abre && arquivos.Existe(m_Caminho);
        if (abriu) {
            m_Vistos->Vistos.push_back({m_Caminho, arquivos.Conteudo(m_Caminho), modal});
        }
        return linha.Resultado(abriu);
    }

  private:
    RefRegistro m_Registro;
    std::shared_ptr<DocumentosVistos> m_Vistos;
    RefFraca<PlataformaRoteirizada> m_Plataforma;
    std::string m_Caminho;
};
