#pragma once

#include "services/Dialetos.h"
#include "services/ServicoAfericoes.h"
#include "services/ServicoDocumentos.h"
#include "services/ServicoEquipamentos.h"
#include "services/ServicoHistoria.h"
#include "services/ServicoLimites.h"
#include "services/ServicoProva.h"
#include "tests/services/RegistroDeTeste.h"

#include <memory>
#include <random>
#include <string>
#include <type_traits>

namespace oficina {

using namespace mesa;

// Operations of one person on the services, many in one transaction.
class Oficina {
  public:
    static constexpr std::int32_t Fuso = -180;

    Oficina() : m_Quem(m_Registro.Sessao("ana")->Operador())
    {
        m_Banco = std::make_unique<Banco>(DialetoPara(m_Registro.Caminho()), m_Registro.Caminho(), Agora());
    }

    Banco &Dados() { return *m_Banco; }
    Instante Agora() const { return {m_Agora, Fuso}; }
    void PassaSegundos(std::int32_t n) { m_Agora.Valor += n / 86400.0; }
    void PassaAte(Data quando) { m_Agora = quando; }

    // The operation of the service, as a session has it run.
    template <class Servico, class Resposta, class Pedido>
    Resposta Pede(Resposta (Servico::*operacao)(Pedido &), const Ref<std::remove_const_t<Pedido>> &pedido)
    {
        if constexpr (!std::is_const_v<Pedido>) {
            Marca(*pedido);
        }
        Operacao contexto(*m_Banco, m_Quem, Agora(), CustoDeTeste, "motivo", {});
        Servico servico(contexto);
        if constexpr (std::is_void_v<Resposta>) {
            (servico.*operacao)(*pedido);
            contexto.Entrega();
        } else {
            const Resposta resposta = (servico.*operacao)(*pedido);
            contexto.Entrega();
            return resposta;
        }
    }
    double Documento()
    {
        Operacao contexto(*m_Banco, m_Quem, Agora(), CustoDeTeste, "", {});
        return ServicoDocumentos(contexto).Guarda(Pdf(std::to_string(++m_Documentos)));
    }
    Ref<ProvaED> Prova(const Ref<ConsultaProvaED> &pedido)
    {
        Operacao contexto(*m_Banco, m_Quem, Agora(), CustoDeTeste, "", {});
        return ServicoProva(contexto).Consulta(*pedido);
    }
    EquipamentoConhecido ComoConhecido(std::int32_t numero, const Instante &quando)
    {
        Operacao contexto(*m_Banco, m_Quem, Agora(), CustoDeTeste, "", {});
        return ServicoHistoria(contexto).ComoConhecido(numero, quando);
    }
    double Vigente(std::int32_t numero, Data dia)
    {
        return Pede(&ServicoAfericoes::Vigente, Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::NroIntEquip,
                                                    numero, &ConsultaAfericaoED::DtInfracao, dia))
            ->NroIntAfericao;
    }
    // Active rows by the services.
    std::string Consultado(std::int32_t numero)
    {
        const auto equipto = Pede(&ServicoEquipamentos::Consulta, SoNumero(numero));
        equipto->ListaLimiteDif =
            Pede(&ServicoLimites::ListaLimites, Com(Novo<LimiteDifED>(), &LimiteDifED::NroIntEquip, numero))
                ->ListaLimiteDif.Valor();
        equipto->ListaDiaEspecifico =
            Pede(&ServicoLimites::ListaDias, Com(Novo<DiaEspecificoED>(), &DiaEspecificoED::NroIntEquip, numero))
                ->ListaDiaEspecifico.Valor();
        return equipto->Texto();
    }
    std::int32_t Ultimo(const QString &tabela, const QString &chave)
    {
        Consulta ultimo(*m_Banco, "SELECT MAX(" + chave + ") FROM " + tabela);
        ultimo.Proxima();
        return static_cast<std::int32_t>(ultimo.Inteiro(0));
    }

  private:
    // With the version of its row, as whoever has just read it.
    std::int64_t Versao(const QString &tabela, const QString &chave, std::int32_t numero)
    {
        Consulta linha(*m_Banco, "SELECT Versao FROM " + tabela + " WHERE " + chave + " = ?", {numero});
        return linha.Proxima() ? linha.Inteiro(0) : 0;
    }
    void Marca(EquiptoED &equipto)
    {
        equipto.VersaoLida = Versao("EQUIPAMENTO", "NroIntEquip", equipto.NroIntEquip);
        const ListaDe<LimiteDifED> &limites = equipto.ListaLimiteDif;
        for (std::int32_t n = 1; !limites.Nada() && n <= limites->Count(); ++n) {
            Marca(*limites->Item(n));
        }
    }
    void Marca(LimiteDifED &limite) { limite.VersaoLida = Versao("LIMITE", "NroInt", limite.NroInt); }
    void Marca(DiaEspecificoED &dia) { dia.VersaoLida = Versao("DIA", "NroInt", dia.NroInt); }

    RegistroDeTeste m_Registro;
    Operador m_Quem;
    std::unique_ptr<Banco> m_Banco;
    Data m_Agora = DataDe(20, 11, 2026, 10, 0, 0);
    int m_Documentos = 0;
};

class Sorte {
  public:
    explicit Sorte(unsigned semente) : m_Gerador(semente) {}
    // From 0 to n - 1.
    int Ate(int n) { return static_cast<int>(m_Gerador() % static_cast<unsigned>(n)); }
    bool UmaEm(int n) { return Ate(n) == 0; }

  private:
    std::mt19937 m_Gerador;
};

} // namespace oficina
