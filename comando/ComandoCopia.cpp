#include "comando/Acesso.h"
#include "comando/DesfechoDaCopia.h"
#include "comando/Json.h"
#include "comando/Subcomando.h"
#include "services/Conferidor.h"

#include <ostream>

namespace comando {

namespace {

class ComandoCopia : public Subcomando {
  public:
    std::string Nome() const override { return "copia"; }
    std::string Resumo() const override
    {
        return "Faz uma cópia conferida do registro de um arquivo, com outros trabalhando ou não, e diz qual é.";
    }

    void Descreve(CLI::App &linha) override
    {
        linha
            .add_option("DIR", m_Pasta,
                        "A pasta das cópias, que é feita se não existir; ficam nela as 14 mais novas deste registro.")
            ->type_name("")
            ->required();
        linha.add_flag("--json", m_Json, "Responde em JSON, para programas.")->disable_flag_override();
        m_Acesso.Descreve(linha);
    }

    Codigo Faz(Ambiente &ambiente) override
    {
        m_Acesso.Resolve(ambiente);
        const mesa::DesfechoDeComando desfecho = mesa::ComandaCopia(
            m_Acesso.Registro().Caminho.string(), mesa::Conferidor::Achados, m_Pasta, ambiente.Agora(),
            mesa::Copia::QuantasPadrao, [&](double) { return !ambiente.Interrompido(); });
        if (m_Json) {
            Escreve(ambiente.Saida, Json{{"feita", desfecho.Como.Feita},
                                         {"arquivo", desfecho.Como.Feita ? Json(desfecho.Como.Arquivo) : Json()},
                                         {"frase", desfecho.Como.Frase},
                                         {"problemas", desfecho.Como.Achados}});
        } else if (desfecho.Como.Feita) {
            ambiente.Saida << desfecho.Como.Arquivo << '\n';
        }
        return Conta(desfecho, ambiente);
    }

  private:
    Acesso m_Acesso{Acesso::Lugar::SoArquivo, Acesso::Entrada::Ninguem};
    std::string m_Pasta;
    bool m_Json = false;
};

const Conhecido conhecido(FazUm<ComandoCopia>);

} // namespace

} // namespace comando
