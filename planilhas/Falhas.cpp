#include "planilhas/Falhas.h"

#include <cerrno>

namespace planilhas {

namespace {

constexpr const char *Fonte = "planilhas";

std::int32_t NumeroDoSistema(int erro)
{
    switch (erro) {
    case ENOENT:
        return NumeroFalha::ArquivoNaoEncontrado;
    case ENOTDIR:
        return NumeroFalha::CaminhoNaoEncontrado;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return NumeroFalha::DiscoCheio;
    case EACCES:
    case EPERM:
    case EROFS:
        return NumeroFalha::PermissaoNegada;
    default:
        return NumeroFalha::ErroDeAcesso;
    }
}

std::string Motivo(int erro)
{
    switch (erro) {
    case ENOENT:
        return "o arquivo ou a pasta não existe";
    case ENOTDIR:
        return "não é uma pasta";
    case EISDIR:
        return "é uma pasta, e não um arquivo";
    case ENOSPC:
    case EDQUOT:
        return "o disco está cheio";
    case EFBIG:
        return "o disco não aceita um arquivo deste tamanho";
    case EACCES:
    case EPERM:
        return "falta permissão";
    case EROFS:
        return "o disco só pode ser lido";
    case EIO:
        return "o disco falhou";
    case ENAMETOOLONG:
        return "o nome é longo demais";
    case ELOOP:
        return "os atalhos do caminho apontam uns para os outros";
    case ENODEV:
    case ENXIO:
    case ESPIPE:
        return "é um canal ou um dispositivo, e não um arquivo";
    case EMFILE:
    case ENFILE:
        return "há arquivos demais abertos";
    case EBUSY:
    case ETXTBSY:
        return "está em uso";
    default:
        return "o sistema recusou, erro " + std::to_string(erro);
    }
}

} // namespace

void FalhaDeFormato(const std::string &frase)
{
    throw Falha(FormatoInvalido, Fonte, frase);
}

void FalhaDeArquivo(int erro, const std::string &ato)
{
    throw Falha(NumeroDoSistema(erro), Fonte, ato + ": " + Motivo(erro) + ".");
}

} // namespace planilhas
