#include "desk/host/MinhaSenha.h"

#include "services/Recusa.h"
#include "services/RegistrosAdministracao.h"
#include "services/RegrasDeSenha.h"

namespace mesa {

Ficha FichaDaMinhaSenha(const Ref<SessaoServico> &sessao, bool obrigada)
{
    Ficha ficha;
    ficha.Nome = "MinhaSenha";
    ficha.Titulo = "Trocar minha senha";
    ficha.Frase = std::string(obrigada ? "A senha com que você entrou foi definida por outra pessoa: escolha a sua "
                                         "para continuar. "
                                       : "") +
                  "A senha tem ao menos 12 caracteres e não é das mais comuns.";
    ficha.Campos.push_back({.Nome = "atual", .Rotulo = "Senha &atual:", .Especie = EspecieDoCampo::Senha});
    ficha.Campos.push_back({.Nome = "nova", .Rotulo = "Senha &nova:", .Especie = EspecieDoCampo::Senha});
    ficha.Campos.push_back({.Nome = "repetida", .Rotulo = "&Repita a nova:", .Especie = EspecieDoCampo::Senha});
    ficha.Salva = [sessao](Ficha &aberta) -> std::optional<ProblemaDaFicha> {
        if (aberta.Campo("nova").Senha.Vazio()) {
            return ProblemaDaFicha{"nova", "Informe a senha nova."};
        }
        if (aberta.Campo("nova").Senha != aberta.Campo("repetida").Senha) {
            return ProblemaDaFicha{"nova", "As duas senhas novas não são iguais. Digite-as de novo."};
        }
        try {
            RegrasDeSenha::Confere(aberta.Campo("nova").Senha, sessao->Operador().Usuario, sessao->Operador().Nome);
        } catch (const Recusa &motivo) {
            return ProblemaDaFicha{"nova", motivo.what()};
        }
        auto troca = Novo<TrocaSenhaED>();
        troca->Atual = aberta.Campo("atual").Senha;
        troca->Nova = aberta.Campo("nova").Senha;
        Ref<Objeto> pedido = troca;
        Valor retorno;
        std::string recusa;
        if (!sessao->Executa("AdministracaoRN", "trocaMinhaSenha", pedido, retorno, recusa)) {
            return ProblemaDaFicha{"atual", recusa};
        }
        return std::nullopt;
    };
    return ficha;
}

} // namespace mesa
