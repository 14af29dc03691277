#include "comando/Acesso.h"
#include "comando/Json.h"
#include "comando/Subcomando.h"
#include "services/Cabeca.h"
#include "services/Disco.h"
#include "services/ErroSql.h"

#include <unistd.h>

#include <cerrno>
#include <ostream>

namespace comando {

namespace {

class ComandoCabeca : public Subcomando {
  public:
    std::string Nome() const override { return "cabeca"; }
    std::string Resumo() const override
    {
        return "Escreve a cabeça do histórico, assinada, para ser guardada fora do registro.";
    }

    void Descreve(CLI::App &linha) override
    {
        linha.add_flag("--json", m_Json, "Responde em JSON, para programas.")->disable_flag_override();
        m_Acesso.Descreve(linha);
    }

    Codigo Faz(Ambiente &ambiente) override
    {
        m_Acesso.Resolve(ambiente);
        const mesa::CabecaAssinada cabeca =
            m_Acesso.Servidor() ? m_Acesso.EntraNoServidor(ambiente)->Cabeca() : DoArquivo(ambiente);
        if (m_Json) {
            Escreve(ambiente.Saida, Json{{"registro", cabeca.Registro},
                                         {"entradas", cabeca.Tamanho},
                                         {"soma", cabeca.Elo},
                                         {"momento", cabeca.Quando},
                                         {"chave", cabeca.ChavePublica},
                                         {"assinatura", cabeca.Assinatura},
                                         {"texto", cabeca.Texto()}});
        } else {
            ambiente.Saida << cabeca.Texto();
        }
        return Codigo::Feito;
    }

  private:
    mesa::CabecaAssinada DoArquivo(const Ambiente &ambiente) const
    {
        const std::string caminho = m_Acesso.Registro().Caminho.string();
        // Whoever reads the database is told of all of these alike, in words of its own.
        if (::access(caminho.c_str(), R_OK) != 0) {
            throw errno == ENOENT ? mesa::ErroSql(mesa::MotivoSql::Ausente, caminho)
                                  : mesa::ErroSql(mesa::MotivoSql::Acesso, mesa::MotivoDoSistema(errno));
        }
        return mesa::ExportacaoDeCabeca::Le(caminho, ambiente.Agora());
    }

    Acesso m_Acesso{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::NoServidor};
    bool m_Json = false;
};

const Conhecido conhecido(FazUm<ComandoCabeca>);

} // namespace

} // namespace comando
