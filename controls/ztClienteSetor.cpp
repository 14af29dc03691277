#include "controls/ztClienteSetor.h"

void ztClienteSetor::DefineCodCliente(std::int32_t valor)
{
    Ref<IControle> vivo = Vivo();
    m_CodCliente = valor;
    m_AoDefinirCodCliente.dispara();
}

bool ztClienteSetor::Valida()
{
    Ref<IControle> vivo = Vivo();
    if (!m_Cliente.empty()) {
        return true;
    }
    m_AoAvisar.dispara("Informe o cliente!");
    return false;
}

void ztClienteSetor::PresetaCliente(const std::string &cliente, const std::string &setor)
{
    Ref<IControle> vivo = Vivo();
    Troca(cliente, setor);
}

bool ztClienteSetor::Escolhe(const std::string &cliente, const std::string &setor)
{
    Ref<IControle> vivo = Vivo();
    if (!Foco() || !Usavel()) {
        return false;
    }
    if (Troca(cliente, setor)) {
        m_Change.dispara();
    }
    return true;
}

bool ztClienteSetor::Troca(const std::string &cliente, const std::string &setor)
{
    if (m_Cliente == cliente && m_Setor == setor) {
        return false;
    }
    m_Cliente = cliente;
    m_Setor = setor;
    Mudou().dispara();
    return true;
}
