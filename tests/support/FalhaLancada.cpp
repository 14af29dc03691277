#include "tests/support/FalhaLancada.h"

testing::AssertionResult FalhaIgual(const Falha &falha, std::int32_t numero, const std::string &fonte,
                                    const std::optional<std::string> &descricao)
{
    const bool fim = fonte.starts_with('*');
    const bool mesmaFonte = fim ? falha.Fonte.ends_with(fonte.substr(1)) : falha.Fonte == fonte;
    if (falha.Numero == numero && mesmaFonte && falha.Descricao == descricao.value_or(falha.Descricao)) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "raised " << falha.Numero << ", \"" << falha.Fonte << "\", \""
                                       << falha.Descricao << "\" instead of " << numero << ", \"" << fonte << "\""
                                       << (descricao ? ", \"" + *descricao + "\"" : "");
}
