#include "comando/Acesso.h"
#include "comando/DesfechoDaCopia.h"
#include "comando/Json.h"
#include "comando/Subcomando.h"
#include "services/Conferidor.h"

#include <ostream>

namespace comando {

namespace {

class ComandoRestaura : public Subcomando {
  public:
    std::string Nome() const override { return "restaura"; }
    std::string Resumo() const override
    {
        return "Confere uma cópia e a põe no lugar do registro de um arquivo; o que estava lá é guardado ao lado.";
    }

    void Descreve(CLI::App &linha) override
    {
        linha.add_option("ARQ", m_Arquivo, "A cópia.")->type_name("")->required();
        linha.add_flag("--de-outro", m_DeOutro, "Aceita também a cópia de outro registro.")->disable_flag_override();
        linha.add_flag("--json", m_Json, "Responde em JSON, para programas.")->disable_flag_override();
        m_Acesso.Descreve(linha);
    }

    Codigo Faz(Ambiente &ambiente) override
    {
        m_Acesso.Resolve(ambiente);
        const mesa::DesfechoDeComando desfecho =
            mesa::ComandaRestauracao(m_Acesso.Registro().Caminho.string(), mesa::Conferidor::Achados,
                                     {m_Arquivo, m_Acesso.Registro().Identificador, m_DeOutro}, ambiente.Agora(),
                                     [&](double) { return !ambiente.Interrompido(); });
        const mesa::DesfechoDaCopia &como = desfecho.Como;
        if (m_Json) {
            Escreve(ambiente.Saida, Json{{"restaurada", como.Feita},
                                         {"guardado", como.Arquivo.empty() ? Json() : Json(como.Arquivo)},
                                         {"frase", como.Frase},
                                         {"problemas", como.Achados}});
        } else if (como.Feita && !como.Arquivo.empty()) {
            ambiente.Saida << como.Arquivo << '\n';
        }
        return Conta(desfecho, ambiente);
    }

  private:
    Acesso m_Acesso{Acesso::Lugar::SoArquivo, Acesso::Entrada::Ninguem};
    std::string m_Arquivo;
    bool m_DeOutro = false;
    bool m_Json = false;
};

const Conhecido conhecido(FazUm<ComandoRestaura>);

} // namespace

} // namespace comando
