#include "desk/host/Dossies.h"

#include "dossie/ConfereDossie.h"
#include "dossie/FazDossie.h"
#include "host/Falha.h"

#include <optional>
#include <utility>

namespace mesa {

RelatoDoDossie Dossies::Faz(const PedidoDeDossie &pedido,
                            const std::function<std::string(const std::string &nome)> &pedeLugar)
{
    const std::string onde = pedeLugar(dossie::FazDossie::NomeSugerido(pedido.Codigo, pedido.Dia));
    if (onde.empty()) {
        return {true, ""};
    }
    auto pergunta = Novo<ConsultaProvaED>();
    pergunta->NroIntEquip = pedido.NroIntEquip;
    pergunta->Codigo = pedido.Codigo;
    pergunta->Dia = pedido.Dia;
    std::optional<QByteArray> feito;
    std::string recusa;
    m_Acompanha("Fazendo o dossiê", /*cancelavel=*/true,
                [&](const Segue &segue) { feito = dossie::FazDossie(m_Sessao()).Faz(pergunta, segue, recusa); });
    if (!feito) {
        return {false, recusa};
    }
    try {
        dossie::FazDossie::Grava(*feito, onde);
    } catch (const Falha &falha) {
        return {false, falha.Descricao};
    }
    return {true, "O dossiê foi gravado em " + onde + "."};
}

RelatoDoDossie Dossies::Confere(const std::string &caminho)
{
    dossie::ResultadoDaConferencia resultado;
    m_Acompanha("Conferindo o dossiê", /*cancelavel=*/false, [&](const Segue &segue) {
        if (segue) {
            segue(0, "Conferindo o dossiê");
        }
        resultado = dossie::ConfereDossie(m_Sessao()).ConfereArquivo(caminho);
    });
    return {resultado.Como == dossie::Situacao::Concorda, resultado.Frase, std::move(resultado.Detalhes)};
}

} // namespace mesa
