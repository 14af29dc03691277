#include "shell/RelatoriosGeral.h"

#include "shell/Geral.h"

#include <utility>

namespace {

constexpr std::int32_t FalhaSemRelatorios = 1033;
constexpr std::int32_t MinutosDeReplicaAtual = 5;
constexpr const char *ForcarConsulta = "Forçar consulta ao Servidor Principal";

} // namespace

bool RelatoriosGeral::ImprimirRelatorio(const Valor &vRelatorio, std::vector<std::string> &aParam, bool b1,
                                        std::uint8_t n1, bool b2, Ref<Objeto> o1, std::string s1, Ref<Objeto> o2,
                                        const Ref<ICursor> &rsDados)
{
    const Ref<IRelatorios> relatorios = m_Geral.Relatorios();
    if (relatorios.Nada()) {
        throw Falha(FalhaSemRelatorios, std::string(NomeComponente) + ".Geral.ImprimirRelatorio",
                    "Objeto de Relatorios nao Definido");
    }
    try {
        relatorios->DefineCurrentRecordSet(rsDados);
        if (const Ref<IMDB> mdb = m_Geral.MDB()) {
            relatorios->DefinePathMDB(mdb->Name());
        }
        if (vRelatorio.EhObjeto()) {
            ParametrosRelatorio parametros{vRelatorio, aParam, b1, n1, b2, o1, s1, o2};
            relatorios->ImprimirDesigner(parametros);
        } else {
            ParametrosRelatorio parametros{vRelatorio.CStr(), aParam, b1, n1, b2, o1, s1, o2};
            relatorios->Imprimir(parametros);
        }
        relatorios->DefineCurrentRecordSet(nullptr);
    } catch (...) {
        PassaFalha(" < Geral.ImprimirRelatorio");
    }
    return false;
}

void RelatoriosGeral::PesquisaDataUltimaClonagem(std::string &sDadosAte, std::string &sForcar, bool &bForcar)
try {
    const Ref<IObjetoSoap> soap = m_Geral.objMTM()->CWebComm()->CriaObjetoSoap("ConsGen", m_Geral.Modulo()->Nome());
    if (!soap->Metodo(nullptr, "consultaDataUltimaReplica", m_Geral.SistemaQMR())) {
        sDadosAte = "";
        sForcar = ForcarConsulta;
        bForcar = true;
        return;
    }
    const std::string resposta = soap->Resultado().CStr();
    sDadosAte = "Dados considerados até " + resposta;
    if (MinutosDecorridos(CDate(resposta), Plataforma()->Agora()) > MinutosDeReplicaAtual) {
        sForcar = ForcarConsulta;
        bForcar = true;
    } else {
        sForcar = "";
    }
} catch (...) {
    PassaFalha(" < Geral.PesquisaDataUltimaClonagem");
}
