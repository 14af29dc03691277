#include "shell/TransacoesGeral.h"

#include "shell/Geral.h"

#include <optional>
#include <type_traits>

namespace {

// Makes a call on the session with the form disabled. A failure is kept until the form is enabled again; one whose
// number is 0 counts as none.
template <class Chamada>
auto Envia(const Ref<IForm> &frm, std::string_view cauda, Chamada &&chamada) -> std::invoke_result_t<Chamada>
{
    IgnoraErro([&] { frm->DefineEnabled(false); });
    std::invoke_result_t<Chamada> resultado{};
    std::optional<Falha> falha;
    try {
        resultado = chamada();
    } catch (...) { // raised below
        falha = FalhaCorrente();
        falha->Fonte += cauda;
    }
    IgnoraErro([&] { frm->DefineEnabled(true); });
    if (falha && falha->Numero != 0) {
        throw *falha;
    }
    return resultado;
}

} // namespace

bool TransacoesGeral::EnviaTransacao(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool) const
{
    return Envia(frm, " < Geral.EnviaTransacao", [&] { return m_Geral.objMTM()->EnviaTransacao1(oTrans, b1); });
}

bool TransacoesGeral::EnviaTransacao2(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool) const
{
    return Envia(frm, " < Geral.EnviaTransacao2", [&] { return m_Geral.objMTM()->EnviaTransacao2(oTrans, b1); });
}

bool TransacoesGeral::EnviaTransacaoH90(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool, bool b3) const
{
    return Envia(frm, " < Geral.EnviaTransacaoH90",
                 [&] { return m_Geral.objMTM()->EnviaTransacaoH90(oTrans, b1, b3); });
}

std::int16_t TransacoesGeral::EnviaRajada(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool) const
{
    return Envia(frm, " < Geral.EnviaRajada", [&] { return m_Geral.objMTM()->EnviaRajada1(oTrans, b1); });
}

std::int16_t TransacoesGeral::EnviaRajada2(const Ref<IForm> &frm, Ref<ITransacao> &oTrans,
                                           std::vector<std::string> &aDados, bool) const
{
    return Envia(frm, " < Geral.EnviaRajada2", [&] { return m_Geral.objMTM()->EnviaRajada2(oTrans, aDados); });
}

bool TransacoesGeral::EnviaRajadaH90(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, std::vector<std::string> &aDados,
                                     bool b2) const
{
    return Envia(frm, " < Geral.EnviaRajadaH90", [&] { return m_Geral.objMTM()->EnviaRajadaH90(oTrans, aDados, b2); });
}

bool TransacoesGeral::RajadaTerminou(const Ref<ITransacao> &oTrans) const
{
    return CDbl(oTrans->Cin()->Item("HDR-FIM-RAJADA")->Valor) == 5;
}
