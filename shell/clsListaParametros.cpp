#include "shell/clsListaParametros.h"

clsListaParametros::~clsListaParametros()
{
    IgnoraErro([&] { Clear(); });
}

std::int32_t clsListaParametros::Count() const
{
    return m_Colecao.Count();
}

Ref<clsParametro> clsListaParametros::Item(std::int32_t posicao) const
{
    return m_Colecao.Item(posicao);
}

Ref<clsParametro> clsListaParametros::Item(const std::string &nome) const
{
    return m_Colecao.Item(nome);
}

Ref<clsParametro> clsListaParametros::Add(const std::string &sNome, const std::string &sValor)
{
    auto parametro = Novo<clsParametro>();
    parametro->Nome = sNome;
    parametro->Valor = sValor;
    m_Colecao.Add(parametro, sNome);
    return parametro;
}

void clsListaParametros::Remove(std::int32_t posicao)
{
    m_Colecao.Remove(posicao);
}

void clsListaParametros::Remove(const std::string &nome)
{
    m_Colecao.Remove(nome);
}

void clsListaParametros::Clear()
{
    for (std::int32_t restantes = Count(); restantes > 0; --restantes) {
        m_Colecao.Remove(1);
    }
}

bool clsListaParametros::Existe(const std::string &sNome) const
{
    for (std::int32_t posicao = 1; posicao <= Count(); ++posicao) {
        if (m_Colecao.Item(posicao)->Nome == sNome) {
            return true;
        }
    }
    return false;
}
