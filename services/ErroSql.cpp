#include "services/ErroSql.h"

#include "services/Esquema.h"
#include "services/NomesCampos.h"
#include "services/Recusa.h"

namespace mesa {

namespace {

std::int32_t NumeroDo(MotivoSql motivo)
{
    switch (motivo) {
    case MotivoSql::DiscoCheio:
        return NumeroFalha::DiscoCheio;
    case MotivoSql::SoLeitura:
        return NumeroFalha::PermissaoNegada;
    case MotivoSql::Ausente:
        return NumeroFalha::ArquivoNaoEncontrado;
    case MotivoSql::JaExiste:
        return NumeroFalha::ArquivoJaExiste;
    case MotivoSql::Ocupado:
    case MotivoSql::Demora:
    case MotivoSql::Queda:
    case MotivoSql::Incerto:
    case MotivoSql::NaoGravou:
    case MotivoSql::ForaDoLugar:
    case MotivoSql::Acesso:
        return NumeroFalha::ErroDeAcesso;
    default:
        return NumeroFalha::ErroInterno;
    }
}

// The database names the restriction that refused, which is named after the table and the column.
std::string FraseDaColuna(const std::string &detalhe)
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        for (const Esquema::Coluna &coluna : tabela.Colunas) {
            if (detalhe.ends_with(": " + std::string(tabela.Nome) + "_" + std::string(coluna.Nome))) {
                return "O campo \"" + NomeDoCampo(coluna.Nome) +
                       "\" veio com um valor que não pode ser gravado. Nada foi "
                       "gravado.";
            }
        }
    }
    return "O banco de dados não aceitou a operação (" + detalhe + ").";
}

// What differs where the registry is in a database on a server.
std::string FraseDoServidor(MotivoSql motivo, const std::string &detalhe)
{
    const std::string entre = detalhe.empty() ? "" : " (" + detalhe + ")";
    switch (motivo) {
    case MotivoSql::DiscoCheio:
        return "O disco do servidor do banco de dados ficou cheio. Nada foi gravado: avise quem o administra.";
    case MotivoSql::NaoGravou:
        return "O servidor do banco de dados não conseguiu gravar no seu disco" + entre +
               ". Nada foi gravado: avise quem o administra.";
    case MotivoSql::SoLeitura:
        return "O banco de dados não permite esta operação a quem se conectou a ele" + entre + ". Nada foi gravado.";
    case MotivoSql::Ocupado:
        return "Outros estão gravando no registro há muito tempo. Nada foi gravado: tente de novo.";
    case MotivoSql::Demora:
        return "O banco de dados demorou mais do que o permitido. Nada foi gravado: tente de novo.";
    case MotivoSql::Queda:
        return "A conexão com o banco de dados caiu" + entre + ". Nada foi gravado: tente de novo.";
    case MotivoSql::Incerto:
        return "O banco de dados não confirmou a gravação" + entre +
               ". Não se sabe se ela foi feita: consulte o registro antes de repeti-la.";
    case MotivoSql::Danificado:
        return "O banco de dados do registro está danificado" + entre + ": avise quem o administra.";
    case MotivoSql::Estranho:
        return "No banco de dados informado não há um registro de equipamentos.";
    case MotivoSql::JaExiste:
        return "O banco de dados não está vazio" + entre + ": um registro novo só é criado em um banco vazio.";
    case MotivoSql::Acesso:
        return "Não foi possível conectar ao banco de dados do registro" + entre + ".";
    default:
        return "";
    }
}

std::string FraseDo(MotivoSql motivo, const std::string &detalhe, LugarDoRegistro onde)
{
    if (onde == LugarDoRegistro::Servidor) {
        if (const std::string frase = FraseDoServidor(motivo, detalhe); !frase.empty()) {
            return frase;
        }
    }
    switch (motivo) {
    case MotivoSql::DiscoCheio:
        return "O disco em que está o registro ficou cheio. Nada foi gravado: libere espaço e tente de novo.";
    case MotivoSql::NaoGravou:
        return "O disco em que está o registro não aceitou a gravação (" + detalhe +
               "). Nada foi gravado: confira o espaço e o disco e tente de novo.";
    case MotivoSql::ForaDoLugar:
        return "O arquivo do registro foi movido, trocado ou apagado depois de aberto aqui. Nada foi gravado: feche o "
               "programa e abra-o de novo.";
    case MotivoSql::SoLeitura:
        return "O registro só pode ser lido: falta permissão para gravar no arquivo ou na sua pasta.";
    case MotivoSql::Ocupado:
        return "Outra estação está gravando no registro há muito tempo. Nada foi gravado: tente de novo.";
    case MotivoSql::Demora:
        return FraseDoServidor(motivo, detalhe);
    case MotivoSql::Danificado:
        return "O arquivo do registro está danificado ou não é um registro (" + detalhe + ").";
    case MotivoSql::Ausente:
        return "O registro não foi encontrado em " + detalhe + ".";
    case MotivoSql::Vazio:
        return "O arquivo " + detalhe + " está vazio: não é um registro.";
    case MotivoSql::Estranho:
        return "O arquivo é um banco de dados de outro programa: não é um registro de equipamentos.";
    case MotivoSql::JaExiste:
        return "Já existe o arquivo " + detalhe + ": um registro novo não é criado por cima dele.";
    case MotivoSql::Coluna:
        return FraseDaColuna(detalhe);
    case MotivoSql::Acesso:
        return "Não foi possível ler ou gravar o arquivo do registro (" + detalhe + ").";
    default:
        return "O banco de dados não aceitou a operação (" + detalhe + ").";
    }
}

} // namespace

ErroSql::ErroSql(MotivoSql motivo, const std::string &detalhe, LugarDoRegistro onde)
    : Falha(NumeroDo(motivo), "Servicos", FraseDo(motivo, detalhe, onde)),
      Motivo(motivo),
      Detalhe(detalhe)
{
}

void PassaErro(std::string_view cauda)
{
    try {
        throw;
    } catch (const RecusaDeEntrada &) {
        throw;
    } catch (ErroSql &erro) {
        erro.Fonte += cauda;
        throw;
    } catch (...) {
        PassaFalha(cauda);
    }
}

} // namespace mesa
