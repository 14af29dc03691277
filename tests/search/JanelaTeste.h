#pragma once

#include "controls/ztList.h"
#include "tests/support/HostTeste.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// A logged-on shell, a service that holds some equipment, and a person in front of the search window.
class JanelaTeste : public HostTeste {
  protected:
    using Textos = std::vector<std::string>;

    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        host->Atende<ListaEquiptoED>("EquiptoRN", "lista2",
                                     [this](const Ref<ListaEquiptoED> &pedido) { return Lista2(pedido); });
        host->Atende<ConsultaAfericaoED>("EquiptoRN", "consultaSimplesAfericaoVigente",
                                         [this](const Ref<ConsultaAfericaoED> &) { return Resposta(Vigente); });
    }

    // What "lista2" answers: from the start, all of the registry on one page.
    std::function<Resposta(const Ref<ListaEquiptoED> &)> Lista2 = [this](const Ref<ListaEquiptoED> &) {
        return Resposta(Pagina(Cadastro));
    };
    std::vector<Ref<EquiptoED>> Cadastro{Equipto(101, "RAD-01", "R", 1), Equipto(102, "PAR-02", "F", 2)};
    // The calibration in force, whatever the day.
    const Ref<AfericaoED> EmVigor = Afericao(9001, "INM-77", "ACME", DataDe(5, 3, 2026));
    Ref<AfericaoED> Vigente = EmVigor;

    static Ref<EquiptoED> Equipto(std::int32_t nroIntEquip, const std::string &codigo, const std::string &tipo,
                                  std::uint8_t temLimiteDif)
    {
        auto equipto = Novo<EquiptoED>();
        equipto->NroIntEquip = nroIntEquip;
        equipto->Codigo = codigo;
        equipto->Descricao = "Equipamento " + codigo;
        equipto->CodMunic = 120;
        equipto->TipoEquip = tipo;
        equipto->Modelo = "Modelo " + codigo;
        equipto->TemLimiteDif = temLimiteDif;
        equipto->VelocPermitida = std::int16_t{60};
        return equipto;
    }

    static Ref<AfericaoED> Afericao(double nroIntAfericao, const std::string &numero, const std::string &marca,
                                    Data verificacao)
    {
        auto afericao = Novo<AfericaoED>();
        afericao->NroIntAfericao = nroIntAfericao;
        afericao->Numero = numero;
        afericao->Marca = marca;
        afericao->DataVerificacao = verificacao;
        return afericao;
    }

    static Ref<ListaEquiptoED> Pagina(const std::vector<Ref<EquiptoED>> &equipamentos, std::int32_t proximo = 0)
    {
        auto pagina = Novo<ListaEquiptoED>();
        auto colecao = Novo<Colecao<Ref<EquiptoED>>>();
        for (const Ref<EquiptoED> &equipto : equipamentos) {
            colecao->Add(equipto);
        }
        pagina->Equipamentos = colecao;
        pagina->ProxNroIntEquip = proximo;
        return pagina;
    }

    // The answer of a search that found nothing.
    static Ref<ListaEquiptoED> PaginaAusente() { return Novo<ListaEquiptoED>(); }

    // A person in front of the n-th search window that is open, from 0.
    Pessoa NaJanela(std::size_t n = 0) { return Pessoa(host->Tela->FormsAbertos("frmLista").at(n), host->Tela); }
    static Ref<ztList> ListaDe(const Pessoa &pessoa) { return pessoa.Acha<ztList>("ztlLista"); }

    // The rows on the screen, their cells separated by "|".
    static Textos Linhas(const Pessoa &pessoa)
    {
        Ref<ztList> lista = ListaDe(pessoa);
        Textos linhas;
        for (std::int32_t linha = 1; linha <= lista->NroItens(); ++linha) {
            std::string texto;
            for (std::int32_t coluna = 1; coluna <= static_cast<std::int32_t>(lista->Colunas().size()); ++coluna) {
                texto += (coluna > 1 ? "|" : "") + lista->TextoCelula(linha, coluna);
            }
            linhas.push_back(texto);
        }
        return linhas;
    }

    // The records sent to a remote operation so far, as text.
    Textos Enviados(const std::string &metodo, const std::string &classe = "EquiptoRN")
    {
        const std::string inicio = classe + ".ExecutaMetodo(\"" + metodo + "\", ";
        Textos enviados;
        for (std::string linha : host->RegistroDe({inicio})) {
            linha.erase(0, inicio.size());
            enviados.push_back(linha.substr(0, linha.rfind(')')));
        }
        return enviados;
    }

    // Ends with this host, which tells its problems, and goes on with a new one.
    void NovoHost()
    {
        TearDown();
        host = Novo<HostRoteirizado>();
        SetUp();
    }
};
