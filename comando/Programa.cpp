#include "comando/Programa.h"

#include "comando/ErroDaLinha.h"
#include "comando/Fim.h"
#include "comando/LinhaDeComando.h"
#include "comando/Versao.h"
#include "host/Falha.h"
#include "rede/ServicosRemotos.h"
#include "services/ErroSql.h"

#include <ostream>

namespace comando {

namespace {

// What a failure with a sentence means to who called the program.
Codigo CodigoDa(const Falha &falha)
{
    switch (falha.Numero) {
    case NumeroFalha::ArquivoNaoEncontrado:
    case NumeroFalha::ArquivoJaExiste:
    case NumeroFalha::DiscoCheio:
    case NumeroFalha::PermissaoNegada:
    case NumeroFalha::ErroDeAcesso:
    case NumeroFalha::CaminhoNaoEncontrado:
        return Codigo::NaoAlcancado;
    default:
        return Codigo::Interno;
    }
}

Codigo Cumpre(LinhaDeComando &linha, const std::vector<std::string> &argumentos, Ambiente &ambiente)
{
    try {
        return linha.Le(argumentos).Faz(ambiente);
    } catch (const CLI::CallForVersion &) {
        ambiente.Saida << "registro " << Versao() << '\n';
        return Codigo::Feito;
    } catch (const CLI::Success &) {
        ambiente.Saida << linha.Ajuda();
        return Codigo::Feito;
    } catch (const CLI::Error &erro) {
        ambiente.Erros << FraseDoErro(erro) << "\nVeja " << NomeDaLinha(LinhaDada(linha.App())) << " --ajuda.\n";
        return Codigo::UsoErrado;
    } catch (const Fim &fim) {
        ambiente.Erros << fim.what() << '\n';
        return ambiente.Interrompido() ? Codigo::Interrompido : fim.Qual;
    } catch (const mesa::ErroSql &erro) {
        ambiente.Erros << erro.Descricao << '\n';
        return ambiente.Interrompido()                 ? Codigo::Interrompido
               : erro.Motivo == mesa::MotivoSql::Outro ? Codigo::Interno
                                                       : Codigo::NaoAlcancado;
    } catch (const rede::PedidoRecusado &recusa) {
        ambiente.Erros << recusa.Descricao << '\n';
        return ambiente.Interrompido() ? Codigo::Interrompido : Codigo::Recusado;
    } catch (...) {
        const Falha falha = FalhaCorrente(); // which also tells when it is not known whether something was done
        ambiente.Erros << falha.Descricao << '\n';
        return ambiente.Interrompido() ? Codigo::Interrompido : CodigoDa(falha);
    }
}

} // namespace

Codigo Programa(const std::vector<std::string> &argumentos, Ambiente &ambiente)
{
    LinhaDeComando linha;
    const Codigo codigo = Cumpre(linha, argumentos, ambiente);
    ambiente.Erros.flush();
    // An answer that did not come out whole is none, whatever it says.
    ambiente.Saida.flush();
    if (!ambiente.Saida.good()) {
        ambiente.Erros << "A resposta não pôde ser escrita inteira na saída padrão." << std::endl;
        return Codigo::NaoAlcancado;
    }
    return codigo;
}

} // namespace comando
