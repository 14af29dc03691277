#include "tests/mortes/Mistura.h"

#include "host/Conversoes.h"
#include "host/ListaEquiptoED.h"
#include "tests/services/RegistroDeTeste.h"

#include <array>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <thread>
#include <utility>

using namespace mesa;

namespace mortes {

namespace {

struct Contas {
    int Incluidos = 0;
    int Contados = 0; // changes of the equipment that all count on
    int Guardados = 0;
    int Dias = 0;
    int Desativados = 0;
};

Retorno Faz(SessaoServico &sessao, const std::string &metodo, Ref<Objeto> pedido)
{
    Retorno retorno;
    retorno.Feita = sessao.Executa("EquiptoRN", metodo, pedido, retorno.Resposta, retorno.Recusa);
    return retorno;
}

Contas Opera(SessaoServico &sessao, const std::string &nome, int operacoes, std::int32_t contador)
{
    Contas contas;
    Ref<EquiptoED> ultimo;
    for (int n = 0; n < operacoes; ++n) {
        const std::string codigo = nome + "-" + std::to_string(n);
        switch (n % 10) {
        case 0:
        case 5:
            ultimo = Exigido(Faz(sessao, "inclui", EquipamentoDe(codigo))).Como<EquiptoED>();
            ++contas.Incluidos;
            break;
        case 1:
        case 6: {
            const auto aberto = Exigido(Faz(sessao, "consulta", SoNumero(contador))).Como<EquiptoED>();
            auto mudado = Com(SoNumero(contador), &EquiptoED::SubCodigo, CStr(CLng(aberto->SubCodigo.Valor()) + 1));
            mudado->VersaoLida = aberto->VersaoLida;
            const Retorno retorno = Faz(sessao, "altera", mudado);
            if (retorno.Feita) {
                ++contas.Contados;
            } else if (retorno.Recusa.find("depois de aberto aqui") == std::string::npos) {
                Exigido(retorno);
            }
            break;
        }
        case 2:
            Exigido(Faz(sessao, "lista2", Novo<ListaEquiptoED>()));
            break;
        case 3:
        case 9:
            Exigido(Faz(sessao, "consultaSimples", SoNumero(contador)));
            break;
        case 4: {
            double numero = 0;
            std::string recusa;
            if (!sessao.GuardaDocumento(Pdf(codigo), numero, recusa)) {
                throw std::runtime_error(recusa);
            }
            ++contas.Guardados;
            break;
        }
        case 7:
            Exigido(Faz(sessao, "adicionaDiaEspecifico", DiaDe(ultimo->NroIntEquip, DataDe(25, 12, 2026), 0, 2359)));
            ++contas.Dias;
            break;
        default: {
            auto desativado = SoNumero(ultimo->NroIntEquip);
            desativado->VersaoLida =
                Exigido(Faz(sessao, "consultaSimples", SoNumero(ultimo->NroIntEquip))).Como<EquiptoED>()->VersaoLida;
            Exigido(Faz(sessao, "desativa", desativado));
            ++contas.Desativados;
        }
        }
    }
    return contas;
}

} // namespace

std::vector<std::string> Mistura(Cenario &cenario, int operacoes)
{
    constexpr int operadores = 4;
    std::vector<Ref<SessaoServico>> sessoes;
    for (int n = 0; n < operadores; ++n) {
        sessoes.push_back(cenario.Sessao(static_cast<std::size_t>(n % 2), n));
    }
    const std::int32_t contador =
        Exigido(Faz(*sessoes[0], "inclui", Com(EquipamentoDe("contador"), &EquiptoED::SubCodigo, "0")))
            .Como<EquiptoED>()
            ->NroIntEquip;

    std::array<Contas, operadores> contas;
    std::array<std::exception_ptr, operadores> erros;
    std::vector<std::thread> fios;
    for (std::size_t n = 0; n < operadores; ++n) {
        fios.emplace_back([&, n] {
            try {
                contas[n] = Opera(*sessoes[n], "x" + std::to_string(n), operacoes / operadores, contador);
            } catch (...) {
                erros[n] = std::current_exception();
            }
        });
    }
    for (std::thread &fio : fios) {
        fio.join();
    }
    Contas soma;
    for (std::size_t n = 0; n < operadores; ++n) {
        if (erros[n] != nullptr) {
            std::rethrow_exception(erros[n]);
        }
        soma.Incluidos += contas[n].Incluidos;
        soma.Contados += contas[n].Contados;
        soma.Guardados += contas[n].Guardados;
        soma.Dias += contas[n].Dias;
        soma.Desativados += contas[n].Desativados;
    }

    Direta direta(Cenario::Direto(cenario.Primario()));
    std::vector<std::string> erradas;
    const auto confere = [&](const std::string &oQue, const std::string &sql, int esperado) {
        const std::string achado = direta.Pergunta("SELECT " + sql).at(0).at(0);
        if (achado != std::to_string(esperado)) {
            erradas.push_back(oQue + ": " + achado + " and not " + std::to_string(esperado));
        }
    };
    const std::string deQual = " FROM EQUIPAMENTO WHERE NroIntEquip = " + std::to_string(contador);
    confere("equipment", "COUNT(*) FROM EQUIPAMENTO", soma.Incluidos + 1);
    confere("the counter", "SubCodigo" + deQual, soma.Contados);
    confere("the version of the counter", "Versao" + deQual, soma.Contados + 1);
    confere("documents", "COUNT(*) FROM DOCUMENTO", soma.Guardados);
    confere("equipment with a day", "COUNT(DISTINCT NroIntEquip) FROM DIA", soma.Dias);
    confere("days", "COUNT(*) FROM DIA", soma.Dias);
    confere("deactivated equipment", "COUNT(*) FROM EQUIPAMENTO WHERE Ativo = 2", soma.Desativados);
    confere("entries of equipment", "COUNT(*) FROM HISTORICO WHERE Raiz = 'EQUIPAMENTO'",
            soma.Incluidos + 1 + soma.Contados + soma.Desativados);
    confere("numbers of operations", "COUNT(*) FROM OPERACAO",
            soma.Incluidos + 1 + soma.Contados + soma.Guardados + soma.Dias + soma.Desativados);
    confere("entries of the history", "COUNT(*) - MAX(Nro) FROM HISTORICO", 0);
    if (soma.Contados == 0) {
        erradas.push_back("nobody counted");
    }
    return erradas;
}

} // namespace mortes
