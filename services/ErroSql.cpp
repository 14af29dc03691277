#include "services/ErroSql.h"

#include "services/Esquema.h"
#include "services/NomesCampos.h"

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

std::string FraseDo(MotivoSql motivo, const std::string &detalhe)
{
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

ErroSql::ErroSql(MotivoSql motivo, const std::string &detalhe)
    : Falha(NumeroDo(motivo), "Servicos", FraseDo(motivo, detalhe)),
      Motivo(motivo),
      Detalhe(detalhe)
{
}

} // namespace mesa
