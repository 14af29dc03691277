#include "services/RegrasDeCadastro.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Conferencia.h"
#include "services/Esquema.h"
#include "services/NomesCampos.h"
#include "services/Recusa.h"
#include "services/Referencias.h"
#include "services/TextoQt.h"

#include <QString>

#include <algorithm>
#include <string_view>

namespace mesa {

namespace {

QString Composto(const std::string &texto)
{
    return Q(texto).normalized(QString::NormalizationForm_C).simplified();
}

const Esquema::Coluna &Coluna(std::string_view tabela, std::string_view nome)
{
    return *Esquema::Acha(tabela)->Acha(nome);
}

// What does not show, or shows as something else.
bool SemMarca(char32_t letra)
{
    return !QChar::isPrint(letra) || QChar::category(letra) == QChar::Other_PrivateUse;
}

std::string Nome(std::string_view tabela, std::string_view coluna, const std::string &texto)
{
    const QString composto = Composto(texto);
    const QList<uint> letras = composto.toUcs4();
    if (S(Q(texto)) != texto || std::ranges::any_of(letras, [](uint letra) { return SemMarca(letra); })) {
        throw Recusa("O campo \"" + NomeDoCampo(coluna) + "\" tem caracteres que não se veem.");
    }
    Conferencia::Coluna(Coluna(tabela, coluna), composto);
    return S(composto);
}

// Names that are looked up in the copy of the local database, and that combos show with a value behind them.
std::string NomeProcurado(std::string_view tabela, const std::string &texto)
{
    const std::string nome = Nome(tabela, "Nome", texto);
    const std::size_t ruim = nome.find_first_of("'|\\");
    if (ruim != std::string::npos) {
        throw Recusa("O nome \"" + nome + "\" tem o caractere " + nome[ruim] +
                     ", que não pode estar no nome de um cliente ou setor.");
    }
    return nome;
}

bool ServeParaEntrar(char32_t letra)
{
    const bool letraOuNumero = QChar::isLetterOrNumber(letra) &&
                               (QChar::script(letra) == QChar::Script_Latin || (letra >= U'0' && letra <= U'9'));
    return letraOuNumero || std::u32string_view(U".-_@").find(letra) != std::u32string_view::npos;
}

} // namespace

std::string RegrasDeCadastro::ChaveDoUsuario(const std::string &usuario)
{
    return ChaveSemCaixa(S(Q(usuario).normalized(QString::NormalizationForm_C).trimmed()));
}

std::string RegrasDeCadastro::Usuario(const std::string &usuario)
{
    const std::string nome = Nome("USUARIO", "Usuario", usuario);
    const QList<uint> letras = Q(nome).toUcs4();
    if (!std::ranges::all_of(letras, [](uint letra) { return ServeParaEntrar(letra); })) {
        throw Recusa("O nome de usuário \"" + nome +
                     "\" só pode ter letras, algarismos, ponto, hífen, sublinhado e arroba.");
    }
    return nome;
}

std::string RegrasDeCadastro::NomeDaPessoa(const std::string &nome)
{
    return Nome("USUARIO", "Nome", nome);
}

std::string RegrasDeCadastro::NomeDoCliente(const std::string &nome)
{
    return NomeProcurado("CLIENTE", nome);
}

std::string RegrasDeCadastro::NomeDoSetor(const std::string &nome)
{
    return NomeProcurado("SETOR", nome);
}

std::string RegrasDeCadastro::Estado(const std::string &uf)
{
    const std::string sigla = UCase(Trim(uf));
    if (!Referencias::Tabelas().TemEstado(sigla)) {
        throw Recusa(sigla.empty() ? "O estado do cliente precisa ser informado."
                                   : "Não existe o estado \"" + sigla + "\".");
    }
    return sigla;
}

void RegrasDeCadastro::CodigoDoCliente(std::int32_t codCliente)
{
    Conferencia::Coluna(Coluna("CLIENTE", "CodCliente"), codCliente);
}

void RegrasDeCadastro::Municipio(std::int32_t codMunic)
{
    if (codMunic != 0 && !Referencias::Tabelas().TemMunicipio(codMunic)) {
        throw Recusa("Não existe o município de código " + CStr(codMunic) + ".");
    }
}

} // namespace mesa
