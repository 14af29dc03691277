#include "host/Falha.h"

#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

Falha::Falha(std::int32_t numero) : Falha(numero, std::string(NomeComponente), DescricaoFalha(numero)) {}

Falha::Falha(std::int32_t numero, std::string fonte, std::string descricao)
    : Numero(numero),
      Fonte(std::move(fonte)),
      Descricao(std::move(descricao))
{
}

std::string DescricaoFalha(std::int32_t numero)
{
    switch (numero) {
    case NumeroFalha::ArgumentoInvalido:
        return "Chamada de procedimento ou argumento inválido";
    case NumeroFalha::Estouro:
        return "Valor grande demais para o seu tipo";
    case NumeroFalha::SemMemoria:
        return "Memória insuficiente";
    case NumeroFalha::SubscritoForaDoIntervalo:
        return "Posição ou chave fora do intervalo";
    case NumeroFalha::DivisaoPorZero:
        return "Divisão por zero";
    case NumeroFalha::TipoIncompativel:
        return "Tipo de dado incompatível";
    case NumeroFalha::ErroInterno:
        return "Erro interno";
    case NumeroFalha::ArquivoNaoEncontrado:
        return "Arquivo não encontrado";
    case NumeroFalha::DiscoCheio:
        return "Disco cheio";
    case NumeroFalha::PermissaoNegada:
        return "Permissão negada";
    case NumeroFalha::ErroDeAcesso:
        return "Erro de acesso ao caminho ou arquivo";
    case NumeroFalha::CaminhoNaoEncontrado:
        return "Caminho não encontrado";
    case NumeroFalha::ObjetoNaoDefinido:
        return "Variável de objeto não definida";
    case NumeroFalha::NuloInvalido:
        return "Uso inválido de um valor nulo";
    case NumeroFalha::ClasseInexistente:
        return "Não foi possível criar o objeto";
    case NumeroFalha::ObjetoNecessario:
        return "Era esperado um objeto";
    case NumeroFalha::MembroInexistente:
        return "O objeto não tem esta propriedade ou método";
    case NumeroFalha::ChaveJaExiste:
        return "A chave já está em uso nesta coleção";
    default:
        return "Erro definido pela aplicação ou pelo objeto";
    }
}

namespace {

std::int32_t NumeroDoSistema(const std::error_code &codigo)
{
    if (codigo == std::errc::no_such_file_or_directory) {
        return NumeroFalha::ArquivoNaoEncontrado;
    }
    if (codigo == std::errc::no_space_on_device) {
        return NumeroFalha::DiscoCheio;
    }
    if (codigo == std::errc::permission_denied || codigo == std::errc::operation_not_permitted) {
        return NumeroFalha::PermissaoNegada;
    }
    if (codigo == std::errc::not_enough_memory) {
        return NumeroFalha::SemMemoria;
    }
    return NumeroFalha::ErroDeAcesso;
}

} // namespace

Falha FalhaCorrente() noexcept
try {
    throw;
} catch (const Falha &falha) {
    try {
        return falha;
    } catch (...) { // no memory for its texts
        return Falha(falha.Numero, {}, {});
    }
} catch (const std::bad_alloc &) {
    return Falha(NumeroFalha::SemMemoria);
} catch (const std::system_error &erro) { // filesystem_error among them
    return Falha(NumeroDoSistema(erro.code()));
} catch (const std::out_of_range &) {
    return Falha(NumeroFalha::SubscritoForaDoIntervalo);
} catch (const std::length_error &) {
    return Falha(NumeroFalha::SemMemoria);
} catch (const std::overflow_error &) {
    return Falha(NumeroFalha::Estouro);
} catch (const std::bad_cast &) {
    return Falha(NumeroFalha::TipoIncompativel);
} catch (const std::invalid_argument &) {
    return Falha(NumeroFalha::ArgumentoInvalido);
} catch (...) {
    return Falha(NumeroFalha::ErroInterno);
}

void PassaFalha(std::string_view cauda)
{
    Falha falha = FalhaCorrente();
    falha.Fonte += cauda;
    throw falha;
}
