#include "services/RegrasDeTabela.h"

#include "services/Conferencia.h"
#include "services/Historico.h"
#include "services/NomesCampos.h"
#include "services/Permissoes.h"
#include "services/Recusa.h"
#include "services/TextoQt.h"

#include <algorithm>

namespace mesa {

namespace {

// Controls, marks that turn the direction of writing or take no room, and codes that are no letter.
bool EhInvisivel(uint codigo)
{
    const QChar::Category categoria = QChar::category(codigo);
    return categoria >= QChar::Other_Control && categoria <= QChar::Other_NotAssigned;
}

constexpr const char *Tabelas = "T"; // the right's action

bool Mantem(const Operacao &operacao)
{
    return Permissoes::Tem(operacao.Dados(), operacao.Quem().Numero, Permissoes::Sistema,
                           Permissoes::ObjetoAdministracao, Tabelas);
}

} // namespace

void RegrasDeTabela::ExigeManutencao(const Operacao &operacao, const std::string &oQue)
{
    if (!Mantem(operacao)) {
        throw Recusa(operacao.Quem().Nome + " não tem permissão para " + oQue + ".");
    }
}

void RegrasDeTabela::ExigeConsulta(const Operacao &operacao, const std::string &oQue)
{
    if (!Mantem(operacao)) {
        operacao.Exige("", oQue);
    }
}

void RegrasDeTabela::ConfereVersao(const Operacao &operacao, const std::string &tabela, std::int32_t numero,
                                   std::int32_t daCopia, std::int32_t atual, const std::string &nome)
{
    if (daCopia != atual) {
        throw Recusa(nome + " foi alterado " + Historico(operacao.Dados()).Ultima(tabela, numero) +
                     ", depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    }
}

std::string RegrasDeTabela::TextoLimpo(std::string_view tabela, std::string_view coluna, const std::string &texto)
{
    const QString composto = Q(texto).normalized(QString::NormalizationForm_C).trimmed();
    if (std::ranges::any_of(composto.toUcs4(), EhInvisivel)) {
        throw Recusa("O campo \"" + NomeDoCampo(coluna) + "\" tem caracteres que não se veem: digite-o de novo.");
    }
    std::string limpo = S(composto);
    Conferencia::Texto(*Esquema::Acha(tabela)->Acha(coluna), limpo);
    return limpo;
}

} // namespace mesa
