// A process that works on a registry while a test kills it, or while another one does the same. It says on the standard
// output, a line each, what the services have reported as done.
#include "host/Conversoes.h"
#include "host/ListaEquiptoED.h"
#include "services/Conferidor.h"
#include "services/RegistrosAdministracao.h"
#include "services/Restauracao.h"
#include "tests/services/RegistroDeTeste.h"

#include <QCoreApplication>

#include <cstdio>
#include <random>
#include <stdexcept>
#include <string>

#include <unistd.h>

using namespace mesa;

namespace {

void Diz(const std::string &linha)
{
    std::puts(linha.c_str());
    std::fflush(stdout);
}

// Saves and uploads without end: a whole equipment ("I n"), a change of it ("A n"), a document ("D number n").
void Grava(const Ref<SessaoServico> &sessao, int primeiro)
{
    std::mt19937 sorteio(static_cast<unsigned>(primeiro));
    Diz("pronto");
    for (int n = primeiro;; ++n) {
        const std::string marca = std::to_string(n);
        const auto de = Com(EquipamentoDe("K" + marca), &EquiptoED::Descricao, "novo");
        const auto sensor = Poe(SensorDe(1), AfericaoDe(marca, DataDe(1, 1, 2026), DataDe(1, 3, 2026)));
        Poe(de, Poe(sensor, AfericaoDe(marca, DataDe(2, 3, 2026), DataDe(1, 6, 2026))));
        const auto gravado = Exigido(Pede(sessao, "inclui", Documenta(sessao, de))).Como<EquiptoED>();
        Diz("I " + marca);

        const auto nova = AfericaoDe(marca, DataDe(2, 6, 2026), DataDe(1, 9, 2026));
        const auto mudado = Poe(SoSensor(gravado->Sensores.Valor()->Item(1)->NroIntSensor), nova);
        const auto alterado = Poe(Com(SoNumero(gravado->NroIntEquip), &EquiptoED::Descricao, "alterado"), mudado);
        Exigido(Pede(sessao, "altera", Documenta(sessao, alterado)));
        Diz("A " + marca);

        const double numero = GuardaPdf(sessao, "doc " + marca, sorteio() % 60000);
        Diz("D " + CStr(numero) + " " + marca);
    }
}

Ref<DireitoED> Direito(const std::string &acao, std::uint8_t tem)
{
    auto direito = Com(Novo<DireitoED>(), &DireitoED::Objeto, "VOR-EQP-CS", &DireitoED::Acao, acao);
    return Com(direito, &DireitoED::Tem, tem);
}

template <class Item> ListaDe<Item> Lista(const Ref<Item> &um, const Ref<Item> &outro)
{
    auto lista = Novo<Colecao<Ref<Item>>>();
    lista->Add(um);
    lista->Add(outro);
    return lista;
}

// Administers without end: a user with two rights ("U n"), a change of the name, one right more and one less ("V n"), a
// client with two sectors ("C n"), its state, one sector more and one less ("W n").
void Administra(const Ref<SessaoServico> &sessao, int primeiro)
{
    const auto faz = [&](const std::string &metodo, const Ref<Objeto> &pedido) {
        return Exigido(Pede(sessao, metodo, pedido, "AdministracaoRN"));
    };
    const auto setor = [](const std::string &nome) { return Com(Novo<SetorED>(), &SetorED::NomeSetor, nome); };
    Diz("pronto");
    for (int n = primeiro;; ++n) {
        const std::string marca = std::to_string(n);
        auto novo = Com(Novo<UsuarioED>(), &UsuarioED::Usuario, "k" + marca, &UsuarioED::NomePessoa, "novo");
        Com(novo, &UsuarioED::CodCliente, 1, &UsuarioED::Senha, "tigela vidro moinho");
        novo->Direitos = Lista(Direito("", 1), Direito("I", 1));
        const auto incluido = faz("incluiUsuario", novo).Como<UsuarioED>();
        Diz("U " + marca);

        auto mudado = Com(Novo<UsuarioED>(), &UsuarioED::Numero, incluido->Numero.Valor(), &UsuarioED::Versao, 1);
        mudado->NomePessoa = "alterado";
        mudado->Direitos = Lista(Direito("A", 1), Direito("I", 2));
        faz("alteraUsuario", mudado);
        Diz("V " + marca);

        auto cliente = Com(Novo<ClienteED>(), &ClienteED::CodCliente, 1000 + n, &ClienteED::UF, "SC");
        cliente->NomeCliente = "Autoridade " + marca;
        cliente->Setores = Lista(setor("Frota"), setor("Oficina"));
        const auto criado = faz("incluiCliente", cliente).Como<ClienteED>();
        Diz("C " + marca);

        auto outro = Com(Novo<ClienteED>(), &ClienteED::CodCliente, 1000 + n, &ClienteED::Versao, 1);
        outro->UF = "PR";
        outro->Setores =
            Lista(setor("Metrologia"), Com(Novo<SetorED>(), &SetorED::NroSetor,
                                           criado->Setores.Valor()->Item(1)->NroSetor.Valor(), &SetorED::Ativo, 2));
        faz("alteraCliente", outro);
        Diz("W " + marca);
    }
}

// A fixed number of operations of every kind. Equipment 1 is a counter that both processes count on.
void Mistura(const Ref<SessaoServico> &sessao, const std::string &nome, int operacoes)
{
    int incluidos = 0;
    int contados = 0;
    int guardados = 0;
    int dias = 0;
    int desativados = 0;
    std::int32_t ultimo = 0; // of those that this process included
    for (int n = 0; n < operacoes; ++n) {
        switch (n % 10) {
        case 0:
        case 5:
            ultimo = Inclui(sessao, EquipamentoDe(nome + std::to_string(n)));
            ++incluidos;
            break;
        case 1:
        case 6: {
            const std::string seguinte = CStr(CLng(Abre(sessao, 1)->SubCodigo.Valor()) + 1);
            const Retorno retorno = Pede(sessao, "altera", Com(SoNumero(1), &EquiptoED::SubCodigo, seguinte));
            if (retorno.Feita) {
                ++contados;
            } else if (retorno.Recusa.find("depois de aberto aqui") == std::string::npos) {
                Exigido(retorno);
            }
            break;
        }
        case 2:
            Exigido(Pede(sessao, "lista2", Novo<ListaEquiptoED>()));
            break;
        case 3:
            Exigido(Pede(sessao, "consultaSimples", SoNumero(1)));
            break;
        case 4:
            GuardaPdf(sessao, nome + std::to_string(n));
            ++guardados;
            break;
        case 7:
            Exigido(Pede(sessao, "adicionaDiaEspecifico", DiaDe(ultimo, DataDe(25, 12, 2026), 0, 2359)));
            ++dias;
            break;
        case 8:
            Exigido(Pede(sessao, "desativa", SoNumero(ultimo)));
            ++desativados;
            break;
        default:
            Abre(sessao, 1);
        }
    }
    std::string linha;
    for (const int quantos : {incluidos, contados, guardados, dias, desativados}) {
        linha += (linha.empty() ? "" : " ") + std::to_string(quantos);
    }
    Diz(linha);
}

// Restores a copy and stops for ever after having told so many times how far it is; "pronto" then, and "fim" with the
// sentence when it came to its end.
void Restaura(const std::string &registro, const std::string &copia, int passos)
{
    const DesfechoDaCopia desfecho =
        Restauracao(registro, Conferidor::Achados).Faz({copia, "", false}, DataDe(20, 11, 2026, 10, 0, 0), [&](double) {
            if (passos-- == 0) {
                Diz("pronto");
                pause();
            }
            return true;
        });
    Diz("fim " + desfecho.Frase);
}

} // namespace

// usage: <registry> <user> grava <first number> | <registry> <user> administra <first number> |
//        <registry> <user> mistura <operations> | <registry> <copy> restaura <steps>
int main(int argc, char **argv)
try {
    const QCoreApplication aplicacao(argc, argv);
    if (std::string(argv[3]) == "restaura") {
        Restaura(argv[1], argv[2], std::stoi(argv[4]));
        return 0;
    }
    const std::string usuario = argv[2];
    const auto servicos = Servicos::Abre(
        argv[1], [] { return DataDe(20, 11, 2026, 10, 0, 0); }, CustoDeTeste);
    std::string recusa;
    std::int32_t espera = 0;
    const auto sessao = servicos->Entra(usuario, "senha de " + usuario, "estação de teste", recusa, espera);
    if (sessao.Nada()) {
        throw std::runtime_error(recusa);
    }
    if (std::string(argv[3]) == "grava") {
        Grava(sessao, std::stoi(argv[4]));
    } else if (std::string(argv[3]) == "administra") {
        Administra(sessao, std::stoi(argv[4]));
    } else {
        Mistura(sessao, usuario, std::stoi(argv[4]));
    }
    return 0;
} catch (const std::exception &erro) {
    std::printf("ERRO %s\n", erro.what());
    return 1;
}
