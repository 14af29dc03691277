#include "tests/desk/ServidorDeTeste.h"

using namespace mesa;

ServidorDeTeste::ServidorDeTeste(RegistroDeTeste &registro) : m_Registro(registro)
{
    Comeca();
}

void ServidorDeTeste::Comeca()
{
    servidor::Configuracao configuracao;
    configuracao.Registro = m_Registro.Caminho();
    configuracao.Escuta = "127.0.0.1:" + std::to_string(m_Porta);
    configuracao.PastaDoCertificado = m_Pasta.path().toStdString();
    configuracao.Diario = m_Pasta.filePath("diario.jsonl").toStdString();
    configuracao.Conexoes = 2;
    m_Servidor = std::make_unique<servidor::Servidor>(
        configuracao, [this] { return Instante(m_Registro.Relogio); }, CustoDeTeste);
    m_Porta = m_Servidor->Porta();
}

Ref<Servicos> ServidorDeTeste::Conecta(rede::Insistencia insistencia) const
{
    return rede::Conecta(Onde(), {Digital(), ""}, "teste", std::move(insistencia));
}

Ref<SessaoServico> ServidorDeTeste::Sessao(const std::string &usuario)
{
    m_Registro.Cadastra(usuario);
    if (!m_Servicos) {
        m_Servicos = Conecta();
    }
    std::string recusa;
    std::int32_t espera = 0;
    return m_Servicos->Entra(usuario, "senha de " + usuario, "estação de teste", recusa, espera);
}
