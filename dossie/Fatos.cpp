#include "dossie/Fatos.h"

#include "services/Resumo.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <type_traits>

namespace dossie {

namespace {

using Json = nlohmann::ordered_json;

constexpr int Versao = 1;

template <class R> Json DeRegistro(const R &registro);

template <class T> Json DeValor(const T &valor)
{
    if constexpr (DetalheRegistro::EhListaDe<T>::value) {
        Json lista = Json::array();
        for (std::int32_t posicao = 1; !valor.Nada() && posicao <= valor->Count(); ++posicao) {
            lista.push_back(DeRegistro(*valor->Item(posicao)));
        }
        return lista;
    } else if constexpr (std::is_same_v<T, Data>) {
        return valor.Valor;
    } else {
        return valor;
    }
}

template <class R> Json DeRegistro(const R &registro)
{
    Json objeto = Json::object();
    registro.CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &campo) {
        if (campo.Escrito()) {
            objeto[std::string(nome)] = DeValor(campo.Valor());
        }
    });
    return objeto;
}

template <class R> Ref<R> ParaRegistro(const Json &objeto);

// What does not fit is thrown as the library throws what it does not find.
template <class T> T ParaValor(const Json &valor)
{
    if constexpr (DetalheRegistro::EhListaDe<T>::value) {
        using Item = typename DetalheRegistro::EhListaDe<T>::Item;
        T lista = Novo<Colecao<Ref<Item>>>();
        for (const Json &item : valor.get_ref<const Json::array_t &>()) {
            lista->Add(ParaRegistro<Item>(item));
        }
        return lista;
    } else if constexpr (std::is_same_v<T, std::string>) {
        return valor.get_ref<const std::string &>();
    } else {
        if (!valor.is_number()) {
            throw std::runtime_error("no number");
        }
        const auto numero = valor.get<double>();
        if constexpr (std::is_same_v<T, Data>) {
            return Data{numero};
        } else if constexpr (std::is_same_v<T, double>) {
            return numero;
        } else {
            if (!(numero >= std::numeric_limits<T>::min() && numero <= std::numeric_limits<T>::max()) ||
                std::trunc(numero) != numero) {
                throw std::runtime_error("too large");
            }
            return static_cast<T>(numero);
        }
    }
}

template <class R> Ref<R> ParaRegistro(const Json &objeto)
{
    if (!objeto.is_object()) {
        throw std::runtime_error("no record");
    }
    auto registro = Novo<R>();
    registro->CadaMembro([&]<class T>(std::string_view nome, Campo<T> &campo) {
        const auto valor = objeto.find(std::string(nome));
        if (valor != objeto.end()) {
            campo = ParaValor<T>(*valor);
        }
    });
    return registro;
}

// What has to be there for a dossier to be read at all.
bool Inteira(const mesa::ProvaED &prova)
{
    const ListaDe<EquiptoED> &equipamento = prova.Equipamento;
    return prova.Dia.Escrito() && prova.Hora.Escrito() && prova.Dia.Valor().NoCalendario() && prova.Corte.Escrito() &&
           !equipamento.Nada() && equipamento->Count() == 1 && !equipamento->Item(1)->Sensores.Valor().Nada() &&
           !prova.Vigente.Valor().Nada() && !prova.Versoes.Valor().Nada() && !prova.EntradaDaAfericao.Valor().Nada() &&
           !prova.EntradaDoDocumento.Valor().Nada() && !prova.Limites.Valor().Nada() &&
           !prova.Desativacoes.Valor().Nada() && !prova.Posteriores.Valor().Nada() && !prova.Locais.Valor().Nada();
}

} // namespace

QByteArray TextoDosFatos(const mesa::ProvaED &prova, const Certificado &certificado)
{
    Json fatos = Json::object();
    fatos["dossie"] = Versao;
    fatos["prova"] = DeRegistro(prova);
    Json anexo = Json::object();
    anexo["sha256"] = certificado.Octetos.isEmpty() ? "" : mesa::Resumo(certificado.Octetos);
    anexo["falta"] = certificado.Falta;
    fatos["certificado"] = anexo;
    return QByteArray::fromStdString(fatos.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

std::optional<Fatos> LeFatos(const QByteArray &texto)
try {
    const Json fatos = Json::parse(texto.constData(), texto.constData() + texto.size());
    if (fatos.at("dossie") != Versao) {
        return std::nullopt;
    }
    Fatos lidos{ParaRegistro<mesa::ProvaED>(fatos.at("prova")),
                fatos.at("certificado").at("sha256").get_ref<const std::string &>(),
                fatos.at("certificado").at("falta").get_ref<const std::string &>()};
    return Inteira(*lidos.Prova) ? std::optional(lidos) : std::nullopt;
} catch (const std::exception &) {
    return std::nullopt;
}

bool MesmosFatos(const mesa::ProvaED &um, const mesa::ProvaED &outro)
{
    const auto comparavel = [](const mesa::ProvaED &prova) {
        Json objeto = DeRegistro(prova);
        for (const char *daPergunta : {"ConhecidoEm", "EmitidoEm", "EmitidoPor", "Cabeca", "EloDaCabeca"}) {
            objeto.erase(daPergunta);
        }
        objeto.erase("Posteriores");
        return objeto;
    };
    return comparavel(um) == comparavel(outro);
}

} // namespace dossie
