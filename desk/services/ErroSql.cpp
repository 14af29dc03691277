#include "desk/services/ErroSql.h"

namespace mesa {

namespace {

std::int32_t NumeroDo(MotivoSql motivo)
{
    switch (motivo) {
    case MotivoSql::DiscoCheio:
        return NumeroFalha::DiscoCheio;
    case MotivoSql::SoLeitura:
        return NumeroFalha::PermissaoNegada;
    case MotivoSql::Ocupado:
    case MotivoSql::NaoGravou:
    case MotivoSql::ForaDoLugar:
    case MotivoSql::Acesso:
        return NumeroFalha::ErroDeAcesso;
    default:
        return NumeroFalha::ErroInterno;
    }
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
